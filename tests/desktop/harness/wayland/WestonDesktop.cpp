#include "harness/wayland/WestonDesktop.h"

#include "harness/ImageReading.h"
#include "harness/WaitFor.h"
#include "harness/wayland/Compositor.h"

#include <QDir>

#include <stdexcept>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

WestonDesktop::WestonDesktop(const WestonOptions &options)
    : WaylandDesktop(QStringList{u"org.a11y.Bus"_s})
    , m_options(options)
{
    set("XDG_SESSION_TYPE", "wayland");
    set("XDG_CURRENT_DESKTOP", "weston");
    const QString name = u"wayland-weston"_s;
    // The switch for debugging lets programs take pictures, which is for the test's own eyes: the
    // program under test does not know the protocol.
    m_weston =
        &start(u"weston"_s,
               backend()
                   + QStringList{u"--use-pixman"_s, u"--debug"_s, u"--no-config"_s,
                                 u"--idle-time=0"_s, u"--socket="_s + name,
                                 u"--width=%1"_s.arg(options.pixels.width() / options.scale),
                                 u"--height=%1"_s.arg(options.pixels.height() / options.scale),
                                 u"--scale=%1"_s.arg(options.scale)});
    set("WAYLAND_DISPLAY", name.toLocal8Bit());
    require("weston", [this] {
        if (m_weston->ending())
            throw std::runtime_error("weston ended: " + m_weston->errors().toStdString());
        return Compositor::answers(socket());
    });
}

WestonDesktop::~WestonDesktop()
{
    stopAll(); // before the folders go
}

/// Its command line as far as that.
QStringList WestonDesktop::backend()
{
    if (m_options.seat == Seat::Absent)
        return {u"weston"_s, u"--backend=headless-backend.so"_s};
    m_server = std::make_unique<XServer>(ServerOptions{.size = m_options.pixels}, folder(u"x"_s),
                                         environment());
    m_input = std::make_unique<XInput>(m_server->display());
    return {u"env"_s, u"DISPLAY="_s + QString::fromLatin1(m_server->display()), u"weston"_s,
            u"--backend=x11-backend.so"_s};
}

std::vector<TestOutput> WestonDesktop::outputs()
{
    return {{u"any"_s, m_options.pixels, QRect({}, m_options.pixels / m_options.scale)}};
}

Input &WestonDesktop::input()
{
    if (!m_input)
        throw std::logic_error("weston has no seat");
    return *m_input;
}

QImage WestonDesktop::look(const QString & /*output*/)
{
    QDir folder(newLog(u"look"_s));
    folder.mkpath(u"."_s);
    const Answer taken = ask(
        {u"sh"_s, u"-c"_s, u"cd \"$1\" && exec weston-screenshooter"_s, u"sh"_s, folder.path()});
    const QStringList files = folder.entryList({u"*.png"_s});
    if (taken.ending != Ending{} || files.size() != 1)
        throw std::runtime_error("weston gives no picture: " + taken.errors.toStdString());
    return readImage(*this, fileBytes(folder.filePath(files.first())), ImageKind::Png);
}

void WestonDesktop::paint(const QString &output, const QImage &picture)
{
    show(picture, {u"full-screen"_s, output});
}

} // namespace lumacap::harness
