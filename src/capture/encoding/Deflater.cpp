#include "capture/encoding/Deflater.h"

#include "capture/encoding/IsalDeflater.h"
#include "capture/encoding/ZlibDeflater.h"
#include "graphics/Fatal.h"

namespace lumacap {

std::vector<DeflateLibrary> deflateLibraries()
{
#ifdef LUMACAP_HAS_ISAL
    return {DeflateLibrary::IsaL, DeflateLibrary::Zlib};
#else
    return {DeflateLibrary::Zlib};
#endif
}

std::unique_ptr<Deflater> makeDeflater(DeflateLibrary library)
{
    switch (library) {
    case DeflateLibrary::IsaL:
#ifdef LUMACAP_HAS_ISAL
        return makeIsalDeflater();
#else
        break;
#endif
    case DeflateLibrary::Zlib:
        return makeZlibDeflater();
    }
    fatal("a deflate library that this build does not have");
}

} // namespace lumacap
