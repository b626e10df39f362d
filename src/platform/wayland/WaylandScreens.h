#pragma once

#include "platform/Screens.h"
#include "platform/wayland/PointerFinder.h"

#include <QObject>

#include <memory>

namespace lumacap::wayland {

class Outputs;

/// The compositor's outputs as screens.
class WaylandScreens final : public QObject, public Screens {
    Q_OBJECT

public:
    /// Borrows `outputs`, which outlive the object; `finder` may be null, where nobody finds the
    /// pointer.
    explicit WaylandScreens(const Outputs &outputs, std::unique_ptr<PointerFinder> finder);

    QCoro::Task<> prepare() override;
    std::optional<Screen> mainScreen() const override;
    std::vector<Screen> screens() const override;
    std::optional<Point<Global>> pointerPosition() const override;

private:
    const Outputs &m_outputs;
    std::unique_ptr<PointerFinder> m_finder;
    std::optional<QPointF> m_pointer;
};

} // namespace lumacap::wayland
