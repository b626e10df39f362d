#pragma once

#include "platform/wayland/PointerFinder.h"

#include <QJsonArray>
#include <QRectF>
#include <QString>

#include <memory>

namespace lumacap::sway {

/// Takes the pointer to be in the middle of the output that has the focus: which output that is,
/// sway tells at once, and no more.
///
/// Where the configuration has the focus go other ways than the pointer, an exact finder is asked.
/// It is not asked always: it takes the pointer from the window beneath, and the picture that is
/// taken next would show that in what was lit up under the pointer, in tool tips, and in the
/// pointer's own shape.
class SwayPointerFinder final : public wayland::PointerFinder {
public:
    /// Talks to the compositor at `path`. `exactly` may be null.
    SwayPointerFinder(QString path, std::unique_ptr<wayland::PointerFinder> exactly);

    QCoro::Task<std::optional<QPointF>> find() override;

private:
    QString m_path;
    std::unique_ptr<wayland::PointerFinder> m_exactly;
};

/// The frame of the output that has the focus, in the compositor's units, y down; nothing where
/// none has.
std::optional<QRectF> focusedFrame(const QJsonArray &outputs);

/// Whether a configuration keeps the focus where it is when the pointer goes to another output, or
/// the other way round. What it includes is not looked at.
bool separatesFocusFromPointer(const QString &configuration);

} // namespace lumacap::sway
