#include "preferences/storage/PreferencesStorage.h"

#include "graphics/Fatal.h"
#include "platform/DefaultsStore.h"
#include "platform/LoginItem.h"

#include <QStandardPaths>

#include <cstdio>
#include <tuple>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

const QString fullScreenHotkeyKey = u"fullScreenHotkey"_s;
const QString selectionHotkeyKey = u"selectionHotkey"_s;
const QString copyToClipboardKey = u"copyToClipboard"_s;
const QString imageFormatKey = u"imageFormat"_s;
const QString saveDirectoryKey = u"saveDirectory"_s;

constexpr KeyCombo defaultFullScreenHotkey{18, carbon::controlKey | carbon::shiftKey};
constexpr KeyCombo defaultSelectionHotkey{19, carbon::controlKey | carbon::shiftKey};

struct SharedServices {
    DefaultsStore *defaults = nullptr;
    LoginItem *loginItem = nullptr;
};

SharedServices &sharedServices()
{
    static SharedServices services;
    return services;
}

KeyCombo hotkey(const DefaultsStore &defaults, const QString &key, KeyCombo fallback)
{
    const auto json = defaults.data(key);
    return json ? KeyCombo::fromJson(*json).value_or(fallback) : fallback;
}

void storeHotkey(DefaultsStore &defaults, const QString &key, KeyCombo combo)
{
    std::ignore = defaults.set(key, combo.toJson()); // a failed write keeps the earlier shortcut
}

} // namespace

PreferencesStorage::PreferencesStorage(DefaultsStore &defaults, LoginItem &loginItem)
    : m_defaults(defaults)
    , m_loginItem(loginItem)
{
}

void PreferencesStorage::useServices(DefaultsStore &defaults, LoginItem &loginItem)
{
    sharedServices() = {&defaults, &loginItem};
}

PreferencesStorage &PreferencesStorage::shared()
{
    const SharedServices &services = sharedServices();
    if (services.defaults == nullptr || services.loginItem == nullptr)
        fatal("the shared settings are used before their services are named");
    static PreferencesStorage instance(*services.defaults, *services.loginItem);
    return instance;
}

KeyCombo PreferencesStorage::fullScreenHotkey() const
{
    return hotkey(m_defaults, fullScreenHotkeyKey, defaultFullScreenHotkey);
}

void PreferencesStorage::setFullScreenHotkey(KeyCombo combo)
{
    storeHotkey(m_defaults, fullScreenHotkeyKey, combo);
}

KeyCombo PreferencesStorage::selectionHotkey() const
{
    return hotkey(m_defaults, selectionHotkeyKey, defaultSelectionHotkey);
}

void PreferencesStorage::setSelectionHotkey(KeyCombo combo)
{
    storeHotkey(m_defaults, selectionHotkeyKey, combo);
}

bool PreferencesStorage::copyToClipboard() const
{
    return !m_defaults.holds(copyToClipboardKey) || m_defaults.boolean(copyToClipboardKey);
}

ImageFormat PreferencesStorage::imageFormat() const
{
    const QString stored = m_defaults.string(imageFormatKey).value_or(QString());
    return lumacap::imageFormat(stored).value_or(ImageFormat::Png);
}

QString PreferencesStorage::saveDirectory() const
{
    if (const auto stored = m_defaults.string(saveDirectoryKey))
        return *stored;
    const QString desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    if (desktop.isEmpty())
        fatal("the platform names no desktop folder");
    return desktop;
}

bool PreferencesStorage::launchAtLogin() const
{
    return m_loginItem.isEnabled();
}

void PreferencesStorage::setLaunchAtLogin(bool enabled)
{
    const Result<void> done = enabled ? m_loginItem.registerItem() : m_loginItem.unregisterItem();
    if (done)
        return;
    std::printf("Launch at login error: %s\n", qUtf8Printable(done.error().description));
    std::fflush(stdout);
}

} // namespace lumacap
