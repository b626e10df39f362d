// A Wayland program that shows a picture and tells on standard output what becomes of it, a line
// each:
//
//   shown             the compositor has put the picture on an output
//   focus, unfocus    it has the keyboard, or no longer
//   enter, leave      the pointer is over it, or no longer
//   key CODE, button CODE   pressed; codes of linux/input-event-codes.h
//   closed            the compositor wants it closed; it then ends
//
// picture_window WIDTHxHEIGHT FILE background OUTPUT     under all windows of the output, filling
// it picture_window WIDTHxHEIGHT FILE full-screen OUTPUT    a full-screen window picture_window
// WIDTHxHEIGHT FILE window APP-ID TITLE   an ordinary one
//
// FILE holds the picture's rows, four bytes a pixel: blue, green, red, none.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <protocols/viewporter.h>
#include <protocols/wlr-layer-shell-unstable-v1.h>
#include <protocols/xdg-output-unstable-v1.h>
#include <protocols/xdg-shell.h>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

namespace {

void say(const char *word)
{
    std::puts(word);
    std::fflush(stdout);
}

[[noreturn]] void fail(const char *reason)
{
    std::fprintf(stderr, "picture_window: %s\n", reason);
    std::exit(EXIT_FAILURE);
}

struct NamedOutput {
    wl_output *proxy = nullptr;
    std::string name;
};

/// Everything the compositor gave us.
struct Client {
    wl_display *display = nullptr;
    wl_compositor *compositor = nullptr;
    wl_shm *shm = nullptr;
    wp_viewporter *viewporter = nullptr;
    xdg_wm_base *shell = nullptr;
    zwlr_layer_shell_v1 *layers = nullptr;
    zxdg_output_manager_v1 *outputNames = nullptr;
    wl_seat *seat = nullptr;
    wl_keyboard *keyboard = nullptr;
    wl_pointer *pointer = nullptr;
    wl_surface *cursor = nullptr; // some compositors show none unless they are given one
    std::vector<NamedOutput *> outputs; // as long as the program
    wl_surface *surface = nullptr;
    wp_viewport *viewport = nullptr;
    wl_buffer *buffer = nullptr;
    std::int32_t width = 0; // of the surface, in the compositor's units; the picture's own if 0
    std::int32_t height = 0;
    bool fills = false; // the picture is stretched over the surface, pixel by pixel of the output
};

template <class Proxy>
Proxy *bound(wl_registry *registry, std::uint32_t number, const wl_interface &interface,
             std::uint32_t version)
{
    return static_cast<Proxy *>(wl_registry_bind(registry, number, &interface, version));
}

const wl_output_listener outputListener{
    .geometry = [](void *, wl_output *, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                   std::int32_t, const char *, const char *, std::int32_t) {},
    .mode = [](void *, wl_output *, std::uint32_t, std::int32_t, std::int32_t, std::int32_t) {},
    .done = [](void *, wl_output *) {},
    .scale = [](void *, wl_output *, std::int32_t) {},
    .name = [](void *output, wl_output *,
               const char *name) { static_cast<NamedOutput *>(output)->name = name; },
    .description = [](void *, wl_output *, const char *) {},
};

/// Compositors whose outputs do not tell their names themselves tell them by this extension.
const zxdg_output_v1_listener outputNameListener{
    .logical_position = [](void *, zxdg_output_v1 *, std::int32_t, std::int32_t) {},
    .logical_size = [](void *, zxdg_output_v1 *, std::int32_t, std::int32_t) {},
    .done = [](void *, zxdg_output_v1 *) {},
    .name = [](void *output, zxdg_output_v1 *,
               const char *name) { static_cast<NamedOutput *>(output)->name = name; },
    .description = [](void *, zxdg_output_v1 *, const char *) {},
};

const wl_keyboard_listener keyboardListener{
    .keymap = [](void *, wl_keyboard *, std::uint32_t, std::int32_t, std::uint32_t) {},
    .enter = [](void *, wl_keyboard *, std::uint32_t, wl_surface *, wl_array *) { say("focus"); },
    .leave = [](void *, wl_keyboard *, std::uint32_t, wl_surface *) { say("unfocus"); },
    .key =
        [](void *, wl_keyboard *, std::uint32_t, std::uint32_t, std::uint32_t code,
           std::uint32_t state) {
            if (state == WL_KEYBOARD_KEY_STATE_PRESSED)
                say(("key " + std::to_string(code)).c_str());
        },
    .modifiers = [](void *, wl_keyboard *, std::uint32_t, std::uint32_t, std::uint32_t,
                    std::uint32_t, std::uint32_t) {},
    .repeat_info = [](void *, wl_keyboard *, std::int32_t, std::int32_t) {},
};

const wl_pointer_listener pointerListener{
    .enter =
        [](void *data, wl_pointer *pointer, std::uint32_t serial, wl_surface *, wl_fixed_t,
           wl_fixed_t) {
            const auto &client = *static_cast<Client *>(data);
            if (client.cursor != nullptr)
                wl_pointer_set_cursor(pointer, serial, client.cursor, 0, 0);
            say("enter");
        },
    .leave = [](void *, wl_pointer *, std::uint32_t, wl_surface *) { say("leave"); },
    .motion = [](void *, wl_pointer *, std::uint32_t, wl_fixed_t, wl_fixed_t) {},
    .button =
        [](void *, wl_pointer *, std::uint32_t, std::uint32_t, std::uint32_t code,
           std::uint32_t state) {
            if (state == WL_POINTER_BUTTON_STATE_PRESSED)
                say(("button " + std::to_string(code)).c_str());
        },
    .axis = [](void *, wl_pointer *, std::uint32_t, std::uint32_t, wl_fixed_t) {},
    .frame = [](void *, wl_pointer *) {},
    .axis_source = [](void *, wl_pointer *, std::uint32_t) {},
    .axis_stop = [](void *, wl_pointer *, std::uint32_t, std::uint32_t) {},
    .axis_discrete = [](void *, wl_pointer *, std::uint32_t, std::int32_t) {},
    .axis_value120 = [](void *, wl_pointer *, std::uint32_t, std::int32_t) {},
};

const wl_seat_listener seatListener{
    .capabilities =
        [](void *data, wl_seat *seat, std::uint32_t capabilities) {
            auto &client = *static_cast<Client *>(data);
            if ((capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0 && client.keyboard == nullptr) {
                client.keyboard = wl_seat_get_keyboard(seat);
                wl_keyboard_add_listener(client.keyboard, &keyboardListener, nullptr);
            }
            if ((capabilities & WL_SEAT_CAPABILITY_POINTER) != 0 && client.pointer == nullptr) {
                client.pointer = wl_seat_get_pointer(seat);
                wl_pointer_add_listener(client.pointer, &pointerListener, data);
            }
        },
    .name = [](void *, wl_seat *, const char *) {},
};

const xdg_wm_base_listener shellListener{
    .ping = [](void *, xdg_wm_base *shell,
               std::uint32_t serial) { xdg_wm_base_pong(shell, serial); },
};

const wl_registry_listener registryListener{
    .global =
        [](void *data, wl_registry *registry, std::uint32_t number, const char *interface,
           std::uint32_t version) {
            auto &client = *static_cast<Client *>(data);
            const std::string_view name(interface);
            if (name == wl_compositor_interface.name)
                client.compositor =
                    bound<wl_compositor>(registry, number, wl_compositor_interface, 4);
            else if (name == wl_shm_interface.name)
                client.shm = bound<wl_shm>(registry, number, wl_shm_interface, 1);
            else if (name == wp_viewporter_interface.name)
                client.viewporter =
                    bound<wp_viewporter>(registry, number, wp_viewporter_interface, 1);
            else if (name == xdg_wm_base_interface.name) {
                client.shell = bound<xdg_wm_base>(registry, number, xdg_wm_base_interface, 1);
                xdg_wm_base_add_listener(client.shell, &shellListener, nullptr);
            } else if (name == zwlr_layer_shell_v1_interface.name)
                client.layers =
                    bound<zwlr_layer_shell_v1>(registry, number, zwlr_layer_shell_v1_interface, 1);
            else if (name == wl_seat_interface.name && client.seat == nullptr) {
                client.seat =
                    bound<wl_seat>(registry, number, wl_seat_interface, version < 5 ? version : 5);
                wl_seat_add_listener(client.seat, &seatListener, data);
            } else if (name == zxdg_output_manager_v1_interface.name) {
                client.outputNames = bound<zxdg_output_manager_v1>(
                    registry, number, zxdg_output_manager_v1_interface, 2);
            } else if (name == wl_output_interface.name) {
                auto *const output = new NamedOutput{
                    bound<wl_output>(registry, number, wl_output_interface, std::min(version, 4U)),
                    {}};
                client.outputs.push_back(output);
                wl_output_add_listener(output->proxy, &outputListener, output);
            }
        },
    .global_remove = [](void *, wl_registry *, std::uint32_t) {},
};

const wl_callback_listener frameListener{
    .done =
        [](void *, wl_callback *callback, std::uint32_t) {
            wl_callback_destroy(callback);
            say("shown");
        },
};

/// Attaches the picture, the first time and after each new size.
void draw(Client &client)
{
    if (client.viewport != nullptr && client.fills && client.width > 0)
        wp_viewport_set_destination(client.viewport, client.width, client.height);
    wl_surface_attach(client.surface, client.buffer, 0, 0);
    wl_surface_damage_buffer(client.surface, 0, 0, INT32_MAX, INT32_MAX);
    wl_callback_add_listener(wl_surface_frame(client.surface), &frameListener, nullptr);
    wl_surface_commit(client.surface);
}

const zwlr_layer_surface_v1_listener layerListener{
    .configure =
        [](void *data, zwlr_layer_surface_v1 *layer, std::uint32_t serial, std::uint32_t width,
           std::uint32_t height) {
            auto &client = *static_cast<Client *>(data);
            zwlr_layer_surface_v1_ack_configure(layer, serial);
            client.width = static_cast<std::int32_t>(width);
            client.height = static_cast<std::int32_t>(height);
            draw(client);
        },
    .closed =
        [](void *, zwlr_layer_surface_v1 *) {
            say("closed");
            std::exit(EXIT_SUCCESS);
        },
};

const xdg_surface_listener surfaceListener{
    .configure =
        [](void *data, xdg_surface *surface, std::uint32_t serial) {
            xdg_surface_ack_configure(surface, serial);
            draw(*static_cast<Client *>(data));
        },
};

const xdg_toplevel_listener toplevelListener{
    .configure =
        [](void *data, xdg_toplevel *, std::int32_t width, std::int32_t height, wl_array *) {
            auto &client = *static_cast<Client *>(data);
            client.width = width;
            client.height = height;
        },
    .close =
        [](void *, xdg_toplevel *) {
            say("closed");
            std::exit(EXIT_SUCCESS);
        },
    .configure_bounds = [](void *, xdg_toplevel *, std::int32_t, std::int32_t) {},
    .wm_capabilities = [](void *, xdg_toplevel *, wl_array *) {},
};

void askForNames(const Client &client)
{
    if (client.outputNames == nullptr)
        return;
    for (NamedOutput *const output : client.outputs)
        zxdg_output_v1_add_listener(
            zxdg_output_manager_v1_get_xdg_output(client.outputNames, output->proxy),
            &outputNameListener, output);
}

/// Null, which leaves the choice to the compositor, for "any": old ones tell no names.
wl_output *outputNamed(const Client &client, std::string_view name)
{
    if (name == "any")
        return nullptr;
    for (const NamedOutput *output : client.outputs) {
        if (output->name == name)
            return output->proxy;
    }
    fail("no such output");
}

void makeBuffer(Client &client, const char *size, const char *path)
{
    std::int32_t width = 0;
    std::int32_t height = 0;
    if (std::sscanf(size, "%dx%d", &width, &height) != 2)
        fail("no size");
    const int file = open(path, O_RDWR | O_CLOEXEC);
    if (file < 0)
        fail("no picture");
    wl_shm_pool *const pool = wl_shm_create_pool(client.shm, file, width * height * 4);
    client.buffer =
        wl_shm_pool_create_buffer(pool, 0, width, height, width * 4, WL_SHM_FORMAT_XRGB8888);
    wl_shm_pool_destroy(pool);
}

/// A black square: what a pointer looks like is for the programs to say.
void makeCursor(Client &client)
{
    constexpr std::int32_t side = 16;
    constexpr std::int32_t bytes = side * side * 4;
    const int file = memfd_create("cursor", MFD_CLOEXEC);
    if (file < 0 || ftruncate(file, bytes) < 0)
        fail("no cursor");
    wl_shm_pool *const pool = wl_shm_create_pool(client.shm, file, bytes);
    wl_buffer *const buffer =
        wl_shm_pool_create_buffer(pool, 0, side, side, side * 4, WL_SHM_FORMAT_XRGB8888);
    wl_shm_pool_destroy(pool);
    close(file);
    client.cursor = wl_compositor_create_surface(client.compositor);
    wl_surface_attach(client.cursor, buffer, 0, 0);
    wl_surface_commit(client.cursor);
}

void beBackground(Client &client, const char *output)
{
    if (client.layers == nullptr)
        fail("the compositor has no layers");
    auto *const layer = zwlr_layer_shell_v1_get_layer_surface(
        client.layers, client.surface, outputNamed(client, output),
        ZWLR_LAYER_SHELL_V1_LAYER_BACKGROUND, "wallpaper");
    zwlr_layer_surface_v1_set_anchor(layer, 15);
    zwlr_layer_surface_v1_set_exclusive_zone(layer, -1);
    zwlr_layer_surface_v1_add_listener(layer, &layerListener, &client);
    client.fills = true;
}

xdg_toplevel *beWindow(Client &client)
{
    xdg_surface *const surface = xdg_wm_base_get_xdg_surface(client.shell, client.surface);
    xdg_surface_add_listener(surface, &surfaceListener, &client);
    xdg_toplevel *const toplevel = xdg_surface_get_toplevel(surface);
    xdg_toplevel_add_listener(toplevel, &toplevelListener, &client);
    return toplevel;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 5)
        fail("usage: picture_window WIDTHxHEIGHT FILE KIND …");
    Client client;
    client.display = wl_display_connect(nullptr);
    if (client.display == nullptr)
        fail("no compositor");
    wl_registry_add_listener(wl_display_get_registry(client.display), &registryListener, &client);
    wl_display_roundtrip(client.display); // what there is
    askForNames(client);
    wl_display_roundtrip(client.display); // the outputs' names
    if (client.compositor == nullptr || client.shm == nullptr || client.shell == nullptr)
        fail("the compositor lacks something");
    makeBuffer(client, argv[1], argv[2]);
    client.surface = wl_compositor_create_surface(client.compositor);
    if (client.viewporter != nullptr)
        client.viewport = wp_viewporter_get_viewport(client.viewporter, client.surface);
    const std::string_view kind(argv[3]);
    if (kind == "background") {
        beBackground(client, argv[4]);
    } else if (kind == "full-screen") {
        client.fills = true;
        makeCursor(client);
        xdg_toplevel_set_fullscreen(beWindow(client), outputNamed(client, argv[4]));
    } else {
        xdg_toplevel *const toplevel = beWindow(client);
        xdg_toplevel_set_app_id(toplevel, argv[4]);
        xdg_toplevel_set_title(toplevel, argc > 5 ? argv[5] : "");
    }
    wl_surface_commit(client.surface);
    while (wl_display_dispatch(client.display) >= 0) { }
    return EXIT_SUCCESS;
}
