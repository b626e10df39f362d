#include "portal/PortalFixture.h"

#include "harness/Settings.h"
#include "harness/WaitFor.h"

#include <stdexcept>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

Process &startStandInPortal(TestDesktop &desktop, const QImage &picture, const QStringList &options)
{
    const QString file = desktop.newLog(u"picture"_s);
    if (!picture.save(file, "png"))
        throw std::runtime_error("no file for the portal's picture");
    Process &portal =
        desktop.start(u"portal"_s,
                      QStringList{QStringLiteral(LUMACAP_STAND_IN_PORTAL), u"picture="_s + file,
                                  u"to="_s + portalFolder(desktop)}
                          + options);
    require("the stand-in portal", [&portal] {
        if (portal.ending())
            throw std::runtime_error("the portal ended: " + portal.errors().toStdString());
        return portal.output().contains("ready\n");
    });
    return portal;
}

QString portalFolder(const TestDesktop &desktop)
{
    return desktop.folder(u"portal"_s);
}

QList<QByteArray> linesOf(Agent &agent, qsizetype count)
{
    QList<QByteArray> lines;
    std::ignore = waitFor([&] {
        lines = agent.process().output().split('\n');
        lines.removeLast(); // what is after the last line's end
        return lines.size() >= count;
    });
    return lines;
}

void saveCaptures(TestDesktop &desktop)
{
    writeSettings(
        desktop,
        {{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, desktop.folder(u"pictures"_s)}});
}

} // namespace lumacap::harness
