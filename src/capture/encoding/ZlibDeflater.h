#pragma once

#include "capture/encoding/Deflater.h"

namespace lumacap {

/// The deflater that every processor has.
std::unique_ptr<Deflater> makeZlibDeflater();

} // namespace lumacap
