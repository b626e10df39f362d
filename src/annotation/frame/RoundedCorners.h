#pragma once

#include <QImage>
#include <QList>
#include <QRect>

namespace lumacap {

/// Rounds the corners of a card that is painted square: keeps what lies beneath them and lets it
/// through once the card is there. (A painter's clip is hard-edged, and slow on a whole picture.)
class RoundedCorners {
public:
    /// Keeps the pixels of `picture` at the corners of `card`, which lies in it. The radius is in
    /// pixels and at most half of either side.
    RoundedCorners(const QImage &picture, const QRect &card, double radius);

    /// Rounds the card, as white with an antialiased edge and then the painted card with the same
    /// edge, one over the other.
    void round(QImage &picture) const;

private:
    void roundRow(QImage &picture, int y, const QImage &beneath, int beneathY, int fromEdge) const;
    double cutAt(int column, int fromEdge) const;

    QRect m_card;
    int m_size; ///< pixels along the square a corner takes
    QList<double> m_cut; ///< of each pixel of the upper left square, the share that is cut off
    QImage m_beneathTop;
    QImage m_beneathBottom;
};

} // namespace lumacap
