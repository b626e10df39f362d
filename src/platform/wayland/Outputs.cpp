#include "platform/wayland/Outputs.h"

#include "platform/wayland/Connection.h"

#include <algorithm>
#include <tuple>

#include <protocols/xdg-output-unstable-v1.h>
#include <wayland-client-protocol.h>

namespace lumacap::wayland {

namespace {

constexpr std::uint32_t outputVersion = 4; // the one that tells the name
constexpr std::uint32_t extensionVersion = 3; // the one whose news ends with the output's

void endOutput(wl_output *output)
{
    if (wl_output_get_version(output) >= WL_OUTPUT_RELEASE_SINCE_VERSION)
        wl_output_release(output);
    else
        wl_output_destroy(output);
}

bool turnsOnItsSide(std::int32_t transform)
{
    return transform == WL_OUTPUT_TRANSFORM_90 || transform == WL_OUTPUT_TRANSFORM_270
        || transform == WL_OUTPUT_TRANSFORM_FLIPPED_90
        || transform == WL_OUTPUT_TRANSFORM_FLIPPED_270;
}

} // namespace

/// One output: what the compositor tells of it piece by piece, and what is known since it last said
/// that it was done.
class Outputs::Watched {
public:
    Watched(Outputs &outputs, std::uint32_t number, Owned<wl_output> output)
        : m_outputs(outputs)
        , m_number(number)
        , m_output(std::move(output))
    {
        wl_output_add_listener(m_output.get(), &outputListener(), this);
        if (outputs.m_extension == nullptr)
            return;
        m_extension =
            owned(zxdg_output_manager_v1_get_xdg_output(outputs.m_extension.get(), m_output.get()),
                  &zxdg_output_v1_destroy);
        zxdg_output_v1_add_listener(m_extension.get(), &extensionListener(), this);
    }

    std::uint32_t number() const { return m_number; }
    const std::optional<Output> &known() const { return m_known; }

private:
    static Watched &self(void *data) { return *static_cast<Watched *>(data); }
    static const wl_output_listener &outputListener();
    static const zxdg_output_v1_listener &extensionListener();

    void finish();
    void finishOldExtension();

    Outputs &m_outputs;
    std::uint32_t m_number;
    Owned<wl_output> m_output;
    Owned<zxdg_output_v1> m_extension; // ends before its output
    QString m_name;
    QSize m_mode;
    QPoint m_place;
    std::int32_t m_transform = WL_OUTPUT_TRANSFORM_NORMAL;
    int m_scale = 1;
    QRect m_frame; // null until the extension tells
    std::optional<Output> m_known;
};

const wl_output_listener &Outputs::Watched::outputListener()
{
    static constexpr wl_output_listener listener{
        .geometry =
            [](void *data, wl_output * /*output*/, std::int32_t x, std::int32_t y,
               std::int32_t /*millimetresWide*/, std::int32_t /*millimetresHigh*/,
               std::int32_t /*subpixel*/, const char * /*make*/, const char * /*model*/,
               std::int32_t transform) {
                self(data).m_place = {x, y};
                self(data).m_transform = transform;
            },
        .mode =
            [](void *data, wl_output * /*output*/, std::uint32_t flags, std::int32_t width,
               std::int32_t height, std::int32_t /*refresh*/) {
                if ((flags & WL_OUTPUT_MODE_CURRENT) != 0)
                    self(data).m_mode = {width, height};
            },
        .done = [](void *data, wl_output * /*output*/) { self(data).finish(); },
        .scale = [](void *data, wl_output * /*output*/,
                    std::int32_t factor) { self(data).m_scale = std::max(1, factor); },
        .name = [](void *data, wl_output * /*output*/,
                   const char *name) { self(data).m_name = QString::fromUtf8(name); },
        .description = [](void * /*data*/, wl_output * /*output*/, const char * /*text*/) {},
    };
    return listener;
}

const zxdg_output_v1_listener &Outputs::Watched::extensionListener()
{
    static constexpr zxdg_output_v1_listener listener{
        .logical_position = [](void *data, zxdg_output_v1 * /*output*/, std::int32_t x,
                               std::int32_t y) { self(data).m_frame.moveTopLeft({x, y}); },
        .logical_size = [](void *data, zxdg_output_v1 * /*output*/, std::int32_t width,
                           std::int32_t height) { self(data).m_frame.setSize({width, height}); },
        .done = [](void *data, zxdg_output_v1 * /*output*/) { self(data).finishOldExtension(); },
        .name = [](void *data, zxdg_output_v1 * /*output*/,
                   const char *name) { self(data).m_name = QString::fromUtf8(name); },
        .description = [](void * /*data*/, zxdg_output_v1 * /*output*/, const char * /*text*/) {},
    };
    return listener;
}

void Outputs::Watched::finish()
{
    // Told all but the extension's part yet, whose end is another event of the output.
    if (m_mode.isEmpty() || (m_extension != nullptr && m_frame.isEmpty()))
        return;
    const QSize pixels = turnsOnItsSide(m_transform) ? m_mode.transposed() : m_mode;
    const QRect frame = m_frame.isEmpty() ? QRect(m_place, pixels / m_scale) : m_frame;
    // Neither protocol's old versions tell a name.
    const QString name = m_name.isEmpty() ? QString::number(m_number) : m_name;
    const Output now{name, pixels, frame, m_output.get(), m_transform};
    if (m_known == now)
        return;
    m_known = now;
    Q_EMIT m_outputs.changed();
}

void Outputs::Watched::finishOldExtension()
{
    if (zxdg_output_v1_get_version(m_extension.get()) < extensionVersion)
        finish();
}

Outputs::Outputs(Connection &connection)
    : m_connection(connection)
    , m_extension(connection.bind(zxdg_output_manager_v1_interface, extensionVersion,
                                  &zxdg_output_manager_v1_destroy))
{
    for (const std::uint32_t number : connection.numbersOf(wl_output_interface))
        watch(number);
    connect(&connection, &Connection::appeared, this,
            [this](std::uint32_t number, const QByteArray &interface) {
                if (interface == wl_output_interface.name)
                    watch(number);
            });
    connect(&connection, &Connection::disappeared, this, &Outputs::forget);
    std::ignore = connection.roundTrip(); // those that are late come as changes
}

Outputs::~Outputs() = default;

std::vector<Output> Outputs::all() const
{
    std::vector<Output> all;
    for (const auto &watched : m_watched) {
        if (const auto &known = watched->known())
            all.push_back(*known);
    }
    const auto main = std::ranges::find(all, m_main, &Output::name);
    if (main != all.end())
        std::rotate(all.begin(), main, main + 1);
    return all;
}

void Outputs::setMain(const QString &name)
{
    if (name == m_main)
        return;
    m_main = name;
    Q_EMIT changed();
}

void Outputs::watch(std::uint32_t number)
{
    auto output = m_connection.bind(number, wl_output_interface, outputVersion, &endOutput);
    if (output != nullptr)
        m_watched.push_back(std::make_unique<Watched>(*this, number, std::move(output)));
    m_connection.flush();
}

void Outputs::forget(std::uint32_t number)
{
    const auto gone = std::erase_if(
        m_watched, [number](const auto &watched) { return watched->number() == number; });
    if (gone != 0)
        Q_EMIT changed();
}

} // namespace lumacap::wayland
