#include "platform/gnome/module/GSettingsKeybindings.h"

#include "platform/gnome/module/Accelerator.h"
#include "platform/gnome/module/KeyLayout.h"

#include <algorithm>
#include <optional>

#include <gio/gio.h>

using namespace Qt::StringLiterals;

namespace lumacap::gnome {

namespace {

constexpr auto mediaKeysSchema = "org.gnome.settings-daemon.plugins.media-keys";
constexpr auto customSchema = "org.gnome.settings-daemon.plugins.media-keys.custom-keybinding";
constexpr auto inputSchema = "org.gnome.desktop.input-sources";
constexpr auto listKey = "custom-keybindings";
const QString listFolder = u"/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/"_s;
const QString ourPrefix = listFolder + u"lumacap-"_s;

/// Whoever is on the keyboard's shortcuts in GNOME.
constexpr const char *shortcutSchemas[]{
    mediaKeysSchema, "org.gnome.desktop.wm.keybindings", "org.gnome.shell.keybindings",
    "org.gnome.mutter.keybindings", "org.gnome.mutter.wayland.keybindings"};

struct ReleaseVariant {
    void operator()(GVariant *variant) const noexcept { g_variant_unref(variant); }
};
using Variant = std::unique_ptr<GVariant, ReleaseVariant>;

struct ReleaseSchema {
    void operator()(GSettingsSchema *schema) const noexcept { g_settings_schema_unref(schema); }
};
using Schema = std::unique_ptr<GSettingsSchema, ReleaseSchema>;

struct ReleaseTexts {
    void operator()(gchar **texts) const noexcept { g_strfreev(texts); }
};
using Texts = std::unique_ptr<gchar *, ReleaseTexts>;

/// Null where it is not installed, for which GLib itself would end the program.
Schema installed(const char *name)
{
    GSettingsSchemaSource *const source = g_settings_schema_source_get_default();
    return Schema(source == nullptr ? nullptr
                                    : g_settings_schema_source_lookup(source, name, TRUE));
}

bool hasKeys(const Schema &schema, std::initializer_list<const char *> keys)
{
    return schema && std::ranges::all_of(keys, [&schema](const char *key) {
               return g_settings_schema_has_key(schema.get(), key) != FALSE;
           });
}

QStringList listOf(gchar *const *texts)
{
    QStringList list;
    for (; texts != nullptr && *texts != nullptr; ++texts)
        list.append(QString::fromUtf8(*texts));
    return list;
}

QString pathOf(const QString &id)
{
    return ourPrefix + id + u'/';
}

void set(GSettings &settings, const char *key, const QString &text)
{
    g_settings_set_string(&settings, key, text.toUtf8().constData());
}

} // namespace

void GSettingsKeybindings::Release::operator()(GSettings *settings) const noexcept
{
    g_object_unref(settings);
}

std::unique_ptr<Keybindings> GSettingsKeybindings::make()
{
    if (!hasKeys(installed(customSchema), {"name", "command", "binding"})
        || !hasKeys(installed(mediaKeysSchema), {listKey}))
        return nullptr;
    return std::unique_ptr<Keybindings>(new GSettingsKeybindings(open(mediaKeysSchema)));
}

GSettingsKeybindings::GSettingsKeybindings(Settings mediaKeys)
    : m_mediaKeys(std::move(mediaKeys))
{
}

GSettingsKeybindings::~GSettingsKeybindings() = default;

GSettingsKeybindings::Settings GSettingsKeybindings::open(const char *name, const QString &path)
{
    const Schema schema = installed(name);
    if (!schema)
        return nullptr;
    const QByteArray place = path.toUtf8();
    return Settings(
        g_settings_new_full(schema.get(), nullptr, path.isEmpty() ? nullptr : place.constData()));
}

QStringList GSettingsKeybindings::paths() const
{
    const Texts texts(g_settings_get_strv(m_mediaKeys.get(), listKey));
    return listOf(texts.get());
}

void GSettingsKeybindings::setPaths(const QStringList &paths)
{
    std::vector<QByteArray> bytes;
    bytes.reserve(static_cast<std::size_t>(paths.size()));
    for (const QString &path : paths)
        bytes.push_back(path.toUtf8());
    std::vector<const gchar *> texts;
    texts.reserve(bytes.size() + 1);
    for (const QByteArray &path : bytes)
        texts.push_back(path.constData());
    texts.push_back(nullptr);
    g_settings_set_strv(m_mediaKeys.get(), listKey, texts.data());
}

void GSettingsKeybindings::add(const QString &id, const CommandBinding &binding)
{
    const QString path = pathOf(id);
    const Settings own = open(customSchema, path);
    set(*own, "name", binding.name);
    set(*own, "command", binding.command);
    set(*own, "binding", acceleratorText(binding.chord));
    // Whole before it is named in the list. Others change that list, too: it is read right here.
    const QStringList now = paths();
    if (!now.contains(path))
        setPaths(now + QStringList{path});
}

void GSettingsKeybindings::remove(const QString &id)
{
    QStringList left = paths();
    const QString path = pathOf(id);
    if (left.removeAll(path) != 0)
        setPaths(left);
    forget(path);
}

void GSettingsKeybindings::removeAll()
{
    QStringList ours;
    QStringList left;
    for (const QString &path : paths())
        (path.startsWith(ourPrefix) ? ours : left).append(path);
    if (ours.isEmpty())
        return;
    setPaths(left);
    for (const QString &path : ours)
        forget(path);
}

void GSettingsKeybindings::forget(const QString &path)
{
    const Settings own = open(customSchema, path);
    for (const char *const key : {"name", "command", "binding"})
        g_settings_reset(own.get(), key);
}

void GSettingsKeybindings::store()
{
    g_settings_sync();
}

QStringList GSettingsKeybindings::textsIn(GSettings &settings, const char *key)
{
    const Variant value(g_settings_get_value(&settings, key));
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING) != FALSE)
        return {QString::fromUtf8(g_variant_get_string(value.get(), nullptr))};
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING_ARRAY) == FALSE)
        return {};
    const Texts texts(g_variant_dup_strv(value.get(), nullptr));
    return listOf(texts.get());
}

QStringList GSettingsKeybindings::acceleratorsOfOthers() const
{
    QStringList accelerators;
    for (const char *const name : shortcutSchemas) {
        const Schema schema = installed(name);
        if (!schema)
            continue;
        const Settings settings = open(name);
        const Texts keys(g_settings_schema_list_keys(schema.get()));
        for (gchar *const *key = keys.get(); *key != nullptr; ++key) {
            if (qstrcmp(*key, listKey) != 0)
                accelerators += textsIn(*settings, *key);
        }
    }
    for (const QString &path : paths()) {
        // GLib ends a program that opens a path of another form.
        const bool isPath = path.startsWith(u'/') && path.endsWith(u'/') && !path.contains(u"//"_s);
        if (isPath && !path.startsWith(ourPrefix))
            accelerators += textsIn(*open(customSchema, path), "binding");
    }
    return accelerators;
}

KeyLayout GSettingsKeybindings::currentLayout()
{
    if (!hasKeys(installed(inputSchema), {"mru-sources", "sources", "xkb-options"}))
        return {{}, {}, {}};
    const Settings input = open(inputSchema);
    // The source used last is the current one; before any was chosen it is the first of all.
    for (const char *const key : {"mru-sources", "sources"}) {
        const Variant sources(g_settings_get_value(input.get(), key));
        if (g_variant_n_children(sources.get()) == 0)
            continue;
        const gchar *type = nullptr;
        const gchar *id = nullptr;
        g_variant_get_child(sources.get(), 0, "(&s&s)", &type, &id);
        if (qstrcmp(type, "xkb") != 0)
            continue;
        const QStringList parts = QString::fromUtf8(id).split(u'+');
        return {parts.constFirst(), parts.value(1), textsIn(*input, "xkb-options").join(u',')};
    }
    return {{}, {}, {}};
}

bool GSettingsKeybindings::isTaken(const KeyChord &chord) const
{
    std::optional<KeyLayout> layout; // made where it is asked for
    return std::ranges::any_of(acceleratorsOfOthers(), [&](const QString &text) {
        const auto accelerator = parseAccelerator(text);
        if (!accelerator || accelerator->modifiers != chord.modifiers)
            return false;
        if (const auto key = physicalKey(*accelerator))
            return *key == chord.key;
        if (!layout)
            layout.emplace(currentLayout());
        return layout->isOn(chord.key, accelerator->key);
    });
}

} // namespace lumacap::gnome
