#pragma once

#include "platform/DefaultsStore.h"

#include <QHash>

#include <initializer_list>
#include <utility>

namespace lumacap {

/// Settings in memory, with the types they were stored with.
class FakeDefaultsStore final : public DefaultsStore {
public:
    FakeDefaultsStore() = default;
    FakeDefaultsStore(std::initializer_list<std::pair<QString, DefaultsValue>> values)
        : m_values(values)
    {
    }

    bool holds(const QString &key) const override { return m_values.contains(key); }
    bool boolean(const QString &key) const override
    {
        const bool *const value = find<bool>(key);
        return value != nullptr && *value;
    }
    std::optional<QString> string(const QString &key) const override { return copy<QString>(key); }
    std::optional<QByteArray> data(const QString &key) const override
    {
        return copy<QByteArray>(key);
    }
    Result<void> set(const QString &key, const DefaultsValue &value) override
    {
        if (isReadOnly)
            return failure(QStringLiteral("the store is read-only"));
        m_values[key] = value; // g++ 12 takes QHash::insert for a use of nothing
        return {};
    }

    bool isReadOnly = false;

private:
    template <class T>
    const T *find(const QString &key) const
    {
        const auto entry = m_values.constFind(key);
        return entry == m_values.cend() ? nullptr : std::get_if<T>(&*entry);
    }
    template <class T>
    std::optional<T> copy(const QString &key) const
    {
        const T *const value = find<T>(key);
        return value == nullptr ? std::nullopt : std::optional(*value);
    }

    QHash<QString, DefaultsValue> m_values;
};

} // namespace lumacap
