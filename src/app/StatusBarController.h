#pragma once

#include <QList>
#include <QObject>

#include <functional>

QT_BEGIN_NAMESPACE
class QAction;
QT_END_NAMESPACE

namespace lumacap {

class StatusItem;
struct KeyCombo;

/// The program's item in the tray and its menu of five commands. It knows nothing of capturing:
/// each command calls a callback.
class StatusBarController final : public QObject {
    Q_OBJECT

public:
    using Callback = std::function<void()>;

    /// Borrows `statusItem`, which outlives the object, and shows the menu in it.
    StatusBarController(StatusItem &statusItem, Callback onFullScreen, Callback onSelection,
                        Callback onPreferences, Callback onCheckForUpdates, Callback onQuit);
    ~StatusBarController() override;
    Q_DISABLE_COPY_MOVE(StatusBarController)

    /// Retitles the two capture entries so that they show the shortcuts.
    void updateMenuShortcutLabels(const KeyCombo &fullScreen, const KeyCombo &selection);

private:
    void setupStatusItem();
    QAction *addEntry(const QString &title, const Callback &action);
    void addSeparator();

    StatusItem &m_statusItem;
    Callback m_onFullScreen;
    Callback m_onSelection;
    Callback m_onPreferences;
    Callback m_onCheckForUpdates;
    Callback m_onQuit;
    QList<QAction *> m_menu;
    QAction *m_fullScreenAction = nullptr;
    QAction *m_selectionAction = nullptr;
};

} // namespace lumacap
