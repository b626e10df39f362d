#include "everywhere/DesktopMake.h"

#include "harness/PrivateDesktop.h"
#include "harness/wayland/GnomeDesktop.h"
#include "harness/wayland/KWinDesktop.h"
#include "harness/wayland/SwayDesktop.h"

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<TestDesktop> onX11()
{
    return std::make_unique<PrivateDesktop>(
        DesktopOptions{.server = {.size = {1840, 700},
                                  .monitors = {{u"LEFT"_s, {0, 0, 1200, 700}, Role::Primary},
                                               {u"RIGHT"_s, {1200, 0, 640, 700}}}}});
}

std::unique_ptr<TestDesktop> onSway()
{
    return std::make_unique<SwayDesktop>(
        SwayOptions{.outputs = {{{1200, 700}, 1, {0, 0}}, {{1500, 1050}, 1.5, {1200, 0}}}});
}

std::unique_ptr<TestDesktop> onSwayAtTwo()
{
    return std::make_unique<SwayDesktop>(
        SwayOptions{.outputs = {{{2400, 1400}, 2, {0, 0}}, {{1000, 700}, 1, {1200, 0}}}});
}

std::unique_ptr<TestDesktop> onKWin()
{
    return std::make_unique<KWinDesktop>(KWinOptions{.size = {1200, 700}, .outputs = 2});
}

std::unique_ptr<TestDesktop> onKWinAtOneAndAHalf()
{
    return std::make_unique<KWinDesktop>(
        KWinOptions{.size = {1200, 700}, .scale = 1.5, .outputs = 2});
}

std::unique_ptr<TestDesktop> onGnome()
{
    auto desktop = std::make_unique<GnomeDesktop>(
        GnomeOptions{.monitors = {{1200, 700}, {1000, 700}}, .xServer = XServerInside::Present});
    desktop->startShortcuts();
    return desktop;
}

} // namespace

const std::vector<DesktopMake> &everyDesktop()
{
    static const std::vector<DesktopMake> makes{{"X11", &onX11},
                                                {"Sway", &onSway},
                                                {"SwayAtTwo", &onSwayAtTwo},
                                                {"KWin", &onKWin},
                                                {"KWinAtOneAndAHalf", &onKWinAtOneAndAHalf},
                                                {"Gnome", &onGnome}};
    return makes;
}

} // namespace lumacap::harness
