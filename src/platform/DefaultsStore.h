#pragma once

#include "platform/Result.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <variant>

namespace lumacap {

/// The types of value that settings have: a boolean, a text, bytes.
using DefaultsValue = std::variant<bool, QString, QByteArray>;

/// The user's settings. Every question reads what is stored at that moment: a value changed by hand
/// is seen at once. Reading never writes. A store that is damaged or can't be read counts as empty.
class DefaultsStore {
public:
    DefaultsStore() = default;
    Q_DISABLE_COPY_MOVE(DefaultsStore)
    virtual ~DefaultsStore() = default;

    /// True when any value, of whatever type, is stored under `key`.
    virtual bool holds(const QString &key) const = 0;
    /// "true", "yes" and "1" in any case are true; every other value, and none, is false.
    virtual bool boolean(const QString &key) const = 0;
    /// The text under `key`; nothing when there is none or it is no text.
    virtual std::optional<QString> string(const QString &key) const = 0;
    /// The bytes under `key`; nothing when there are none or they are no byte array.
    virtual std::optional<QByteArray> data(const QString &key) const = 0;

    /// Stores `value` whole or not at all: after a failure the store is what it was.
    virtual Result<void> set(const QString &key, const DefaultsValue &value) = 0;
};

} // namespace lumacap
