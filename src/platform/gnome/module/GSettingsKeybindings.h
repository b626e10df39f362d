#pragma once

#include "platform/gnome/Keybindings.h"

#include <QStringList>

#include <memory>
#include <vector>

typedef struct _GSettings GSettings; // NOLINT: GLib's own way to declare it

namespace lumacap::gnome {

class KeyLayout;

/// Through GSettings, which is the person's settings wherever GNOME keeps them, and reads and
/// changes a list within microseconds: the less time, the less can be lost of what another program
/// changes in it at that moment.
class GSettingsKeybindings final : public Keybindings {
public:
    /// Null where GNOME's shortcuts are not installed.
    static std::unique_ptr<Keybindings> make();
    ~GSettingsKeybindings() override;
    Q_DISABLE_COPY_MOVE(GSettingsKeybindings)

    bool isTaken(const KeyChord &chord) const override;
    void add(const QString &id, const CommandBinding &binding) override;
    void remove(const QString &id) override;
    void removeAll() override;
    void store() override;

private:
    struct Release {
        void operator()(GSettings *settings) const noexcept;
    };
    using Settings = std::unique_ptr<GSettings, Release>;

    explicit GSettingsKeybindings(Settings mediaKeys);
    static Settings open(const char *schema, const QString &path = {});
    static QStringList textsIn(GSettings &settings, const char *key);
    static KeyLayout currentLayout();

    QStringList paths() const;
    void setPaths(const QStringList &paths);
    void forget(const QString &path);
    /// Everybody's accelerators but ours.
    QStringList acceleratorsOfOthers() const;

    Settings m_mediaKeys;
};

} // namespace lumacap::gnome
