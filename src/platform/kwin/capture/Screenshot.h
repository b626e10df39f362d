#pragma once

#include "platform/Result.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QImage>
#include <QVariantList>

namespace lumacap::kwin {

/// Who takes KWin's pictures, on the session bus. The name is there only while KWin can take them.
inline constexpr QLatin1StringView screenshotService("org.kde.KWin.ScreenShot2");

/// The answer to one of the service's methods that take pictures, called with `arguments` and, at
/// last, the pipe. Opaque; a failure that a person can act on, at `deadline` at the latest.
QCoro::Task<Result<QImage>> takeScreenshot(QDBusConnection bus, QString method,
                                           QVariantList arguments, QDeadlineTimer deadline);

/// What an error of the service means to the person who asked for a picture.
Failure screenshotFailure(const QDBusMessage &error);

} // namespace lumacap::kwin
