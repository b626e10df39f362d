#include "harness/wayland/SwayDesktop.h"

#include "harness/ImageReading.h"
#include "harness/WaitFor.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <stdexcept>

#include <unistd.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

/// The one entry of `folder` that fits `pattern`, once it is there.
QString awaitedEntry(const QString &folder, const QString &pattern, const Process &server)
{
    QStringList found;
    require("sway", [&] {
        if (server.ending())
            throw std::runtime_error("sway ended: " + server.errors().toStdString());
        found = QDir(folder).entryList({pattern}, QDir::System | QDir::Files);
        found.removeIf([](const QString &name) { return name.endsWith(u".lock"_s); });
        return !found.isEmpty();
    });
    return found.first();
}

TestOutput outputOf(const QJsonObject &told)
{
    const QJsonObject rect = told[u"rect"_s].toObject();
    const QJsonObject mode = told[u"current_mode"_s].toObject();
    QSize pixels(mode[u"width"_s].toInt(), mode[u"height"_s].toInt());
    if (told[u"transform"_s].toString().contains(u"90"_s)
        || told[u"transform"_s].toString().contains(u"270"_s))
        pixels.transpose();
    return {told[u"name"_s].toString(),
            pixels,
            {rect[u"x"_s].toInt(), rect[u"y"_s].toInt(), rect[u"width"_s].toInt(),
             rect[u"height"_s].toInt()}};
}

} // namespace

SwayDesktop::SwayDesktop(const SwayOptions &options)
    : WaylandDesktop(QStringList{u"org.a11y.Bus"_s})
{
    set("XDG_SESSION_TYPE", "wayland");
    set("XDG_CURRENT_DESKTOP", "sway");
    set("WLR_BACKENDS", "headless");
    set("WLR_LIBINPUT_NO_DEVICES", "1");
    set("WLR_RENDERER", "pixman");
    set("WLR_HEADLESS_OUTPUTS", QByteArray::number(static_cast<int>(options.outputs.size())));
    // It refuses to run as root: there is none in a user namespace of its own.
    QStringList sway{u"sway"_s, u"--config"_s, writeConfiguration(options)};
    if (getuid() == 0)
        sway = QStringList{u"unshare"_s, u"--user"_s, u"--map-user=1000"_s, u"--map-group=1000"_s}
            + sway;
    m_sway = &start(u"sway"_s, sway);
    const QString runtime = folder(u"run"_s);
    set("SWAYSOCK",
        (runtime + u'/' + awaitedEntry(runtime, u"sway-ipc.*.sock"_s, *m_sway)).toLocal8Bit());
    set("WAYLAND_DISPLAY", awaitedEntry(runtime, u"wayland-?"_s, *m_sway).toLocal8Bit());
    require("sway's outputs",
            [this, &options] { return outputs().size() == options.outputs.size(); });
    QRect layout;
    for (const TestOutput &output : outputs())
        layout |= output.frame;
    m_input = std::make_unique<VirtualInput>(socket(), layout, options.keyboardLayout);
}

SwayDesktop::~SwayDesktop()
{
    m_input.reset();
    stopAll(); // before the folders go
}

QString SwayDesktop::writeConfiguration(const SwayOptions &options) const
{
    QStringList lines{u"xwayland disable"_s,
                      u"seat seat0 fallback true"_s,
                      u"seat seat0 xcursor_theme Adwaita 24"_s,
                      u"default_border none"_s,
                      u"default_floating_border none"_s,
                      u"for_window [app_id=\"org.example.Window\"] floating enable"_s};
    int number = 0;
    for (const SwayOutput &output : options.outputs) {
        lines.append(u"output HEADLESS-%1 resolution %2x%3 position %4 %5 scale %6 transform %7"_s
                         .arg(++number)
                         .arg(output.mode.width())
                         .arg(output.mode.height())
                         .arg(output.place.x())
                         .arg(output.place.y())
                         .arg(output.scale)
                         .arg(output.transform));
    }
    lines += options.configuration;
    QFile file(folder(u"config"_s) + u"/sway.conf"_s);
    if (!file.open(QIODevice::WriteOnly) || file.write(lines.join(u'\n').toUtf8() + '\n') < 0)
        throw std::runtime_error("no configuration for sway");
    return file.fileName();
}

Answer SwayDesktop::tell(const QStringList &words)
{
    // Its socket has room for three who wait: with more, a connection is refused.
    Answer said;
    require("sway's socket", [&] {
        said = ask(QStringList{u"swaymsg"_s} + words);
        return !said.errors.contains("Unable to connect");
    });
    return said;
}

QByteArray SwayDesktop::answer(const QString &question)
{
    const Answer said = tell({u"--raw"_s, u"--type"_s, question});
    if (said.ending != Ending{})
        throw std::runtime_error("sway does not answer: " + said.errors.toStdString());
    return said.output;
}

void SwayDesktop::command(const QString &command)
{
    const Answer said = tell({command});
    if (said.ending != Ending{})
        throw std::runtime_error("sway refused: " + (said.output + said.errors).toStdString());
}

bool SwayDesktop::obeys(const QString &command)
{
    return tell({command}).ending == Ending{};
}

std::vector<TestOutput> SwayDesktop::outputs()
{
    std::vector<TestOutput> outputs;
    for (const QJsonValue &told : QJsonDocument::fromJson(answer(u"get_outputs"_s)).array()) {
        if (told.toObject()[u"active"_s].toBool())
            outputs.push_back(outputOf(told.toObject()));
    }
    std::ranges::sort(outputs, {}, &TestOutput::name);
    return outputs;
}

QImage SwayDesktop::look(const QString &output)
{
    const Answer seen =
        ask({u"grim"_s, u"-o"_s, output, u"-t"_s, u"png"_s, u"-l"_s, u"1"_s, u"-"_s});
    return readImage(*this, seen.output, ImageKind::Png);
}

} // namespace lumacap::harness
