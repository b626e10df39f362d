#include "overlay/OverlayKeys.h"

#include "platform/VirtualKeys.h"

#include <QKeyEvent>

namespace lumacap {
namespace {

/// Whether the key is the one at that place.
bool isAt(const QKeyEvent &event, std::uint32_t wanted)
{
    const std::uint32_t scanCode = event.nativeScanCode();
    return scanCode > scanCodeOffset && virtualKeyCode(scanCode - scanCodeOffset) == wanted;
}

} // namespace

bool isConfirmation(const QKeyEvent &event)
{
    return isAt(event, virtualkey::returnKey) || isAt(event, virtualkey::keypadEnter)
        || event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool isEscape(const QKeyEvent &event)
{
    return isAt(event, virtualkey::escape) || event.key() == Qt::Key_Escape;
}

bool isCommandUndo(const QKeyEvent &event)
{
    return event.modifiers().testFlag(Qt::MetaModifier) && isAt(event, virtualkey::z);
}

bool isUndo(const QKeyEvent &event)
{
    const bool isControlZ =
        event.modifiers().testFlag(Qt::ControlModifier) && event.key() == Qt::Key_Z;
    return isCommandUndo(event) || isControlZ;
}

} // namespace lumacap
