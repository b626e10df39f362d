#include "harness/TestedBuild.h"
#include "harness/WaitFor.h"
#include "harness/wayland/SwayDesktop.h"

#include <gtest/gtest.h>

#include <csignal>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// A program that finds the pointer, on two outputs side by side.
class SwayPointer : public testing::Test {
protected:
    void start(const QByteArray &finder, const QStringList &configuration = {}, int outputs = 2)
    {
        SwayOptions options{.outputs = {{{1000, 600}, 1, {0, 0}}}, .configuration = configuration};
        if (outputs == 2)
            options.outputs.push_back({{1600, 1200}, 2, {1000, 0}});
        m_desktop = std::make_unique<SwayDesktop>(options);
        if (!finder.isEmpty())
            m_desktop->set("LUMACAP_POINTER_FINDER", finder);
        m_probe = &m_desktop->start(u"probe"_s,
                                    {testedProgram(QStringLiteral(LUMACAP_POINTER_FINDER_PROBE))});
        require("the probe", [this] { return m_probe->output().contains("ready\n"); });
    }
    /// Where it is found to be when asked now: "X Y", or "nothing".
    std::string found()
    {
        const auto before = m_probe->output().count('\n');
        m_probe->send(SIGUSR1);
        require("an answer", [&] { return m_probe->output().count('\n') > before; });
        const QByteArray answer = m_probe->output().split('\n').at(before);
        return answer.left(answer.indexOf(" (")).toStdString();
    }

    std::unique_ptr<SwayDesktop> m_desktop;
    Process *m_probe = nullptr;
};

TEST_F(SwayPointer, isInTheMiddleOfTheFocusedOutputWhichFollowsIt)
{
    start("");
    m_desktop->input().moveTo({10, 10});
    EXPECT_EQ(found(), "500.5 299.5");
    m_desktop->input().moveTo({1790, 590});
    EXPECT_EQ(found(), "1400.5 299.5");
}

TEST_F(SwayPointer, isFoundExactlyWhereTheFocusStaysBehind)
{
    start("", {u"focus_follows_mouse no"_s, u"mouse_warping none"_s});
    m_desktop->command(u"focus output HEADLESS-1"_s);
    m_desktop->input().moveTo({1200, 100});
    EXPECT_EQ(found(), "1200.5 499.5");
}

TEST_F(SwayPointer, isFoundExactlyByTheSurfaceThatItEnters)
{
    start("probe");
    for (const QPoint place :
         {QPoint(0, 0), QPoint(999, 599), QPoint(1000, 0), QPoint(1799, 599)}) {
        m_desktop->input().moveTo(place);
        EXPECT_EQ(found(),
                  QString(u"%1.5 %2.5"_s).arg(place.x()).arg(599 - place.y()).toStdString());
    }
}

TEST_F(SwayPointer, isGivenBackToTheWindowBeneath)
{
    start("probe");
    m_desktop->input().moveTo({500, 300});
    const Process &window =
        m_desktop->startWindow({.appId = u"org.example.Tiled"_s, .size = {1000, 600}});
    m_desktop->command(u"focus output HEADLESS-1"_s);
    const auto count = [&window](const char *line) { return window.output().count(line); };
    m_desktop->input().moveTo({501, 300});
    ASSERT_TRUE(waitFor([&] { return count("\nenter\n") > 0; }));
    const auto left = count("leave\n");
    EXPECT_EQ(found(), "501.5 299.5");
    EXPECT_TRUE(waitFor([&] { return count("leave\n") > left; }));
    EXPECT_TRUE(waitFor([&] { return count("\nenter\n") > count("leave\n"); }));
}

TEST_F(SwayPointer, isNotLookedForOnOneOutput)
{
    start("probe", {}, 1);
    m_desktop->input().moveTo({500, 300});
    EXPECT_EQ(found(), "nothing");
}

} // namespace
} // namespace lumacap::harness
