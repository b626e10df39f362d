#include "preferences/look/PrefsText.h"

#include "controls/Accessibility.h"
#include "graphics/PointPainting.h"
#include "preferences/look/PrefsTheme.h"

#include <QPainter>

#include <cmath>

namespace lumacap {
namespace {

QSize wholeUnits(const Size &size)
{
    return {static_cast<int>(std::ceil(size.width)), static_cast<int>(std::ceil(size.height))};
}

QColor colorOf(TextStyle style, const PrefsTheme &theme)
{
    switch (style) {
    case TextStyle::Primary:
        return theme.primary;
    case TextStyle::Secondary:
        return theme.secondary;
    case TextStyle::Tertiary:
        return theme.tertiary;
    }
    return {};
}

} // namespace

PrefsText::PrefsText(const QString &text, TextFont font, TextStyle style, TextOverflow overflow,
                     QWidget *parent)
    : QWidget(parent)
    , m_font(font)
    , m_style(style)
    , m_overflow(overflow)
{
    describeAs(*this, QAccessible::StaticText);
    // Its size hint is of one line: a text that wraps grows beyond it.
    setSizePolicy(overflow == TextOverflow::Grow ? QSizePolicy::Fixed : QSizePolicy::Preferred,
                  overflow == TextOverflow::Wrap ? QSizePolicy::Minimum : QSizePolicy::Fixed);
    setText(text);
}

PrefsText::~PrefsText() = default;

void PrefsText::setText(const QString &text)
{
    m_text = text;
    setAccessibleName(text);
    m_wholeSize = wholeUnits(Text(text, m_font.points, m_font.weight).size());
    fit();
    updateGeometry();
}

QSize PrefsText::sizeHint() const
{
    return m_wholeSize;
}

QSize PrefsText::minimumSizeHint() const
{
    return m_overflow == TextOverflow::Grow ? m_wholeSize : QSize(0, m_wholeSize.height());
}

int PrefsText::heightForWidth(int width) const
{
    return wholeUnits(Text(fitted(width), m_font.points, m_font.weight).size()).height();
}

QString PrefsText::fitted(int width) const
{
    switch (m_overflow) {
    case TextOverflow::Grow:
        return m_text;
    case TextOverflow::Wrap:
        return brokenIntoLines(m_text, m_font.points, m_font.weight, width);
    case TextOverflow::ElideInMiddle:
        return elidedInMiddle(m_text, m_font.points, m_font.weight, width);
    }
    return {};
}

void PrefsText::fit()
{
    m_shownText = fitted(width());
    m_shown = std::make_unique<Text>(m_shownText, m_font.points, m_font.weight);
    update();
}

void PrefsText::resizeEvent(QResizeEvent * /*event*/)
{
    fit();
}

void PrefsText::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    drawTextAtLeft(painter, *m_shown, rect(), colorOf(m_style, prefsThemeOf(palette())));
}

} // namespace lumacap
