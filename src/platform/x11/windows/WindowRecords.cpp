#include "platform/x11/windows/WindowRecords.h"

#include "platform/x11/windows/RootState.h"
#include "platform/x11/windows/WindowAtoms.h"
#include "platform/x11/windows/WindowFacts.h"

#include <algorithm>
#include <array>

namespace lumacap::x11 {

namespace {

constexpr int belowAll = -1;
constexpr int ordinary = 0;
constexpr int keptAbove = 3;
constexpr int aboveAll = 25;

constexpr std::uint32_t everyDesktop = 0xffffffff;

struct LayerRow {
    std::uint32_t WindowAtoms::*type;
    int layer;
};

constexpr std::array layerRows{
    LayerRow{&WindowAtoms::typeDesktop, belowAll},
    LayerRow{&WindowAtoms::typeNormal, ordinary},
    LayerRow{&WindowAtoms::typeDialog, ordinary},
    LayerRow{&WindowAtoms::typeSplash, ordinary},
    LayerRow{&WindowAtoms::typeUtility, keptAbove},
    LayerRow{&WindowAtoms::typeToolbar, keptAbove},
    LayerRow{&WindowAtoms::typeDock, aboveAll},
    LayerRow{&WindowAtoms::typeMenu, aboveAll},
    LayerRow{&WindowAtoms::typeDropdownMenu, aboveAll},
    LayerRow{&WindowAtoms::typePopupMenu, aboveAll},
    LayerRow{&WindowAtoms::typeTooltip, aboveAll},
    LayerRow{&WindowAtoms::typeNotification, aboveAll},
    LayerRow{&WindowAtoms::typeCombo, aboveAll},
    LayerRow{&WindowAtoms::typeDragged, aboveAll},
};

bool has(const std::vector<std::uint32_t> &atoms, std::uint32_t atom)
{
    return std::ranges::find(atoms, atom) != atoms.end();
}

/// By the first type that is known; programs list their own, unknown ones before it.
int layerOfType(const WindowFacts &facts, const WindowAtoms &atoms)
{
    for (const std::uint32_t type : facts.types) {
        const auto *const row = std::ranges::find_if(
            layerRows, [&](const LayerRow &candidate) { return atoms.*candidate.type == type; });
        if (row != layerRows.end())
            return row->layer;
    }
    return ordinary;
}

} // namespace

bool isShown(const WindowFacts &facts, const WindowAtoms &atoms, const RootState &root)
{
    const bool isElsewhere = root.visibleDesktop && facts.desktop && *facts.desktop != everyDesktop
        && facts.desktop != root.visibleDesktop;
    return !isElsewhere && !has(facts.states, atoms.stateHidden)
        && !has(facts.states, atoms.stateShaded);
}

int layerOf(const WindowFacts &facts, const WindowAtoms &atoms)
{
    const int layer = layerOfType(facts, atoms);
    if (facts.window.placing == Placing::ByItself)
        return layer < ordinary ? layer : aboveAll;
    if (has(facts.states, atoms.stateBelow))
        return belowAll;
    if (has(facts.states, atoms.stateAbove) && layer >= ordinary)
        return std::max(layer, keptAbove);
    return layer;
}

QRect visibleFrame(const WindowFacts &facts, const RootState &root)
{
    const QRect inside = facts.inside.marginsRemoved(facts.shadow);
    const QMargins border(facts.border, facts.border, facts.border, facts.border);
    const bool isFramed = facts.window.id != facts.window.topLevel;
    // What the manager tells comes before its frame's own size, which may be wider than what is
    // painted: to be caught by the pointer, or for a shadow. Without a manager the word is one of
    // a manager that has gone.
    if (facts.decoration && root.clients && facts.window.placing == Placing::ByManager)
        return inside.marginsAdded(isFramed ? *facts.decoration : *facts.decoration | border);
    return isFramed ? facts.frame.marginsRemoved(facts.shadow) : inside.marginsAdded(border);
}

Rect<TopLeftGlobal> topLeftFrame(const QRect &frame, const QRect &main, double factor)
{
    return {{(frame.x() - main.x()) / factor, (frame.y() - main.y()) / factor},
            {frame.width() / factor, frame.height() / factor}};
}

} // namespace lumacap::x11
