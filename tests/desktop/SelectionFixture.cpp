#include "SelectionFixture.h"

#include "harness/WaitFor.h"

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

QStringList moveTo(QPoint place)
{
    return {u"mousemove"_s, QString::number(place.x()), QString::number(place.y())};
}

} // namespace

DesktopOptions twoSmallMonitors()
{
    return {.server = {.size = {1440, 600},
                       .monitors = {{u"LEFT"_s, {0, 0, 800, 600}, Role::Primary},
                                    {u"RIGHT"_s, {800, 0, 640, 600}}}}};
}

void SelectionFixture::start(const DesktopOptions &options)
{
    startDesktop(options);
    startAgent();
}

void SelectionFixture::startDesktop(const DesktopOptions &options)
{
    desktop = std::make_unique<PrivateDesktop>(options);
    const QByteArray display = desktop->server().display();
    screen = std::make_unique<PaintedScreen>(display, noisePicture(XConnection(display).size()));
    screen->placePointer({40, 30});
    set({});
}

void SelectionFixture::startAgent()
{
    agent = std::make_unique<Agent>(*desktop);
    agent->requireReady();
}

void SelectionFixture::set(Settings settings)
{
    settings[u"saveToFile"_s] = u"true"_s;
    settings[u"saveDirectory"_s] = desktop->folder(u"pictures"_s);
    writeSettings(*desktop, settings);
}

void SelectionFixture::openOverlay()
{
    ASSERT_TRUE(agent->activate(u"selection"_s));
    ASSERT_TRUE(waitFor([this] { return overlayIsUp(); }));
}

bool SelectionFixture::overlayIsUp()
{
    const auto found =
        desktop->ask({u"xdotool"_s, u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Lumacap$"_s});
    return !found.output.isEmpty();
}

void SelectionFixture::input(const QStringList &steps)
{
    ASSERT_EQ(desktop->ask(QStringList{u"xdotool"_s} + steps).ending, Ending{});
}

void SelectionFixture::press(const QString &key)
{
    input({u"key"_s, key});
}

void SelectionFixture::click(QPoint place)
{
    input(moveTo(place) + QStringList{u"click"_s, u"1"_s});
}

void SelectionFixture::drag(QPoint from, QPoint to)
{
    input(moveTo(from) + QStringList{u"mousedown"_s, u"1"_s} + moveTo((from + to) / 2) + moveTo(to)
          + QStringList{u"mouseup"_s, u"1"_s});
}

QStringList SelectionFixture::files() const
{
    return capturesIn(desktop->folder(u"pictures"_s));
}

QImage SelectionFixture::savedPicture()
{
    if (!waitFor([this] { return files().size() == 1 && !overlayIsUp(); }))
        return {};
    return pictureIn(*desktop, files().first());
}

} // namespace lumacap::harness
