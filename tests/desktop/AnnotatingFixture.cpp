#include "AnnotatingFixture.h"

#include "annotation/AnnotationRenderer.h"
#include "harness/InputMethod.h"

namespace lumacap::harness {

using namespace Qt::StringLiterals;

void AnnotatingFixture::annotateOn(QSize size, int pixelsAPoint, const Settings &settings)
{
    m_scale = pixelsAPoint;
    m_size = size;
    startDesktop({.server = {.size = size * pixelsAPoint, .monitors = {}}});
    AccessibleControls::enable(*desktop);
    if (pixelsAPoint != 1)
        desktop->set("QT_SCALE_FACTOR", QByteArray::number(pixelsAPoint));
    if (withInputMethod)
        const InputMethod started(*desktop);
    set(settings);
    startAgent();
    screen->placePointer({2, 2});
    m_frozen = screen->expected();
    openOverlay();
    m_controls = std::make_unique<AccessibleControls>(*desktop);
}

void AnnotatingFixture::annotate(int pixelsAPoint, const QRect &selection, const Settings &settings)
{
    annotateOn(points, pixelsAPoint, settings);
    m_selection = selection;
    dragPoints(selection.topLeft(),
               selection.topLeft() + QPoint(selection.width(), selection.height()));
}

void AnnotatingFixture::use(const QString &control, std::size_t index)
{
    const auto found = m_controls->find(control, index);
    ASSERT_TRUE(found) << control.toStdString();
    clickPoint(found->place.center());
}

void AnnotatingFixture::dragPoints(QPoint from, QPoint to)
{
    drag(from * m_scale, to * m_scale);
}

void AnnotatingFixture::clickPoint(QPoint place)
{
    click(place * m_scale);
}

void AnnotatingFixture::movePoint(QPoint place)
{
    input({u"mousemove"_s, QString::number(place.x() * m_scale),
           QString::number(place.y() * m_scale)});
}

Point<Canvas> AnnotatingFixture::canvas(QPoint place) const
{
    return {static_cast<double>(place.x()), static_cast<double>(m_size.height() - place.y())};
}

QImage AnnotatingFixture::expectedWith(const Marks &marks) const
{
    const QImage frozen = m_frozen.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const Rect<Canvas> selected{
        {static_cast<double>(m_selection.x()),
         static_cast<double>(m_size.height() - m_selection.y() - m_selection.height())},
        {static_cast<double>(m_selection.width()), static_cast<double>(m_selection.height())}};
    const Size size{static_cast<double>(m_size.width()), static_cast<double>(m_size.height())};
    return AnnotationRenderer::renderFinalImage(frozen, selected, marks, size, m_scale)
        .value_or(QImage());
}

void AnnotatingFixture::writeText(QPoint place, const QString &text)
{
    use(u"text"_s);
    clickPoint(place);
    input({u"type"_s, text});
}

void AnnotatingFixture::expectSaved(const Marks &marks)
{
    EXPECT_EQ(differingPixels(expectedWith(marks), savedPicture()), 0);
}

} // namespace lumacap::harness
