#pragma once

#include <QImage>
#include <QString>

#include <gtest/gtest.h>

namespace lumacap::tests {

/// How far a picture may be from its reference: rasterizers and font engines of other versions
/// round edges a little differently.
struct Tolerance {
    int channel = 40; ///< what one channel of a pixel may differ by without being counted
    double share = 0.002; ///< of all pixels, those that may differ by more
};

/// Whether `picture` is, within `tolerance`, the file `references/<name>.png` beside this one. When
/// it is not, the picture itself and the difference are left in the working folder. With
/// LUMACAP_WRITE_REFERENCES set in the environment it becomes the reference: look at it then.
testing::AssertionResult matchesReference(const QImage &picture, const QString &name,
                                          Tolerance tolerance = {});

} // namespace lumacap::tests
