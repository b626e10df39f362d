#include "graphics/Text.h"

#include "graphics/PainterState.h"

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QGuiApplication>
#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>
#include <cmath>

namespace lumacap {
namespace {

/// Font engines round ascent and descent to whole units, and fonts have whole sizes only: the
/// layout is made in units this much smaller than a point, so that neither is seen.
constexpr double unitsAPoint = 16;

constexpr double unbroken = 1e7; // wider than any line, which is broken at line feeds only

/// The general font without hinting: a text must measure the same at every scale.
QFont generalFont(int pixelSize, FontWeight weight)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(pixelSize);
    font.setWeight(static_cast<QFont::Weight>(weight));
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

int unitsOf(double points)
{
    return std::max(1, static_cast<int>(std::lround(points * unitsAPoint)));
}

} // namespace

Text::Text(const QString &text, double points, FontWeight weight)
{
    const int pixelSize = unitsOf(points);
    m_pointsAUnit = points / pixelSize;
    QString lines = text;
    lines.replace(u'\n', QChar::LineSeparator);
    m_layout = std::make_unique<QTextLayout>(lines, generalFont(pixelSize, weight));
    m_layout->setCacheEnabled(true);
    QSizeF size;
    m_layout->beginLayout();
    for (QTextLine line = m_layout->createLine(); line.isValid(); line = m_layout->createLine()) {
        line.setLineWidth(unbroken);
        line.setPosition({0, size.height()});
        size = {std::max(size.width(), line.naturalTextWidth()), size.height() + line.height()};
    }
    m_layout->endLayout();
    m_size = {size.width() * m_pointsAUnit, size.height() * m_pointsAUnit};
}

Text::~Text() = default;

void Text::draw(QPainter &painter, Point<Canvas> lowerLeft, const QColor &color) const
{
    const PainterState state(painter);
    painter.translate(lowerLeft.x, lowerLeft.y + m_size.height);
    painter.scale(m_pointsAUnit, -m_pointsAUnit);
    painter.setPen(color);
    m_layout->draw(&painter, {0, 0});
}

Rect<Canvas> Text::drawnArea(Point<Canvas> lowerLeft) const
{
    const double fringe = 1 / m_pointsAUnit; // a point, for what antialiasing adds
    QRectF box(0, 0, m_size.width / m_pointsAUnit, m_size.height / m_pointsAUnit);
    const auto runs = m_layout->glyphRuns();
    for (const QGlyphRun &run : runs)
        box |= run.boundingRect();
    box.adjust(-fringe, -fringe, fringe, fringe);
    return {{lowerLeft.x + box.left() * m_pointsAUnit,
             lowerLeft.y + m_size.height - box.bottom() * m_pointsAUnit},
            {box.width() * m_pointsAUnit, box.height() * m_pointsAUnit}};
}

QString brokenIntoLines(const QString &text, double points, FontWeight weight, double width)
{
    QTextLayout layout(text, generalFont(unitsOf(points), weight));
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width * unitsAPoint);
        lines.append(text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines.join(u'\n');
}

QString elidedInMiddle(const QString &text, double points, FontWeight weight, double width)
{
    const QFontMetricsF metrics(generalFont(unitsOf(points), weight));
    return metrics.elidedText(text, Qt::ElideMiddle, width * unitsAPoint);
}

} // namespace lumacap
