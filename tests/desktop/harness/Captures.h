#pragma once

#include "harness/ImageReading.h"
#include "harness/PrivateDesktop.h"

#include <QImage>
#include <QStringList>

namespace lumacap::harness {

/// A screen of 3840 x 2160 with one of 1920 x 2160 to its right; `primary` of them, 0 or 1, is the
/// main one.
DesktopOptions twoMonitors(int primary = 0);
/// A small single monitor, for tests in which the picture matters little.
DesktopOptions smallScreen();

/// The clipboard's picture, waited for; null when none comes. Read from its PNG.
QImage clipboardPicture(TestDesktop &desktop);
/// Everything in `folder`, hidden files too, by name.
QStringList entriesOf(const QString &folder);
/// The paths of the captures in `folder`, oldest name first.
QStringList capturesIn(const QString &folder);
/// The picture in a file, by its suffix; null when it is not whole.
QImage pictureIn(TestDesktop &desktop, const QString &path);

/// The menu's entry for a full-screen capture with the designed shortcut.
QString fullScreenTitle();

} // namespace lumacap::harness
