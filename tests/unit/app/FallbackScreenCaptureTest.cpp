#include "app/FallbackScreenCapture.h"

#include "fakes/FakeScreenCapture.h"

#include <gmock/gmock.h>

namespace lumacap {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr DisplayId display{7};
constexpr QSize size{4, 3};

/// Two ways that have one display.
class FallbackCapture : public testing::Test {
protected:
    FallbackCapture() { first->listed = std::vector{DisplayInfo{display, 4, 3}}; }

    Result<QImage> grab(DisplayId wanted = display)
    {
        return QCoro::waitFor(capture.grab(wanted, size));
    }

    FakeScreenCapture *first = new FakeScreenCapture;
    FakeScreenCapture *second = new FakeScreenCapture;
    FallbackScreenCapture capture{std::unique_ptr<ScreenCapture>(first),
                                  std::unique_ptr<ScreenCapture>(second)};
};

TEST_F(FallbackCapture, leavesTheSecondWayAloneWhileTheFirstWorks)
{
    EXPECT_TRUE(grab());
    EXPECT_THAT(second->requests, IsEmpty());
}

TEST_F(FallbackCapture, goesTheSecondWayWhereTheFirstIsRefused)
{
    first->refusal = Failure{u"no"_s};

    const auto picture = grab();

    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->size(), size);
    EXPECT_THAT(second->requests, ElementsAre(FakeScreenCapture::Request{display, size}));
}

TEST_F(FallbackCapture, tellsBothReasonsWhereBothAreRefused)
{
    first->refusal = Failure{u"not allowed"_s};
    second->refusal = Failure{u"cancelled"_s};

    EXPECT_EQ(grab(), Result<QImage>(failure(u"not allowed; cancelled"_s)));
}

TEST_F(FallbackCapture, asksNobodyForADisplayThatHasGone)
{
    first->refusal = Failure{u"unplugged"_s};

    EXPECT_EQ(grab(DisplayId{8}), Result<QImage>(failure(u"unplugged"_s)));
    EXPECT_THAT(second->requests, IsEmpty());
}

TEST_F(FallbackCapture, hasTheDisplaysOfTheFirstWay)
{
    EXPECT_EQ(QCoro::waitFor(capture.displays()), first->listed);
}

} // namespace
} // namespace lumacap
