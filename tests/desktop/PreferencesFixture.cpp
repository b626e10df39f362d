#include "PreferencesFixture.h"

#include "harness/WaitFor.h"

#include <tuple>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

const QStringList controlRoles{u"check box"_s, u"push button"_s, u"radio button"_s};

} // namespace

void PreferencesFixture::startWith(const Settings &settings, WindowManager windowManager)
{
    startBareDesktop(windowManager);
    writeSettings(*desktop, settings);
    startAgentWith(fullScreenShortcut);
    m_controls = std::make_unique<AccessibleControls>(*desktop);
}

void PreferencesFixture::startBareDesktop(WindowManager windowManager)
{
    startDesktop({.server = {.size = screenSize}, .windowManager = windowManager});
    screen->lower(); // it would cover the window
    AccessibleControls::enable(*desktop);
}

void PreferencesFixture::openWindow()
{
    ASSERT_TRUE(agent->activate(u"preferences"_s));
    ASSERT_TRUE(comes(u"Lancer au demarrage"_s));
    ASSERT_TRUE(waitFor([this] { return isInFront(); }));
}

void PreferencesFixture::closeWindow()
{
    press(u"alt+F4"_s);
    ASSERT_TRUE(goes(u"Lancer au demarrage"_s)); // for the agent, too, which may be asked again
    ASSERT_TRUE(waitFor([this] { return windows().empty(); }));
}

std::vector<std::uint32_t> PreferencesFixture::windows()
{
    const auto found =
        desktop->ask({u"xdotool"_s, u"search"_s, u"--all"_s, u"--onlyvisible"_s, u"--pid"_s,
                      QString::number(agent->process().pid()), u"--name"_s, u"^Lumacap$"_s});
    std::vector<std::uint32_t> ids;
    for (const QByteArray &line : found.output.split('\n')) {
        if (!line.isEmpty())
            ids.push_back(line.toUInt());
    }
    return ids;
}

bool PreferencesFixture::isInFront()
{
    const auto active = desktop->ask({u"xdotool"_s, u"getactivewindow"_s}).output.trimmed();
    const auto own = windows();
    return own.size() == 1 && active.toUInt() == own.front();
}

std::optional<AccessibleControl> PreferencesFixture::control(const QString &name)
{
    return showing(name, controlRoles);
}

std::optional<AccessibleControl> PreferencesFixture::showing(const QString &name,
                                                             const QStringList &roles) const
{
    for (const AccessibleControl &one : m_controls->all()) {
        if (one.name == name && roles.contains(one.role))
            return one;
    }
    return std::nullopt;
}

void PreferencesFixture::turnWheelTo(const QString &name)
{
    const auto window = showing(u"Lumacap"_s, {u"frame"_s});
    ASSERT_TRUE(window);
    const QRect inView = window.value_or(AccessibleControl{}).place.adjusted(0, 10, 0, -60);
    const auto isInView = [&] {
        const auto found = control(name);
        if (!found || inView.contains(found->place.center()))
            return found.has_value();
        const bool isBelow = found->place.center().y() > inView.center().y();
        input({u"click"_s, isBelow ? u"5"_s : u"4"_s});
        return false;
    };
    // At the edge, where no control is.
    input(
        {u"mousemove"_s, QString::number(inView.left() + 8), QString::number(inView.center().y())});
    ASSERT_TRUE(waitFor(isInView)) << name.toStdString();
}

void PreferencesFixture::use(const QString &name)
{
    turnWheelTo(name);
    const auto found = control(name);
    ASSERT_TRUE(found) << name.toStdString();
    click(found.value_or(AccessibleControl{}).place.center());
}

bool PreferencesFixture::isChecked(const QString &name)
{
    const auto found = control(name);
    return found && found->isChecked;
}

bool PreferencesFixture::comesToBeChecked(const QString &name)
{
    return waitFor([&] { return isChecked(name); });
}

bool PreferencesFixture::comes(const QString &name)
{
    return waitFor([&] { return m_controls->shows(name); });
}

bool PreferencesFixture::goes(const QString &name)
{
    return waitFor([&] { return !m_controls->shows(name); });
}

QString PreferencesFixture::focused()
{
    return m_controls->focused();
}

void PreferencesFixture::tabTo(const QString &name)
{
    for (int presses = 0; presses < 30; ++presses) {
        const QString before = focused();
        if (before == name)
            return;
        press(u"Tab"_s);
        ASSERT_TRUE(waitFor([&] { return focused() != before; })) << before.toStdString();
    }
    FAIL() << name.toStdString() << " is not reached";
}

std::optional<QString> PreferencesFixture::stored(const QString &key) const
{
    return storedSetting(*desktop, key);
}

bool PreferencesFixture::comesToBeStored(const QString &key, const QString &value) const
{
    return waitFor([&] { return stored(key) == value; });
}

QString PreferencesFixture::autostartEntry() const
{
    return desktop->folder(u"config"_s) + u"/autostart/app.lumacap.Lumacap.desktop"_s;
}

} // namespace lumacap::harness
