#include "app/StatusBarController.h"

#include "app/AppIcon.h"
#include "platform/StatusItem.h"
#include "preferences/storage/KeyCombo.h"

#include <QAction>
#include <QIcon>
#include <QKeySequence>

#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

/// Two spaces, so that the shortcut stands apart from the words.
QString titleWithShortcut(const QString &title, const KeyCombo &combo)
{
    return title + u"  ("_s + combo.displayString() + u')';
}

} // namespace

StatusBarController::StatusBarController(StatusItem &statusItem, Callback onFullScreen,
                                         Callback onSelection, Callback onPreferences,
                                         Callback onCheckForUpdates, Callback onQuit)
    : m_statusItem(statusItem)
    , m_onFullScreen(std::move(onFullScreen))
    , m_onSelection(std::move(onSelection))
    , m_onPreferences(std::move(onPreferences))
    , m_onCheckForUpdates(std::move(onCheckForUpdates))
    , m_onQuit(std::move(onQuit))
{
    setupStatusItem();
}

StatusBarController::~StatusBarController()
{
    m_statusItem.setMenu({});
}

void StatusBarController::setupStatusItem()
{
    m_statusItem.setImage(appIcon(u":/AppIcon.svg"_s), u"Lumacap"_s);

    m_fullScreenAction = addEntry(u"Capture plein ecran"_s, m_onFullScreen);
    m_selectionAction = addEntry(u"Capture selection..."_s, m_onSelection);
    addSeparator();
    addEntry(u"Preferences..."_s, m_onPreferences)
        ->setShortcut(QKeySequence(Qt::META | Qt::Key_Comma));
    addEntry(u"Rechercher les mises a jour..."_s, m_onCheckForUpdates);
    addSeparator();
    addEntry(u"Quitter Lumacap"_s, m_onQuit)->setShortcut(QKeySequence(Qt::META | Qt::Key_Q));

    m_statusItem.setMenu(m_menu);
}

QAction *StatusBarController::addEntry(const QString &title, const Callback &action)
{
    auto *const entry = new QAction(title, this);
    connect(entry, &QAction::triggered, this, action);
    m_menu.append(entry);
    return entry;
}

void StatusBarController::addSeparator()
{
    auto *const separator = new QAction(this);
    separator->setSeparator(true);
    m_menu.append(separator);
}

void StatusBarController::updateMenuShortcutLabels(const KeyCombo &fullScreen,
                                                   const KeyCombo &selection)
{
    m_fullScreenAction->setText(titleWithShortcut(u"Capture plein ecran"_s, fullScreen));
    m_selectionAction->setText(titleWithShortcut(u"Capture selection"_s, selection));
}

} // namespace lumacap
