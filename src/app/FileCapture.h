#pragma once

#include "platform/Result.h"
#include "preferences/storage/ImageFormat.h"

#include <QCoroTask>
#include <QString>

namespace lumacap {

class ScreenCapture;

/// Writes a picture of the first display into the file at `path`, whole or not at all.
/// `screenCapture` outlives the task.
QCoro::Task<Result<void>> captureFirstDisplay(ScreenCapture &screenCapture, QString path,
                                              ImageFormat format);

} // namespace lumacap
