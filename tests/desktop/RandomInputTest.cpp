#include "AnnotatingFixture.h"
#include "harness/OpenMenu.h"
#include "harness/Rest.h"
#include "harness/TestedBuild.h"
#include "harness/WaitFor.h"

#include <cstdlib>
#include <random>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

constexpr int captures = 20;
constexpr int eventsACapture = 100;

const std::int64_t tolerance = (4LL << 20) + keptBySanitizer(); // one picture of this screen

unsigned seed()
{
    const QByteArray given = qgetenv("LUMACAP_RANDOM_SEED");
    return given.isEmpty() ? 20261121U : given.toUInt();
}

/// Somebody's cat on mouse and keyboard, over and over.
struct RandomInputTest : AnnotatingFixture {
    RandomInputTest() { RecordProperty("seed", static_cast<int>(seed())); }

    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }

    QStringList moveSomewhere()
    {
        const int y = pick(3) == 0 ? 60 + pick(60) : pick(points.height()); // often on the toolbar
        const QPoint place(pick(points.width()), y);
        if (m_confirm.contains(place)) // a confirmation ends the capture, and comes by itself below
            return moveSomewhere();
        return {u"mousemove"_s, QString::number(place.x()), QString::number(place.y())};
    }

    /// No space bar: it could confirm a newspaper around a selection too narrow for its columns,
    /// which by rule ends the program.
    QStringList someEvent()
    {
        static const QStringList keys{u"Tab"_s,  u"shift+Tab"_s, u"ctrl+z"_s, u"super+z"_s,
                                      u"Down"_s, u"a"_s,         u"eacute"_s, u"BackSpace"_s};
        switch (pick(8)) {
        case 0:
            return {u"mousedown"_s, u"1"_s};
        case 1:
            return {u"mouseup"_s, u"1"_s};
        case 2:
            return {u"click"_s, QString::number(1 + pick(5))};
        case 3:
            return {u"key"_s, keys.at(pick(static_cast<int>(keys.size())))};
        default:
            return moveSomewhere();
        }
    }

    void playACapture()
    {
        const auto confirm = controls().find(u"Valider"_s);
        ASSERT_TRUE(confirm);
        m_confirm = confirm->place.adjusted(-300, -60, 300, 60); // wherever groups move it
        QStringList steps;
        for (int event = 0; event < eventsACapture; ++event)
            steps += someEvent();
        input(steps + QStringList{u"mouseup"_s, u"1"_s});
    }

    void endByEscape()
    {
        ASSERT_TRUE(waitFor([this] {
            press(u"Escape"_s);
            return !overlayIsUp();
        }));
    }

    void endByReturn()
    {
        use(u"selection"_s); // which an open menu takes for itself
        use(u"selection"_s);
        dragPoints({100, 300}, {1300, 600});
        press(u"Return"_s);
        ASSERT_TRUE(waitFor([this] { return !overlayIsUp(); }));
    }

    void play()
    {
        for (int capture = 0; capture < captures; ++capture) {
            SCOPED_TRACE("seed " + std::to_string(seed()) + ", capture " + std::to_string(capture));
            if (!overlayIsUp())
                openOverlay();
            playACapture();
            ASSERT_TRUE(overlayIsUp());
            if (capture % 2 == 0)
                endByEscape();
            else
                endByReturn();
            if (capture == captures / 4)
                m_memoryEarly = memoryOf(agent->process().pid());
        }
    }

    QRect m_confirm;
    std::int64_t m_memoryEarly = 0;
    std::mt19937 m_random{seed()};
};

TEST_F(RandomInputTest, twoThousandEventsLeaveNoOverlayNoGrabNoMemoryAndALivingAgent)
{
    annotateOn(points, 1, {{u"copyToClipboard"_s, u"false"_s}});
    play();

    EXPECT_FALSE(files().isEmpty());
    const auto growth = [this] { return memoryOf(agent->process().pid()) - m_memoryEarly; };
    EXPECT_TRUE(waitFor([&] { return growth() < tolerance; })) << growth() / 1024 << " KiB";
    const OpenMenu menu(desktop->server().display(), {10, 10, 50, 50}); // which takes both grabs
    EXPECT_TRUE(agent->activate(u"quit"_s));
    EXPECT_EQ(agent->process().waitForEnd(std::chrono::seconds(20)), Ending{});
}

} // namespace
} // namespace lumacap::harness
