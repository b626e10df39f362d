// Monitors of a real GNOME Shell that show more pixels than they count.
#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Input.h"
#include "harness/Pictures.h"
#include "harness/Settings.h"
#include "harness/WaitFor.h"
#include "harness/wayland/GnomeDesktop.h"

#include <QFile>

#include <gtest/gtest.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

struct ScaleCase {
    std::string name;
    std::vector<QSize> monitors;
    GnomeArrangement arrangement;
};

/// A person at GNOME monitors of some scales, which show noise.
class GnomeScale : public testing::TestWithParam<ScaleCase> {
protected:
    GnomeScale()
        : m_desktop({.monitors = GetParam().monitors})
        , folder(m_desktop.folder(u"pictures"_s))
    {
        m_desktop.arrange(GetParam().arrangement);
        for (const TestOutput &output : m_desktop.outputs()) {
            m_pictures.push_back(noisePicture(output.pixels));
            const QImage empty = m_desktop.look(output.name);
            m_desktop.paint(output.name, m_pictures.back());
            require("the noise", [&] { return hasChanged(output, empty); });
        }
    }

    GnomeDesktop &desktop() { return m_desktop; }
    const QImage &painted(std::size_t index) const { return m_pictures.at(index); }

    /// What is saved when `area`, in the desktop's units, is dragged out on the monitor.
    QImage selected(Agent &agent, const TestOutput &output, const QRect &area)
    {
        for (const QString &file : capturesIn(folder))
            QFile::remove(file);
        m_desktop.input().moveTo(output.frame.topLeft() + QPoint(10, 300)); // out of the picture
        const QImage before = m_desktop.look(output.name);
        EXPECT_TRUE(agent.activate(u"selection"_s));
        EXPECT_TRUE(waitFor([&] { return hasChanged(output, before); }));
        m_desktop.input().drag(area.topLeft(), area.bottomRight() + QPoint(1, 1));
        EXPECT_TRUE(waitFor([&] {
            m_desktop.input().press({evdev::enter});
            return waitFor([&] { return !capturesIn(folder).isEmpty(); }, std::chrono::seconds(1));
        }));
        const QStringList files = capturesIn(folder);
        return files.isEmpty() ? QImage() : pictureIn(m_desktop, files.first());
    }

private:
    /// All of what the monitor shows, not the pointer alone.
    bool hasChanged(const TestOutput &output, const QImage &before)
    {
        const QImage now = m_desktop.look(output.name);
        return differingPixels(before, now) > now.width() * now.height() / 2;
    }

    GnomeDesktop m_desktop;
    std::vector<QImage> m_pictures;

protected:
    const QString folder;
};

} // namespace

TEST_P(GnomeScale, aPictureHasTheMonitorsOwnPixels)
{
    const QString file = folder + u"/taken.png"_s;

    const Answer said = desktop().ask(program({u"full-screen"_s, u"--output"_s, file}));

    EXPECT_EQ(said.ending, Ending{}) << said.errors.toStdString();
    EXPECT_EQ(differingPixels(painted(0), pictureIn(desktop(), file)), 0);
}

TEST_P(GnomeScale, aSelectionIsCutWhereItWasDrawnOnEachMonitor)
{
    writeSettings(desktop(),
                  {{u"saveToFile"_s, u"true"_s},
                   {u"autoConfirmSelection"_s, u"true"_s},
                   {u"saveDirectory"_s, folder}});
    Agent agent(desktop());
    agent.requireReady();
    const std::vector<TestOutput> outputs = desktop().outputs();
    for (std::size_t index = 0; index < outputs.size(); ++index) {
        const TestOutput &output = outputs[index];
        const QPoint corner(200, 320); // below the toolbar
        const QRect area(output.frame.topLeft() + corner, QSize(200, 160));
        const double scale = static_cast<double>(output.pixels.width()) / output.frame.width();
        const QRect pixels(corner * scale, area.size() * scale);

        const QImage seen = selected(agent, output, area);
        EXPECT_EQ(seen.size(), pixels.size());
        EXPECT_EQ(differingPixels(painted(index).copy(pixels), seen), 0)
            << output.name.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Monitors, GnomeScale,
    testing::Values(
        ScaleCase{"AtOneAndAHalf", {{1920, 1080}}, {.scales = {1.5}}},
        ScaleCase{"AtOneAndAQuarterTurned", {{1920, 1080}}, {.scales = {1.25}, .isTurned = true}},
        ScaleCase{"AtOneBesideTwo", {{1000, 700}, {1920, 1080}}, {.scales = {1, 2}}},
        ScaleCase{"AtTwoInPixels", {{1920, 1080}}, {.scales = {2}, .units = GnomeUnits::Pixels}}),
    [](const auto &scale) { return scale.param.name; });

} // namespace lumacap::harness
