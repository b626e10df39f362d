#pragma once

#include "SelectionFixture.h"
#include "annotation/shapes/Annotation.h"
#include "annotation/vocabulary/AnnotationColor.h"
#include "harness/AccessibleControls.h"

#include <memory>
#include <vector>

namespace lumacap::harness {

/// A person who annotates: one monitor of 1400 x 700 points, in a number of pixels each.
struct AnnotatingFixture : SelectionFixture {
    using Marks = std::vector<std::unique_ptr<Annotation>>;

    static constexpr QSize points{1400, 700};

    /// Starts with the overlay up and `selection` (points, y down) dragged out.
    void annotate(int pixelsAPoint, const QRect &selection, const Settings &settings = {});
    /// Starts with the overlay up on a screen of `size` points.
    void annotateOn(QSize size, int pixelsAPoint = 1, const Settings &settings = {});

    /// Clicks the control of this name, waited for.
    void use(const QString &control, std::size_t index = 0);
    /// As the fixture's, in points.
    void dragPoints(QPoint from, QPoint to);
    void clickPoint(QPoint place);
    void movePoint(QPoint place);

    /// Types with the text tool at `place`, in points, and leaves the field open.
    void writeText(QPoint place, const QString &text);

    /// The place in the canvas, whose y goes up.
    Point<Canvas> canvas(QPoint place) const;
    /// What of the screen under the selection is saved with `marks` on it.
    QImage expectedWith(const Marks &marks) const;
    /// Waits for the file of the capture that was confirmed and compares it, pixel for pixel.
    void expectSaved(const Marks &marks = {});

    AccessibleControls &controls() { return *m_controls; }

    static QColor colorOf(AnnotationColor color) { return nsColor(color); }

    /// Has the agent of the next start type through an input method.
    bool withInputMethod = false;

private:
    int m_scale = 1;
    QSize m_size = points;
    QRect m_selection;
    QImage m_frozen;
    std::unique_ptr<AccessibleControls> m_controls;
};

/// Puts marks into a list that keeps them.
template <class... Kinds>
AnnotatingFixture::Marks marks(std::unique_ptr<Kinds>... kinds)
{
    AnnotatingFixture::Marks list;
    (list.push_back(std::move(kinds)), ...);
    return list;
}

} // namespace lumacap::harness
