#include "platform/kwin/capture/Screenshot.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using testing::HasSubstr;

namespace lumacap::kwin {

namespace {

std::string said(const QString &error)
{
    return screenshotFailure(QDBusMessage::createError(error, u"the service's words"_s))
        .description.toStdString();
}

} // namespace

TEST(ScreenshotTest, whoIsNotAllowedIsToldWhatToDo)
{
    EXPECT_THAT(said(u"org.kde.KWin.ScreenShot2.Error.NoAuthorized"_s),
                HasSubstr("install Lumacap"));
}

TEST(ScreenshotTest, aScreenThatKWinDoesNotKnowHasBeenUnplugged)
{
    EXPECT_EQ(said(u"org.kde.KWin.ScreenShot2.Error.InvalidScreen"_s),
              "the display has been unplugged");
}

TEST(ScreenshotTest, anUnknownErrorIsToldInTheServicesWords)
{
    EXPECT_THAT(said(u"org.example.Error"_s), HasSubstr("the service's words"));
}

} // namespace lumacap::kwin
