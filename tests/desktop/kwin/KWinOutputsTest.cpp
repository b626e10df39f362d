#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Input.h"
#include "harness/Pictures.h"
#include "harness/Settings.h"
#include "harness/TestedBuild.h"
#include "harness/WaitFor.h"
#include "harness/wayland/KWinDesktop.h"

#include <QFile>

#include <gtest/gtest.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// Outputs that come and go, which headless wlroots does not have.
struct KWinOutputsTest : testing::Test {
    QString second() { return desktop.outputs().at(1).name; }
    void disableSecond() { desktop.configure({u"output.%1.disable"_s.arg(name)}); }
    void enableSecond()
    {
        desktop.configure(
            {u"output.%1.enable"_s.arg(name), u"output.%1.position.960,0"_s.arg(name)});
        require("the second output", [this] { return !desktop.look(name).isNull(); });
    }
    static bool says(const Process &process, const QByteArray &line)
    {
        return waitFor([&] { return process.output().contains(line + '\n'); });
    }

    KWinDesktop desktop{{.size = {960, 600}, .outputs = 2}};
    QString name = second();
};

struct CoveredOutputTest : KWinOutputsTest, testing::WithParamInterface<const char *> { };

TEST_P(CoveredOutputTest, tellsWhenItGoes)
{
    desktop.set("LUMACAP_OVERLAY_SURFACE", GetParam());
    const Process &process = desktop.start(
        u"probe"_s, {testedProgram(QStringLiteral(LUMACAP_OVERLAY_PROBE)), u"cover"_s, u"1"_s});
    ASSERT_TRUE(says(process, "active"));

    disableSecond();

    EXPECT_TRUE(says(process, "changed"));
    EXPECT_TRUE(says(process, "uncovered"));
    EXPECT_EQ(process.ending(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(By, CoveredOutputTest, testing::Values("layer-shell", "full-screen"),
                         [](const auto &row) {
                             return row.param == std::string("layer-shell") ? "LayerShell"
                                                                            : "FullScreenWindow";
                         });

TEST_F(KWinOutputsTest, theAgentOutlivesThemWithItsOverlayOpen)
{
    const QString folder = desktop.folder(u"pictures"_s);
    writeSettings(desktop, {{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, folder}});
    Agent agent(desktop);
    agent.requireReady();
    for (int round = 0; round < 3; ++round) {
        desktop.input().moveTo({960 + 300, 300});
        const QImage before = noisePicture({960, 600});
        desktop.paint(name, before);
        ASSERT_TRUE(agent.activate(u"selection"_s));
        ASSERT_TRUE(waitFor([&] { return differingPixels(before, desktop.look(name)) > 100000; }));

        disableSecond();
        ASSERT_TRUE(agent.activate(u"full-screen"_s));
        ASSERT_TRUE(waitFor([&] { return capturesIn(folder).size() == 1; }));
        ASSERT_TRUE(QFile::remove(capturesIn(folder).first()));

        enableSecond();
    }
    EXPECT_EQ(agent.process().ending(), std::nullopt);
    EXPECT_EQ(agent.process().errors(), QByteArray());
}

} // namespace
} // namespace lumacap::harness
