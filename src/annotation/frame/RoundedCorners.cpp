#include "annotation/frame/RoundedCorners.h"

#include "annotation/frame/MixedPixels.h"

#include <algorithm>
#include <cmath>

namespace lumacap {
namespace {

/// The share of a pixel, counted from the corner, that lies outside the quarter circle: the mean of
/// many upright strips, each cut exactly.
double cutOff(int column, int row, double radius)
{
    constexpr int strips = 64;
    double cut = 0;
    for (int strip = 0; strip < strips; ++strip) {
        const double fromCentre = radius - (column + (strip + 0.5) / strips);
        if (fromCentre <= 0)
            break;
        const double depth = radius - std::sqrt(radius * radius - fromCentre * fromCentre);
        cut += std::clamp(depth - row, 0.0, 1.0);
    }
    return cut / strips;
}

QList<double> cutOfCorner(int size, double radius)
{
    QList<double> cut;
    for (int row = 0; row < size; ++row) {
        for (int column = 0; column < size; ++column)
            cut.push_back(cutOff(column, row, radius));
    }
    return cut;
}

} // namespace

RoundedCorners::RoundedCorners(const QImage &picture, const QRect &card, double radius)
    : m_card{card}
    , m_size{static_cast<int>(std::ceil(radius))}
    , m_cut{cutOfCorner(m_size, radius)}
    , m_beneathTop{picture.copy(card.x(), card.y(), card.width(), m_size)}
    , m_beneathBottom{
          picture.copy(card.x(), card.y() + card.height() - m_size, card.width(), m_size)}
{
}

void RoundedCorners::round(QImage &picture) const
{
    for (int row = 0; row < m_size; ++row) {
        roundRow(picture, m_card.y() + row, m_beneathTop, row, row);
        roundRow(picture, m_card.y() + m_card.height() - m_size + row, m_beneathBottom, row,
                 m_size - 1 - row);
    }
}

void RoundedCorners::roundRow(QImage &picture, int y, const QImage &beneath, int beneathY,
                              int fromEdge) const
{
    auto *painted = reinterpret_cast<QRgb *>(picture.scanLine(y)) + m_card.x();
    const auto *background = reinterpret_cast<const QRgb *>(beneath.constScanLine(beneathY));
    const auto roundPixel = [&](int column) {
        const std::uint32_t weight = weightOf(1 - cutAt(column, fromEdge));
        const QRgb underCard = mixed(background[column], qRgb(255, 255, 255), weight);
        painted[column] = mixed(underCard, painted[column], weight);
    };
    const int rightSquare = std::max(m_size, m_card.width() - m_size);
    for (int column = 0; column < std::min(m_size, m_card.width()); ++column)
        roundPixel(column);
    for (int column = rightSquare; column < m_card.width(); ++column)
        roundPixel(column);
}

/// Of a card narrower than two squares a pixel can lie in both.
double RoundedCorners::cutAt(int column, int fromEdge) const
{
    const auto cut = [&](int fromSide) {
        return fromSide < m_size ? m_cut.at(qsizetype{fromEdge} * m_size + fromSide) : 0;
    };
    return std::min(1.0, cut(column) + cut(m_card.width() - 1 - column));
}

} // namespace lumacap
