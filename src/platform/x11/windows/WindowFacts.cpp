#include "platform/x11/windows/WindowFacts.h"

#include "platform/x11/windows/BoundedReplies.h"
#include "platform/x11/windows/ProcessIds.h"
#include "platform/x11/windows/PropertyValues.h"
#include "platform/x11/windows/WindowAtoms.h"

#include <QByteArrayList>

#include <array>
#include <map>

#include <xcb/xcb.h>

namespace lumacap::x11 {

namespace {

/// In units of four bytes: no title that somebody reads is longer.
constexpr std::uint32_t longestProperty = 1024;

constexpr std::array toldProperties{
    &WindowAtoms::type,         &WindowAtoms::state,         &WindowAtoms::desktop,
    &WindowAtoms::frameExtents, &WindowAtoms::shadowExtents, &WindowAtoms::title,
    &WindowAtoms::olderTitle,   &WindowAtoms::processId,     &WindowAtoms::applicationId,
    &WindowAtoms::classNames,
};

struct Questions {
    xcb_get_geometry_cookie_t geometry;
    xcb_translate_coordinates_cookie_t place;
    xcb_get_geometry_cookie_t frame;
    std::array<xcb_get_property_cookie_t, toldProperties.size()> properties;
};

/// By their atoms; null for one that could not be read.
using Properties = std::map<std::uint32_t, xcb::Owned<xcb_get_property_reply_t>>;

Questions askAbout(const xcb::Connection &connection, const WindowAtoms &atoms,
                   const SeenWindow &window)
{
    auto *const raw = connection.raw();
    Questions questions{
        .geometry = xcb_get_geometry(raw, window.id),
        .place = xcb_translate_coordinates(raw, window.id, connection.screen().root, 0, 0),
        .frame = xcb_get_geometry(raw, window.topLevel),
        .properties = {}};
    for (std::size_t i = 0; i < toldProperties.size(); ++i)
        questions.properties.at(i) =
            xcb_get_property(raw, 0, window.id, atoms.*toldProperties.at(i),
                             XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty);
    return questions;
}

void readProperties(const Properties &replies, const WindowAtoms &atoms, WindowFacts &facts)
{
    const auto reply = [&replies](std::uint32_t atom) { return replies.at(atom).get(); };
    facts.types = numbersIn(reply(atoms.type));
    facts.states = numbersIn(reply(atoms.state));
    facts.desktop = numberIn(reply(atoms.desktop));
    facts.decoration = marginsIn(reply(atoms.frameExtents));
    facts.shadow = marginsIn(reply(atoms.shadowExtents)).value_or(QMargins());
    facts.title = textIn(reply(atoms.title), atoms);
    if (!facts.title)
        facts.title = textIn(reply(atoms.olderTitle), atoms);
    facts.processId = numberIn(reply(atoms.processId));
    facts.applicationId = textIn(reply(atoms.applicationId), atoms).value_or(QString());
    // Two texts, each ended by a zero.
    const QByteArrayList names = bytesIn(reply(atoms.classNames)).split('\0');
    facts.classInstance = QString::fromUtf8(names.value(0));
    facts.className = QString::fromUtf8(names.value(1));
}

QRect withBorder(const xcb_get_geometry_reply_t &geometry)
{
    const int border = geometry.border_width;
    return {geometry.x, geometry.y, geometry.width + 2 * border, geometry.height + 2 * border};
}

} // namespace

QCoro::Task<std::vector<WindowFacts>>
queryWindowFacts(xcb::Connection &connection, WindowAtoms atoms, std::vector<SeenWindow> windows)
{
    std::vector<Questions> questions;
    questions.reserve(windows.size());
    for (const SeenWindow &window : windows)
        questions.push_back(askAbout(connection, atoms, window));
    const ProcessIds processIds = co_await queryProcessIds(connection, windows);

    BoundedReplies replies(connection);
    std::vector<WindowFacts> all;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const Questions &asked = questions.at(i);
        const auto geometry = co_await replies.take<xcb_get_geometry_reply_t>(asked.geometry);
        const auto place = co_await replies.take<xcb_translate_coordinates_reply_t>(asked.place);
        const auto frame = co_await replies.take<xcb_get_geometry_reply_t>(asked.frame);
        Properties told;
        for (std::size_t k = 0; k < toldProperties.size(); ++k)
            told[atoms.*toldProperties.at(k)] =
                co_await replies.take<xcb_get_property_reply_t>(asked.properties.at(k));
        if (!geometry || !place || !frame)
            continue;
        WindowFacts facts;
        facts.window = windows.at(i);
        facts.inside = QRect(place->dst_x, place->dst_y, geometry->width, geometry->height);
        facts.border = geometry->border_width;
        facts.frame = withBorder(*frame);
        readProperties(told, atoms, facts);
        if (!facts.processId)
            facts.processId = processIds.of(facts.window.id);
        all.push_back(facts);
    }
    co_return all;
}

} // namespace lumacap::x11
