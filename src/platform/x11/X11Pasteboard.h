#pragma once

#include "platform/Pasteboard.h"
#include "platform/xcb/SelectionOwner.h"

namespace lumacap::x11 {

/// The X selection CLIPBOARD.
class X11Pasteboard final : public Pasteboard {
public:
    /// Borrows `connection`, which outlives the object.
    explicit X11Pasteboard(xcb::Connection &connection);

    void clearContents() override;
    void write(std::unique_ptr<PasteboardItem> item) override;
    QCoro::Task<> handOver() override;

private:
    xcb::SelectionOwner m_clipboard;
};

} // namespace lumacap::x11
