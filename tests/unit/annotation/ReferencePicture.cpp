#include "ReferencePicture.h"

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

int difference(QRgb first, QRgb second)
{
    return std::max({std::abs(qRed(first) - qRed(second)), std::abs(qGreen(first) - qGreen(second)),
                     std::abs(qBlue(first) - qBlue(second)),
                     std::abs(qAlpha(first) - qAlpha(second))});
}

/// Counts the pixels that differ by more than `channel`, and shows them in black.
int differing(const QImage &picture, const QImage &reference, int channel, QImage &shown)
{
    int count = 0;
    shown = QImage(picture.size(), QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const int off = difference(picture.pixel(x, y), reference.pixel(x, y));
            shown.setPixel(x, y, off > channel ? qRgb(0, 0, 0) : qRgb(255, 255 - off, 255 - off));
            count += off > channel ? 1 : 0;
        }
    }
    return count;
}

} // namespace

testing::AssertionResult matchesReference(const QImage &picture, const QString &name,
                                          Tolerance tolerance)
{
    const QString file = QStringLiteral(LUMACAP_REFERENCES) + u'/' + name + u".png"_s;
    if (qEnvironmentVariableIsSet("LUMACAP_WRITE_REFERENCES")) {
        if (!picture.save(file))
            return testing::AssertionFailure() << "can't write " << file.toStdString();
        return testing::AssertionSuccess();
    }
    const QImage reference(file);
    if (reference.isNull())
        return testing::AssertionFailure() << "no reference " << file.toStdString();
    if (reference.size() != picture.size())
        return testing::AssertionFailure() << name.toStdString() << " has another size";
    QImage shown;
    const int count = differing(picture, reference, tolerance.channel, shown);
    if (count <= tolerance.share * picture.width() * picture.height())
        return testing::AssertionSuccess();
    picture.save(name + u".actual.png"_s);
    shown.save(name + u".difference.png"_s);
    return testing::AssertionFailure() << count << " pixels differ; see " << name.toStdString()
                                       << ".actual.png and .difference.png";
}

} // namespace lumacap::tests
