#include "preferences/look/PushControl.h"

#include "graphics/PointPainting.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/look/PrefsPainting.h"
#include "preferences/look/PrefsTheme.h"

#include <QPainterPath>

#include <cmath>

namespace lumacap {

PushControl::PushControl(const QString &text, QWidget *parent)
    : PrefsControl(QAccessible::Button, text, parent)
    , m_text(text, prefslook::smallControlFont, FontWeight::Regular)
{
}

QPainterPath PushControl::outline() const
{
    return continuousRoundedRect(rect(), prefslook::smallButtonRadius);
}

QSize PushControl::sizeHint() const
{
    return {static_cast<int>(std::ceil(m_text.size().width)) + 2 * prefslook::smallButtonPadding,
            prefslook::smallButtonHeight};
}

void PushControl::paintFace(QPainter &painter, const PrefsTheme &theme) const
{
    paintBorderedGround(painter, rect(), prefslook::smallButtonRadius, feedback(theme.primary),
                        theme);
    drawTextInMiddle(painter, m_text, rect(), theme.primary);
}

} // namespace lumacap
