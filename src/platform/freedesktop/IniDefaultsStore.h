#pragma once

#include "platform/DefaultsStore.h"

#include <QString>
#include <QVariant>

namespace lumacap::freedesktop {

/// Settings in the group General of one INI file, in the encoding of QSettings. The file and its
/// folder come into being with the first `set`; where the file is a symbolic link, its target is
/// what is read and replaced. A damaged file counts as empty, and the first `set` keeps it under
/// its name and ".damaged".
class IniDefaultsStore final : public DefaultsStore {
public:
    /// `path` is absolute; nothing is read or written yet.
    explicit IniDefaultsStore(QString path);

    bool holds(const QString &key) const override;
    bool boolean(const QString &key) const override;
    std::optional<QString> string(const QString &key) const override;
    std::optional<QByteArray> data(const QString &key) const override;
    /// Starts from what the file holds at this moment and keeps every other key of it.
    Result<void> set(const QString &key, const DefaultsValue &value) override;

private:
    /// Invalid where nothing is stored under `key`.
    QVariant storedValue(const QString &key) const;

    QString m_path;
};

} // namespace lumacap::freedesktop
