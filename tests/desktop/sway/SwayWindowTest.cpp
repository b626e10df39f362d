#include "ListedWindows.h"
#include "harness/Pictures.h"
#include "harness/WaitFor.h"
#include "harness/wayland/SwayDesktop.h"

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

const QString tiled = u"org.example.Tiled"_s; // the harness has sway float another one

/// Windows with gaps between them on outputs of noise, so that their edges can be seen.
class SwayWindows : public testing::Test {
protected:
    /// On one output, or on one of scale 1 with one of scale 2 to the left of it.
    void start(int outputs = 1)
    {
        SwayOptions options;
        options.outputs = {{{1280, 800}, 1, {outputs == 1 ? 0 : 640, 0}}};
        if (outputs == 2)
            options.outputs.push_back({{1280, 800}, 2, {0, 0}});
        options.configuration = {u"gaps inner 20"_s, u"default_border normal 2"_s,
                                 u"default_floating_border normal 2"_s};
        m_desktop = std::make_unique<SwayDesktop>(options);
        for (const TestOutput &output : m_desktop->outputs()) {
            m_pictures.push_back(noisePicture(output.pixels));
            m_desktop->paint(output.name, m_pictures.back());
        }
        const QRect last = m_desktop->outputs().front().frame;
        m_desktop->input().moveTo(last.bottomRight()); // one pixel of it shows
        m_list = std::make_unique<ListedWindows>(*m_desktop, QStringList{u"follow"_s});
    }
    void open(const QString &title)
    {
        m_desktop->startWindow({.appId = tiled, .title = title, .size = {400, 300}});
    }
    void command(const QString &command) { m_desktop->command(command); }
    bool lists(const std::vector<std::string> &titles)
    {
        return waitFor([&] { return m_list->titles() == titles; });
    }

    /// The part of the output on which the noise can't be seen, in pixels.
    QRect covered(std::size_t index = 0)
    {
        const QImage noise = m_pictures.at(index).convertToFormat(QImage::Format_RGB32);
        const QImage seen = m_desktop->look(m_desktop->outputs().at(index).name)
                                .convertToFormat(QImage::Format_RGB32);
        const QRect pointer(noise.width() - 4, noise.height() - 4, 4, 4);
        int left = noise.width();
        int top = noise.height();
        int right = -1;
        int bottom = -1;
        for (int y = 0; y < noise.height(); ++y) {
            for (int x = 0; x < noise.width(); ++x) {
                if (noise.pixel(x, y) == seen.pixel(x, y) || pointer.contains(x, y))
                    continue;
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        }
        return {QPoint(left, top), QPoint(right, bottom)};
    }
    /// Whether the one window to be seen, `title`, is listed with exactly the frame that is seen.
    testing::AssertionResult isListedAsItIsSeen(const std::string &title)
    {
        QRect listed;
        QRect seen;
        const bool agree = waitFor([&] {
            if (m_list->titles() != std::vector{title})
                return false;
            listed = m_list->window(title).frame.toRect();
            seen = covered();
            return seen == listed;
        });
        if (agree)
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
            << "listed " << listed.width() << 'x' << listed.height() << " at " << listed.x() << ','
            << listed.y() << ", seen " << seen.width() << 'x' << seen.height() << " at " << seen.x()
            << ',' << seen.y();
    }

    std::unique_ptr<SwayDesktop> m_desktop;
    std::vector<QImage> m_pictures;
    std::unique_ptr<ListedWindows> m_list;
};

TEST_F(SwayWindows, aTiledWindowHasItsTitleBarAndBorder)
{
    start();
    open(u"A"_s);
    EXPECT_TRUE(isListedAsItIsSeen("A"));
}

TEST_F(SwayWindows, aWindowWithABorderAloneHasNoTitleBar)
{
    start();
    open(u"A"_s);
    command(u"border pixel 7"_s);
    EXPECT_TRUE(isListedAsItIsSeen("A"));
}

TEST_F(SwayWindows, aFloatingWindowHasItsTitleBarAndBorder)
{
    start();
    open(u"A"_s);
    command(u"floating enable, move absolute position 111 222"_s);
    EXPECT_TRUE(isListedAsItIsSeen("A"));
    EXPECT_EQ(m_list->window("A").frame.topLeft(), QPointF(111, 222));
}

TEST_F(SwayWindows, aFloatingWindowWithoutBorderIsItsOwnSize)
{
    start();
    open(u"A"_s);
    command(u"floating enable, border none, move absolute position 50 60"_s);
    EXPECT_TRUE(isListedAsItIsSeen("A"));
    EXPECT_EQ(m_list->window("A").frame, QRectF(50, 60, 400, 300));
}

TEST_F(SwayWindows, theWindowOfATabbedContainerHasTheRowOfTabs)
{
    start();
    open(u"A"_s);
    command(u"layout tabbed"_s);
    open(u"B"_s);
    EXPECT_TRUE(isListedAsItIsSeen("B"));
}

TEST_F(SwayWindows, theWindowOfAStackHasAllTitleBars)
{
    start();
    open(u"A"_s);
    command(u"layout stacking"_s);
    open(u"B"_s);
    open(u"C"_s);
    command(u"[title=B] focus"_s);
    EXPECT_TRUE(isListedAsItIsSeen("B"));
}

TEST_F(SwayWindows, aFullScreenWindowIsTheWholeOutputAndAlone)
{
    start();
    open(u"A"_s);
    open(u"B"_s);
    command(u"fullscreen enable"_s);
    EXPECT_TRUE(isListedAsItIsSeen("B"));
    EXPECT_EQ(m_list->window("B").frame, QRectF(0, 0, 1280, 800));
}

TEST_F(SwayWindows, floatingOnesAreInFrontAsTheyWereRaised)
{
    start();
    for (const QString &title : {u"A"_s, u"B"_s, u"C"_s})
        open(title);
    command(u"[title=A] floating enable"_s);
    command(u"[title=B] floating enable"_s);
    EXPECT_TRUE(lists({"B", "A", "C"}));
    command(u"[title=A] focus"_s);
    EXPECT_TRUE(lists({"A", "B", "C"}));
}

TEST_F(SwayWindows, whatIsNotToBeSeenIsNotListed)
{
    start();
    for (const QString &title : {u"A"_s, u"B"_s, u"C"_s})
        open(title);
    command(u"[title=A] move scratchpad"_s);
    command(u"[title=B] move to workspace 7"_s);
    EXPECT_TRUE(lists({"C"}));
    command(u"workspace 7"_s);
    EXPECT_TRUE(lists({"B"}));
    command(u"[title=A] scratchpad show"_s);
    EXPECT_TRUE(lists({"A", "B"}));
}

TEST_F(SwayWindows, aSizeThatSwayDoesNotTellIsNoticed)
{
    start();
    open(u"A"_s);
    command(u"floating enable, border none"_s);
    command(u"resize set 500 350"_s);
    EXPECT_TRUE(waitFor([&] { return m_list->window("A").frame.size() == QSizeF(500, 350); }));
    command(u"resize set 450 330"_s);
    EXPECT_TRUE(waitFor([&] { return m_list->window("A").frame.size() == QSizeF(450, 330); }));
}

TEST_F(SwayWindows, windowsThatCloseAreForgotten)
{
    start();
    open(u"A"_s);
    open(u"B"_s);
    ASSERT_TRUE(waitFor([&] { return m_list->titles().size() == 2; }));
    command(u"[title=A] kill"_s);
    EXPECT_TRUE(lists({"B"}));
}

TEST_F(SwayWindows, belongToTheirProcessAndProgram)
{
    start();
    const Process &window = m_desktop->startWindow({.appId = tiled, .title = u"A"_s});
    ASSERT_TRUE(lists({"A"}));
    EXPECT_EQ(m_list->window("A").process, window.pid());
    EXPECT_EQ(m_list->window("A").owner, tiled.toStdString());
    EXPECT_EQ(m_list->window("A").layer, 0);
}

TEST_F(SwayWindows, countFromTheMainOutputInPointsWhateverTheScale)
{
    start(2);
    command(u"focus output HEADLESS-2"_s);
    open(u"A"_s);
    command(u"floating enable, border none, move absolute position 30 40"_s);
    ASSERT_TRUE(waitFor([&] { return covered(1) == QRect(60, 80, 800, 600); }));
    EXPECT_TRUE(waitFor([&] {
        return m_list->window("A").frame == QRectF(30 - 640, 40, 400, 300);
    })) << m_list->window("A");
}

} // namespace
} // namespace lumacap::harness
