#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace lumacap {

/// The names of applications as their desktop entries give them.
class ApplicationNames {
public:
    ApplicationNames() = default;
    Q_DISABLE_COPY_MOVE(ApplicationNames)
    virtual ~ApplicationNames() = default;

    /// The localized name of the first of `identifiers` (application ids, window classes) that a
    /// desktop entry is known by; nothing when none is.
    virtual std::optional<QString> nameOf(const QStringList &identifiers) const = 0;
};

} // namespace lumacap
