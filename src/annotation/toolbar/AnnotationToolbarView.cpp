#include "annotation/toolbar/AnnotationToolbarView.h"

#include "annotation/AnnotationStore.h"
#include "annotation/toolbar/BackgroundMenuButton.h"
#include "annotation/toolbar/BackgroundStyleMenu.h"
#include "annotation/toolbar/ColorSwatch.h"
#include "annotation/toolbar/IconButton.h"
#include "annotation/toolbar/StripPainting.h"
#include "annotation/toolbar/TextButton.h"
#include "annotation/toolbar/ThicknessButton.h"
#include "annotation/toolbar/ToolbarLook.h"
#include "annotation/toolbar/UndoButton.h"
#include "graphics/Text.h"

#include <QImage>
#include <QPainter>

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap {
namespace {

constexpr std::array thicknessNames{"thin"_L1, "medium"_L1, "thick"_L1};
static_assert(thicknessNames.size() == lineThicknesses.size());

/// The least length of whole units that is not shorter.
double inWholeUnits(double points, double unitsAPoint)
{
    constexpr double rounding = 1e-6;
    return std::ceil(points * unitsAPoint - rounding) / unitsAPoint;
}

/// The callback may end the toolbar, and with it the store that holds it.
void call(std::function<void()> callback)
{
    if (callback)
        callback();
}

} // namespace

AnnotationToolbarView::AnnotationToolbarView(AnnotationStore &store, QWidget *parent)
    : QWidget(parent)
    , m_store(store)
{
    setAttribute(Qt::WA_NoMousePropagation);
    setCursor(Qt::ArrowCursor);
    addTools();
    addStyles();
    addMagnifierChoices();
    addFrame();
    addEnds();
    showState();
    connect(&store, &AnnotationStore::objectWillChange, this,
            &AnnotationToolbarView::scheduleRefresh);
}

AnnotationToolbarView::~AnnotationToolbarView()
{
    if (m_menu)
        m_menu->end();
}

void AnnotationToolbarView::add(Presence presence, ToolbarButton *button, const QString &objectName,
                                std::function<void()> action, std::function<bool()> isCurrent)
{
    button->setObjectName(objectName);
    connect(button, &ToolbarButton::clicked, this, std::move(action));
    if (!m_entries.empty()) {
        const auto last = std::ranges::find_if(m_entries.rbegin(), m_entries.rend(),
                                               [](const Entry &entry) { return entry.button; });
        setTabOrder(last->button, button);
    }
    m_entries.push_back({presence, button, std::move(isCurrent)});
}

void AnnotationToolbarView::addDivider(Presence presence)
{
    m_entries.push_back({presence, nullptr, {}});
}

template <class Value>
void AnnotationToolbarView::addChoice(Presence presence, ToolbarButton *button,
                                      const QString &objectName, Value value,
                                      Value (AnnotationStore::*current)() const,
                                      void (AnnotationStore::*set)(Value))
{
    add(
        presence, button, objectName, [this, value, set] { (m_store.*set)(value); },
        [this, value, current] { return (m_store.*current)() == value; });
}

void AnnotationToolbarView::addTools()
{
    for (const auto &tool : annotationTools) {
        auto *const button = new IconButton(QAccessible::RadioButton, tool.rawValue,
                                            {tool.icon, toolbarlook::toolFont}, this);
        addChoice(Presence::Always, button, u"tool."_s + tool.rawValue, tool.value,
                  &AnnotationStore::currentTool, &AnnotationStore::setCurrentTool);
        if (tool.value == AnnotationTool::Selection)
            addDivider(Presence::Always);
    }
}

void AnnotationToolbarView::addStyles()
{
    addDivider(Presence::Always);
    for (const auto &color : annotationColors)
        addChoice(Presence::Always, new ColorSwatch(color.value, this),
                  u"color."_s + color.rawValue, color.value, &AnnotationStore::currentColor,
                  &AnnotationStore::setCurrentColor);
    addDivider(Presence::Always);
    for (const auto &thickness : lineThicknesses) {
        const QString name = thicknessNames.at(static_cast<std::size_t>(thickness.value));
        addChoice(Presence::Always, new ThicknessButton(thickness.value, name, this),
                  u"thickness."_s + name, thickness.value, &AnnotationStore::currentThickness,
                  &AnnotationStore::setCurrentThickness);
    }
}

void AnnotationToolbarView::addMagnifierChoices()
{
    addDivider(Presence::WithMagnifier);
    for (const auto &shape : magnifierShapes) {
        auto *const button = new IconButton(QAccessible::RadioButton, shape.rawValue,
                                            {shape.icon, toolbarlook::shapeFont}, this);
        button->setAccessibleDescription(u"magnifier"_s); // a tool has the name of one of them
        addChoice(Presence::WithMagnifier, button, u"magnifierShape."_s + shape.rawValue,
                  shape.value, &AnnotationStore::magnifierShape,
                  &AnnotationStore::setMagnifierShape);
    }
    addDivider(Presence::WithMagnifier);
    for (const auto &zoom : magnifierZooms) {
        const QString name = label(zoom.value);
        auto face = std::make_unique<Text>(name, toolbarlook::zoomFont, FontWeight::Medium);
        auto *const button = new IconButton(QAccessible::RadioButton, name, std::move(face), this);
        addChoice(Presence::WithMagnifier, button, u"magnifierZoom."_s + name, zoom.value,
                  &AnnotationStore::magnifierZoom, &AnnotationStore::setMagnifierZoom);
    }
}

void AnnotationToolbarView::addFrame()
{
    addDivider(Presence::Always);
    m_undo = new UndoButton(this);
    add(Presence::Always, m_undo, u"undo"_s, [this] { m_store.undo(); });
    addDivider(Presence::Always);
    auto *const frame = new IconButton(QAccessible::CheckBox, u"frame"_s,
                                       {u"macwindow"_s, toolbarlook::toolFont}, this);
    add(
        Presence::Always, frame, u"frame"_s, [this] { m_store.setShowFrame(!m_store.showFrame()); },
        [this] { return m_store.showFrame(); });
    m_menuButton = new BackgroundMenuButton(this);
    add(Presence::WithFrame, m_menuButton, u"frameBackground"_s, [this] { openMenu(); });
}

void AnnotationToolbarView::addEnds()
{
    add(Presence::Always, new TextButton(u"Annuler"_s, TextButtonStyle::Plain, this), u"cancel"_s,
        [this] { call(m_store.cancelCallback); });
    auto *const confirm = new TextButton(u"Valider"_s, TextButtonStyle::Prominent, this);
    confirm->setFocusPolicy(Qt::StrongFocus); // a press ends the editing of a text
    add(Presence::Always, confirm, u"confirm"_s, [this] { call(m_store.confirmCallback); });
}

bool AnnotationToolbarView::isPresent(Presence presence) const
{
    switch (presence) {
    case Presence::Always:
        return true;
    case Presence::WithMagnifier:
        return m_hasMagnifierChoices;
    case Presence::WithFrame:
        return m_hasFrameMenu;
    }
    return false;
}

/// The store announces changes before they are in place, and often several in one turn.
void AnnotationToolbarView::scheduleRefresh()
{
    if (m_isRefreshScheduled)
        return;
    m_isRefreshScheduled = true;
    QMetaObject::invokeMethod(this, &AnnotationToolbarView::refresh, Qt::QueuedConnection);
}

void AnnotationToolbarView::refresh()
{
    m_isRefreshScheduled = false;
    const auto groups = std::pair(m_hasMagnifierChoices, m_hasFrameMenu);
    showState();
    if (groups != std::pair(m_hasMagnifierChoices, m_hasFrameMenu))
        Q_EMIT fittingSizeDidChange();
}

void AnnotationToolbarView::showState()
{
    m_hasMagnifierChoices = m_store.currentTool() == AnnotationTool::Magnifier;
    m_hasFrameMenu = m_store.showFrame();
    m_undo->setEnabled(!m_store.annotations().empty());
    m_menuButton->showStyle(m_store.frameBackground());
    if (m_menu && m_hasFrameMenu)
        m_menu->showStyle(m_store.frameBackground());
    else if (m_menu)
        m_menu->end();
    for (const Entry &entry : m_entries) {
        if (entry.isCurrent)
            entry.button->setChecked(entry.isCurrent());
    }
    layOut();
}

std::vector<RowItem> AnnotationToolbarView::items() const
{
    std::vector<RowItem> items;
    for (const Entry &entry : m_entries) {
        if (!isPresent(entry.presence))
            continue;
        if (entry.button != nullptr)
            items.push_back({RowItemKind::Control, entry.button->frameSize()});
        else
            items.push_back(
                {RowItemKind::Divider, {toolbarlook::dividerWidth, toolbarlook::dividerHeight}});
    }
    return items;
}

Size AnnotationToolbarView::fittingSize(double width) const
{
    using namespace toolbarlook;
    const Size rows = placedInRows(items(), width - 2 * sidePadding, spacing).size;
    return {inWholeUnits(rows.width + 2 * sidePadding, m_unitsAPoint),
            inWholeUnits(rows.height + 2 * edgePadding, m_unitsAPoint)};
}

void AnnotationToolbarView::layOut()
{
    using namespace toolbarlook;
    const double inside = width() / m_unitsAPoint - 2 * sidePadding;
    const RowPlacement rows = placedInRows(items(), inside, spacing);
    const QPointF origin(sidePadding + (inside - rows.size.width) / 2,
                         (height() / m_unitsAPoint - rows.size.height) / 2);
    m_dividers.clear();
    auto frame = rows.frames.begin();
    for (const Entry &entry : m_entries) {
        const bool isShown = isPresent(entry.presence);
        if (entry.button != nullptr)
            entry.button->setVisible(isShown);
        if (!isShown)
            continue;
        if (entry.button != nullptr)
            entry.button->place((*frame)->topLeft() + origin, m_unitsAPoint);
        else if (*frame)
            m_dividers.push_back((*frame)->translated(origin));
        ++frame;
    }
    update();
}

void AnnotationToolbarView::setUnitsAPoint(double units)
{
    m_unitsAPoint = units;
    if (m_menu)
        m_menu->end();
    layOut();
}

void AnnotationToolbarView::setBackdrop(const QImage &frozenPart)
{
    m_backdrop.setPicture(frozenPart, frozenPart.width() * m_unitsAPoint / width());
    update();
}

void AnnotationToolbarView::resizeEvent(QResizeEvent *event)
{
    layOut();
    QWidget::resizeEvent(event);
}

void AnnotationToolbarView::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    paintStrip(painter, rect(), m_unitsAPoint, m_dividers, m_backdrop, themeOf(palette()));
}

void AnnotationToolbarView::openMenu()
{
    if (m_menu)
        m_menu->end();
    const QRectF frame = m_menuButton->frame();
    const QRectF anchor(QPointF(pos()) + frame.topLeft() * m_unitsAPoint,
                        frame.size() * m_unitsAPoint);
    const MenuOpener opener = m_menuButton->hasFocus() ? MenuOpener::Keyboard : MenuOpener::Pointer;
    m_menu = new BackgroundStyleMenu(m_store.frameBackground(), anchor, m_unitsAPoint, opener,
                                     parentWidget());
    m_menu->setPalette(palette());
    m_menuButton->setOpenness(MenuOpenness::Open);
    connect(m_menu, &BackgroundStyleMenu::chosen, this,
            [this](FrameBackgroundStyle style) { m_store.setFrameBackground(style); });
    connect(m_menu, &BackgroundStyleMenu::ended, m_menuButton,
            [this] { m_menuButton->setOpenness(MenuOpenness::Closed); });
}

} // namespace lumacap
