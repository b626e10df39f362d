#pragma once

#include <QRect>
#include <QRegion>
#include <QSize>

#include <vector>

class QImage;

namespace lumacap {

/// The soft shadow of a card with rounded corners: the card's shape, moved down and blurred by a
/// Gaussian. Its cost depends neither on the blur nor on the card.
///
/// A blurred upright rectangle is the product of one profile along x and one along y, both exact.
/// What rounding takes from a corner is small next to the blur, so that its own blur is all but a
/// Gaussian, again a product; the four of them together are one product too, the card being
/// symmetric. That is within a hundredth of a level of 255 of the true convolution.
class CardShadow {
public:
    /// `card` is where the card lies in a picture of the size `picture`, its corner radius is in
    /// pixels, `scale` is pixels a point.
    CardShadow(const QRect &card, double cornerRadius, double scale, QSize picture);

    /// Darkens the pixels of `where`. `picture` is opaque there, 32 bits a pixel.
    void cast(QImage &picture, const QRegion &where) const;

private:
    /// The two factors along one axis, a number for each pixel.
    struct Profile {
        std::vector<float> card;
        std::vector<float> corners;
    };
    /// What a card is along one axis, in pixels.
    struct Span {
        double begin;
        double end;
        double cornerRadius;
        double deviation;
    };
    static Profile profileOf(const Span &span, int length);

    Profile m_columns;
    Profile m_rows; ///< holds the shadow's strength as well
};

} // namespace lumacap
