#pragma once

#include "annotation/vocabulary/FrameBackgroundStyle.h"
#include "preferences/recorder/ShortcutSilence.h"
#include "preferences/storage/ImageFormat.h"
#include "preferences/window/PreferencesServices.h"

#include <QWidget>

#include <functional>

namespace lumacap {

class OutputDetails;
class PrefsSection;
class SectionColumn;
struct KeyCombo;

/// All settings, as they are stored when the view is built. Each control writes its own the moment
/// the user changes it; a write that fails leaves the control as the user set it, and says nothing.
class PreferencesView final : public QWidget {
    Q_OBJECT

public:
    /// `onHotkeysChanged` is called after another shortcut was stored, once a change.
    PreferencesView(const PreferencesServices &services, std::function<void()> onHotkeysChanged,
                    QWidget *parent);
    Q_DISABLE_COPY_MOVE(PreferencesView)
    ~PreferencesView() override;

    SectionColumn &column() const { return *m_column; }

private:
    PrefsSection *generalSection();
    PrefsSection *shortcutsSection();
    PrefsSection *captureSection();
    PrefsSection *outputSection();
    QWidget *footer();

    QWidget *hotkeyRow(const QString &label, const QString &name, const KeyCombo &keyCombo,
                       const std::function<void(KeyCombo)> &store, QWidget *parent);
    QWidget *switchRow(const QString &label, const QString &name, bool isOn,
                       const std::function<void(bool)> &onChanged, QWidget *parent);
    QWidget *backgroundGroup(QWidget *parent);
    OutputDetails *outputDetails(QWidget *parent);
    void showGroup(QWidget *group, bool isShown);
    void chooseSaveDirectory();

    bool stored(const QString &key) const;
    FrameBackgroundStyle storedBackground() const;
    std::function<void(bool)> storing(const QString &key);

    PreferencesServices m_services;
    std::function<void()> m_onHotkeysChanged;
    ShortcutSilence m_silence;
    QString m_saveDirectory;
    SectionColumn *m_column;
    QWidget *m_backgroundGroup = nullptr;
    OutputDetails *m_outputDetails = nullptr;
};

} // namespace lumacap
