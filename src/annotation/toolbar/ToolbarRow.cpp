#include "annotation/toolbar/ToolbarRow.h"

#include "annotation/AnnotationStore.h"
#include "annotation/toolbar/BackgroundMenuButton.h"
#include "annotation/toolbar/ColorSwatch.h"
#include "annotation/toolbar/IconButton.h"
#include "annotation/toolbar/TextButton.h"
#include "annotation/toolbar/ThicknessButton.h"
#include "annotation/toolbar/ToolbarLook.h"
#include "annotation/toolbar/UndoButton.h"
#include "graphics/Text.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap {
namespace {

constexpr std::array thicknessNames{"thin"_L1, "medium"_L1, "thick"_L1};
static_assert(thicknessNames.size() == lineThicknesses.size());

/// The callback may end the toolbar, and with it the store that holds it: a copy is called.
void callCopy(const std::function<void()> &callback)
{
    if (const auto copy = callback)
        copy();
}

} // namespace

ToolbarRow::ToolbarRow(AnnotationStore &store, QWidget &strip)
    : m_store(store)
    , m_strip(&strip)
{
    addTools();
    addStyles();
    addMagnifierChoices();
    addFrame();
    addEnds();
    showState();
}

void ToolbarRow::add(Presence presence, ToolbarButton *button, const QString &objectName,
                     std::function<void()> action, std::function<bool()> isCurrent)
{
    button->setObjectName(objectName);
    if (action)
        QObject::connect(button, &ToolbarButton::clicked, m_strip, std::move(action));
    m_entries.push_back({presence, button, std::move(isCurrent)});
}

void ToolbarRow::addDivider(Presence presence)
{
    m_entries.push_back({presence, nullptr, {}});
}

template <class Value>
void ToolbarRow::addChoice(Presence presence, ToolbarButton *button, const QString &objectName,
                           Value value, Value (AnnotationStore::*current)() const,
                           void (AnnotationStore::*set)(Value))
{
    add(
        presence, button, objectName, [this, value, set] { (m_store.*set)(value); },
        [this, value, current] { return (m_store.*current)() == value; });
}

void ToolbarRow::addTools()
{
    for (const auto &tool : annotationTools) {
        auto *const button = new IconButton(QAccessible::RadioButton, tool.rawValue,
                                            {tool.icon, toolbarlook::toolFont}, m_strip);
        addChoice(Presence::Always, button, u"tool."_s + tool.rawValue, tool.value,
                  &AnnotationStore::currentTool, &AnnotationStore::setCurrentTool);
        if (tool.value == AnnotationTool::Selection)
            addDivider(Presence::Always);
    }
}

void ToolbarRow::addStyles()
{
    addDivider(Presence::Always);
    for (const auto &color : annotationColors)
        addChoice(Presence::Always, new ColorSwatch(color.value, m_strip),
                  u"color."_s + color.rawValue, color.value, &AnnotationStore::currentColor,
                  &AnnotationStore::setCurrentColor);
    addDivider(Presence::Always);
    for (const auto &thickness : lineThicknesses) {
        const QString name = thicknessNames.at(static_cast<std::size_t>(thickness.value));
        addChoice(Presence::Always, new ThicknessButton(thickness.value, name, m_strip),
                  u"thickness."_s + name, thickness.value, &AnnotationStore::currentThickness,
                  &AnnotationStore::setCurrentThickness);
    }
}

void ToolbarRow::addMagnifierChoices()
{
    addDivider(Presence::WithMagnifier);
    for (const auto &shape : magnifierShapes) {
        auto *const button = new IconButton(QAccessible::RadioButton, shape.rawValue,
                                            {shape.icon, toolbarlook::shapeFont}, m_strip);
        button->setAccessibleDescription(u"magnifier"_s); // a tool has the name of one of them
        addChoice(Presence::WithMagnifier, button, u"magnifierShape."_s + shape.rawValue,
                  shape.value, &AnnotationStore::magnifierShape,
                  &AnnotationStore::setMagnifierShape);
    }
    addDivider(Presence::WithMagnifier);
    for (const auto &zoom : magnifierZooms) {
        const QString name = label(zoom.value);
        auto face = std::make_unique<Text>(name, toolbarlook::zoomFont, FontWeight::Medium);
        auto *const button =
            new IconButton(QAccessible::RadioButton, name, std::move(face), m_strip);
        addChoice(Presence::WithMagnifier, button, u"magnifierZoom."_s + name, zoom.value,
                  &AnnotationStore::magnifierZoom, &AnnotationStore::setMagnifierZoom);
    }
}

void ToolbarRow::addFrame()
{
    addDivider(Presence::Always);
    m_undo = new UndoButton(m_strip);
    add(Presence::Always, m_undo, u"undo"_s, [this] { m_store.undo(); });
    addDivider(Presence::Always);
    auto *const frame = new IconButton(QAccessible::CheckBox, u"frame"_s,
                                       {u"macwindow"_s, toolbarlook::toolFont}, m_strip);
    add(
        Presence::Always, frame, u"frame"_s, [this] { m_store.setShowFrame(!m_store.showFrame()); },
        [this] { return m_store.showFrame(); });
    m_menuButton = new BackgroundMenuButton(m_strip);
    add(Presence::WithFrame, m_menuButton, u"frameBackground"_s, {});
}

void ToolbarRow::addEnds()
{
    add(Presence::Always, new TextButton(u"Annuler"_s, TextButtonStyle::Plain, m_strip),
        u"cancel"_s, [this] { callCopy(m_store.cancelCallback); });
    add(Presence::Always, new TextButton(u"Valider"_s, TextButtonStyle::Prominent, m_strip),
        u"confirm"_s, [this] { callCopy(m_store.confirmCallback); });
}

bool ToolbarRow::isPresent(Presence presence) const
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

bool ToolbarRow::showState()
{
    const auto groups = std::pair(m_hasMagnifierChoices, m_hasFrameMenu);
    m_hasMagnifierChoices = m_store.currentTool() == AnnotationTool::Magnifier;
    m_hasFrameMenu = m_store.showFrame();
    m_undo->setEnabled(!m_store.annotations().empty());
    m_menuButton->showStyle(m_store.frameBackground());
    for (const Entry &entry : m_entries) {
        if (entry.isCurrent)
            entry.button->setChecked(entry.isCurrent());
    }
    return groups != std::pair(m_hasMagnifierChoices, m_hasFrameMenu);
}

std::vector<RowItem> ToolbarRow::items() const
{
    constexpr Size divider{toolbarlook::dividerWidth, toolbarlook::dividerHeight};
    std::vector<RowItem> items;
    for (const Entry &entry : m_entries) {
        if (!isPresent(entry.presence))
            continue;
        if (entry.button != nullptr)
            items.push_back({RowItemKind::Control, entry.button->frameSize()});
        else
            items.push_back({RowItemKind::Divider, divider});
    }
    return items;
}

std::vector<QRectF> ToolbarRow::place(const RowPlacement &placement, QPointF origin,
                                      double unitsAPoint)
{
    std::vector<QRectF> dividers;
    auto next = placement.frames.begin();
    for (const Entry &entry : m_entries) {
        const bool isShown = isPresent(entry.presence);
        if (entry.button != nullptr)
            entry.button->setVisible(isShown);
        if (!isShown)
            continue;
        const std::optional<QRectF> frame = *next;
        ++next;
        if (frame && entry.button != nullptr)
            entry.button->place(frame->topLeft() + origin, unitsAPoint);
        else if (frame)
            dividers.push_back(frame->translated(origin));
    }
    return dividers;
}

} // namespace lumacap
