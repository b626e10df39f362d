#pragma once

#include <QtGlobal>

#include <set>

class QObject;

namespace lumacap {

class HotkeyService;

/// Keeps the program's own shortcuts from firing while a recorder wants their keys.
class ShortcutSilence {
public:
    /// Borrows `service`, which outlives the object.
    explicit ShortcutSilence(HotkeyService &service);
    Q_DISABLE_COPY_MOVE(ShortcutSilence)
    /// Ends it, whoever still wants it.
    ~ShortcutSilence();

    /// From now on `recorder` wants it; nothing when it does already. Never dereferenced.
    void begin(const QObject *recorder);
    /// It ends with the last one that wants it.
    void end(const QObject *recorder);

private:
    HotkeyService &m_service;
    std::set<const QObject *> m_recorders;
};

} // namespace lumacap
