#pragma once

#include "capture/encoding/Deflater.h"

namespace lumacap {

/// The deflater of Intel's storage acceleration library.
std::unique_ptr<Deflater> makeIsalDeflater();

} // namespace lumacap
