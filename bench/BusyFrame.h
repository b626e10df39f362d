#pragma once

#include <QImage>

namespace lumacap::bench {

/// An opaque screen of `size` device pixels as people have them: a photograph with grain, a page of
/// dark text on white, an editor with coloured text on black, and panels of flat colour and slow
/// gradients. The same pixels every time.
QImage busyFrame(QSize size);

/// Text on flat colour only: what compresses well and must stay small.
QImage textFrame(QSize size);

/// A photograph with grain only: what hardly compresses.
QImage photographFrame(QSize size);

} // namespace lumacap::bench
