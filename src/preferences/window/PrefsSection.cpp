#include "preferences/window/PrefsSection.h"

#include "controls/Accessibility.h"
#include "graphics/ColorMixing.h"
#include "graphics/PointPainting.h"
#include "graphics/Text.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/look/PrefsPainting.h"
#include "preferences/look/PrefsTheme.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <utility>

namespace lumacap {
namespace {

/// The badge with its symbol, and the title beside it.
class SectionHeader final : public QWidget {
public:
    SectionHeader(QString icon, const QColor &iconColor, const QString &title, QWidget *parent)
        : QWidget(parent)
        , m_icon(std::move(icon))
        , m_iconColor(iconColor)
        , m_title(title, prefslook::headlineFont, FontWeight::SemiBold)
    {
        setFixedHeight(
            std::max(prefslook::badgeSide, static_cast<int>(std::ceil(m_title.size().height))));
    }

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF badge(0, (height() - prefslook::badgeSide) / 2.0, prefslook::badgeSide,
                           prefslook::badgeSide);
        QLinearGradient gradient(badge.topLeft(), badge.bottomLeft());
        gradient.setColorAt(0, mixed(m_iconColor, Qt::white, prefslook::badgeLight));
        gradient.setColorAt(1, m_iconColor);
        painter.fillPath(continuousRoundedRect(badge, prefslook::badgeRadius), gradient);
        drawSymbol(painter, m_icon, badge, prefslook::badgeFont * prefslook::symbolSideAFont,
                   Qt::white);
        const QRectF beside =
            QRectF(rect()).adjusted(badge.right() + prefslook::headerSpacing, 0, 0, 0);
        drawTextAtLeft(painter, m_title, beside, prefsThemeOf(palette()).primary);
    }

private:
    QString m_icon;
    QColor m_iconColor;
    Text m_title;
};

class Card final : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        const PrefsTheme theme = prefsThemeOf(palette());
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(continuousRoundedRect(rect(), prefslook::cardRadius),
                         translucent(theme.primary, prefslook::cardOpacity));
        strokeInside(painter, rect(), prefslook::cardRadius, prefslook::cardOutlineWidth,
                     translucent(theme.primary, prefslook::cardOutlineOpacity));
    }
};

} // namespace

PrefsSection::PrefsSection(const QString &icon, const QColor &iconColor, const QString &title,
                           QWidget *parent)
    : QWidget(parent)
    , m_card(new Card(this))
    , m_content(new QVBoxLayout(m_card))
{
    describeAs(*this, QAccessible::Grouping);
    setAccessibleName(title);
    using prefslook::cardPadding;
    m_content->setContentsMargins(cardPadding, cardPadding, cardPadding, cardPadding);
    m_content->setSpacing(prefslook::cardSpacing);
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(prefslook::headerBottom);
    column->addWidget(new SectionHeader(icon, iconColor, title, this));
    column->addWidget(m_card);
}

void PrefsSection::add(QWidget *content)
{
    m_content->addWidget(content);
}

} // namespace lumacap
