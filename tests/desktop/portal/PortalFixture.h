#pragma once

#include "harness/Agent.h"
#include "harness/TestDesktop.h"

#include <QImage>
#include <QStringList>

namespace lumacap::harness {

/// Starts the stand-in for a portal in `desktop`, which grants every Screenshot with `picture`
/// unless `options` say otherwise, as that program describes them. Comes back when it can be asked.
Process &startStandInPortal(TestDesktop &desktop, const QImage &picture,
                            const QStringList &options = {});

/// The folder where the stand-in puts its files.
QString portalFolder(const TestDesktop &desktop);

/// The lines that the agent has printed, once they are `count`; those there are when they stay
/// fewer.
QList<QByteArray> linesOf(Agent &agent, qsizetype count);

/// Has the program save each capture in the folder "pictures".
void saveCaptures(TestDesktop &desktop);

} // namespace lumacap::harness
