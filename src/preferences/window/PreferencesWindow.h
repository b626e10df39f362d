#pragma once

#include "preferences/window/PreferencesServices.h"

#include <QWidget>

#include <functional>

namespace lumacap {

class PreferencesView;

/// The window around a view, of the desktop's own make: a title and a button that closes it, and a
/// size that nobody changes, which is less high than designed only on a screen that is too low.
class PreferencesWindow final : public QWidget {
    Q_OBJECT

public:
    /// Not shown yet.
    PreferencesWindow(const PreferencesServices &services, std::function<void()> onHotkeysChanged);

    PreferencesView &view() const { return *m_view; }

    /// Shows it in front of the others, with the keyboard, as far as the desktop lets a program.
    void makeKeyAndOrderFront();

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void buildView();
    void placeOnScreen();

    PreferencesServices m_services;
    std::function<void()> m_onHotkeysChanged;
    PreferencesView *m_view = nullptr;
};

} // namespace lumacap
