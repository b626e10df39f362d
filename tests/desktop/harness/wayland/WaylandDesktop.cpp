#include "harness/wayland/WaylandDesktop.h"

#include "harness/WaitFor.h"

#include <QFile>

#include <stdexcept>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

/// The picture's rows as the program of the tests reads them.
void writeRows(const QImage &picture, const QString &path)
{
    const QImage rows = picture.convertToFormat(QImage::Format_RGB32);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)
        || file.write(reinterpret_cast<const char *>(rows.constBits()), rows.sizeInBytes())
            != rows.sizeInBytes())
        throw std::runtime_error("no file for a picture");
}

} // namespace

QString WaylandDesktop::socket() const
{
    return QString::fromLocal8Bit(environment().at("XDG_RUNTIME_DIR") + '/'
                                  + environment().at("WAYLAND_DISPLAY"));
}

Process &WaylandDesktop::show(const QImage &picture, const QStringList &kind)
{
    const QString file = newLog(u"picture"_s);
    writeRows(picture, file);
    Process &program =
        start(u"window"_s,
              QStringList{QStringLiteral(LUMACAP_PICTURE_WINDOW),
                          u"%1x%2"_s.arg(picture.width()).arg(picture.height()), file}
                  + kind);
    require("a window of the tests", [&program] {
        if (program.ending())
            throw std::runtime_error("the window ended: " + program.errors().toStdString());
        return program.output().contains("shown\n");
    });
    return program;
}

void WaylandDesktop::paint(const QString &output, const QImage &picture)
{
    Process &newer = show(picture, {u"background"_s, output});
    if (Process *const older = std::exchange(m_painted[output], &newer))
        stop(*older);
}

Process &WaylandDesktop::startWindow(const WindowLook &look)
{
    QImage picture(look.size, QImage::Format_RGB32);
    picture.fill(Qt::white);
    return show(picture, {u"window"_s, look.appId, look.title});
}

QList<QByteArray> WaylandDesktop::clipboardTypes()
{
    // It waits for ever where nobody has put anything on some compositors' clipboards.
    const Process reader({u"wl-paste"_s, u"--list-types"_s}, environment(), newLog(u"types"_s));
    const auto end = reader.waitForEnd(std::chrono::seconds(6));
    const QByteArray list = end == Ending{} ? reader.output().trimmed() : QByteArray();
    return list.isEmpty() ? QList<QByteArray>() : list.split('\n');
}

QByteArray WaylandDesktop::clipboardBytes(const char *type, std::chrono::milliseconds limit)
{
    const Process reader({u"wl-paste"_s, u"--no-newline"_s, u"--type"_s, QString::fromLatin1(type)},
                         environment(), newLog(u"clipboard"_s));
    const auto end = reader.waitForEnd(limit);
    return end == Ending{} ? reader.output() : QByteArray();
}

} // namespace lumacap::harness
