#include "platform/x11/X11Pasteboard.h"

#include <utility>

namespace lumacap::x11 {

X11Pasteboard::X11Pasteboard(xcb::Connection &connection)
    : m_clipboard(connection)
{
}

void X11Pasteboard::clearContents()
{
    m_clipboard.clear();
}

void X11Pasteboard::write(std::unique_ptr<PasteboardItem> item)
{
    m_clipboard.own(std::move(item));
}

QCoro::Task<> X11Pasteboard::handOver()
{
    return m_clipboard.handOver();
}

} // namespace lumacap::x11
