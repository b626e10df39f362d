#pragma once

#include "platform/wayland/Output.h"
#include "platform/wayland/Owned.h"

#include <QObject>

#include <cstdint>
#include <memory>
#include <vector>

struct zxdg_output_manager_v1;

namespace lumacap::wayland {

class Connection;

/// The compositor's outputs, kept as they are now.
class Outputs final : public QObject {
    Q_OBJECT

public:
    /// Knows them all when it is made: waits for one answer of the compositor. Borrows
    /// `connection`, which outlives the object.
    explicit Outputs(Connection &connection);
    Q_DISABLE_COPY_MOVE(Outputs)
    ~Outputs() override;

    /// Those the compositor has told all about, the main one first, then in its own order.
    std::vector<Output> all() const;
    /// The output called `name` is the main one from now on; the compositor's first one where there
    /// is none of that name.
    void setMain(const QString &name);

Q_SIGNALS:
    /// An output has come, gone, or changed its size, place or scale.
    void changed();

private:
    class Watched;

    void watch(std::uint32_t number);
    void forget(std::uint32_t number);

    Connection &m_connection;
    Owned<zxdg_output_manager_v1> m_extension;
    std::vector<std::unique_ptr<Watched>> m_watched;
    QString m_main;
};

} // namespace lumacap::wayland
