#include "annotation/frame/CardShadow.h"

#include <QImage>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lumacap {
namespace {

namespace look {
constexpr double drop = 8; // points downward
constexpr double blur = 30; // points; twice the Gaussian's standard deviation
constexpr double strength = 0.5; // alpha of the black where nothing is blurred away
} // namespace look

// A corner of radius 1 is a unit square less a quarter disc. These are that shape's area and, along
// either side, the mean distance from the square's corner and the variance of that distance.
constexpr double pi = std::numbers::pi;
constexpr double cutArea = 1 - pi / 4;
constexpr double cutMean = 1 - (1.0 / 6) / cutArea;
constexpr double cutVariance = (1.0 / 3 - pi / 16) / cutArea - (1 - cutMean) * (1 - cutMean);

/// The share of a normal distribution that lies below `deviations` from its mean.
double below(double deviations)
{
    return 0.5 * std::erfc(-deviations / std::numbers::sqrt2);
}

double density(double distance, double deviation)
{
    const double deviations = distance / deviation;
    return std::exp(-deviations * deviations / 2) / (deviation * std::sqrt(2 * pi));
}

/// An opaque pixel under black of the alpha 1 - `light`, every channel rounded.
QRgb darkened(QRgb pixel, float light)
{
    constexpr float half = 0.5F; // std::lround is no vector instruction
    const auto channel = [=](unsigned shift) {
        const auto level = static_cast<float>(static_cast<int>((pixel >> shift) & 0xffU));
        return static_cast<QRgb>(static_cast<int>(level * light + half)) << shift;
    };
    return 0xff000000U | channel(0) | channel(8) | channel(16);
}

} // namespace

CardShadow::Profile CardShadow::profileOf(const Span &span, int length)
{
    const double cutDeviation = std::sqrt(span.deviation * span.deviation
                                          + cutVariance * span.cornerRadius * span.cornerRadius);
    const double fromEdge = cutMean * span.cornerRadius;
    Profile profile;
    for (int pixel = 0; pixel < length; ++pixel) {
        const double middle = pixel + 0.5;
        profile.card.push_back(static_cast<float>(below((middle - span.begin) / span.deviation)
                                                  - below((middle - span.end) / span.deviation)));
        profile.corners.push_back(
            static_cast<float>(density(middle - span.begin - fromEdge, cutDeviation)
                               + density(middle - span.end + fromEdge, cutDeviation)));
    }
    return profile;
}

CardShadow::CardShadow(const QRect &card, double cornerRadius, double scale, QSize picture)
{
    const double deviation = look::blur / 2 * scale;
    const QRectF shadow = QRectF(card).translated(0, look::drop * scale);
    m_columns =
        profileOf({shadow.left(), shadow.right(), cornerRadius, deviation}, picture.width());
    m_rows = profileOf({shadow.top(), shadow.bottom(), cornerRadius, deviation}, picture.height());
    const auto areaCut = static_cast<float>(cutArea * cornerRadius * cornerRadius);
    for (float &factor : m_rows.card)
        factor *= static_cast<float>(look::strength);
    for (float &factor : m_rows.corners)
        factor *= static_cast<float>(look::strength) * areaCut;
}

void CardShadow::cast(QImage &picture, const QRegion &where) const
{
    for (const QRect &part : where) {
        const float *card = m_columns.card.data() + part.x();
        const float *corners = m_columns.corners.data() + part.x();
        for (int y = part.y(); y < part.y() + part.height(); ++y) {
            const float cardRow = m_rows.card[static_cast<std::size_t>(y)];
            const float cornersRow = m_rows.corners[static_cast<std::size_t>(y)];
            auto *pixels = reinterpret_cast<QRgb *>(picture.scanLine(y)) + part.x();
            for (int x = 0; x < part.width(); ++x)
                pixels[x] = darkened(pixels[x], 1 - (card[x] * cardRow - corners[x] * cornersRow));
        }
    }
}

} // namespace lumacap
