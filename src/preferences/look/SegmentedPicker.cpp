#include "preferences/look/SegmentedPicker.h"

#include "graphics/ColorMixing.h"
#include "graphics/PointPainting.h"
#include "graphics/Text.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/look/PrefsPainting.h"
#include "preferences/look/PrefsTheme.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace lumacap {
namespace {

constexpr double innerRadius = prefslook::pickerRadius - prefslook::pickerInset / 2;

/// One text of the picker, raised while it is current.
class Segment final : public ChoiceControl {
public:
    Segment(const QString &label, QWidget *parent)
        : ChoiceControl(label, parent)
        , m_label(label, prefslook::bodyFont, FontWeight::Regular)
    {
    }

    QPainterPath outline() const override { return continuousRoundedRect(inside(), innerRadius); }
    QSize sizeHint() const override { return size(); }

protected:
    void paintFace(QPainter &painter, const PrefsTheme &theme) const override
    {
        if (isChecked()) {
            painter.fillPath(outline().translated(0, 0.75), theme.shadow);
            painter.fillPath(outline(), theme.segment);
        } else {
            painter.fillPath(outline(), feedback(theme.primary));
        }
        drawTextInMiddle(painter, m_label, rect(), theme.primary);
    }

private:
    QRectF inside() const
    {
        using prefslook::pickerInset;
        return QRectF(rect()).adjusted(pickerInset, pickerInset, -pickerInset, -pickerInset);
    }

    Text m_label;
};

} // namespace

SegmentedPicker::SegmentedPicker(const QString &name, const QStringList &labels, QWidget *parent)
    : ChoiceGroup(name, static_cast<int>(labels.size()), parent)
{
    setFixedSize(sizeHint());
    for (const QString &label : labels)
        add(new Segment(label, this));
}

QSize SegmentedPicker::sizeHint() const
{
    return {prefslook::pickerWidth, prefslook::pickerHeight};
}

QRect SegmentedPicker::segment(int index) const
{
    const int count = static_cast<int>(choices().size());
    const int left = width() * index / count;
    return {left, 0, width() * (index + 1) / count - left, height()};
}

void SegmentedPicker::resizeEvent(QResizeEvent * /*event*/)
{
    for (int index = 0; ChoiceControl *const choice : choices())
        choice->setGeometry(segment(index++));
}

void SegmentedPicker::paintEvent(QPaintEvent * /*event*/)
{
    const PrefsTheme theme = prefsThemeOf(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(continuousRoundedRect(rect(), prefslook::pickerRadius),
                     translucent(theme.primary, prefslook::pickerOpacity));
    for (int index = 1; std::cmp_less(index, choices().size()); ++index) {
        if (index == current() || index - 1 == current())
            continue; // the raised segment's edge divides them
        const QRectF line(segment(index).left() - 0.5,
                          (height() - prefslook::pickerDividerHeight) / 2, 1,
                          prefslook::pickerDividerHeight);
        painter.fillRect(alignedToPixels(painter, line),
                         translucent(theme.primary, prefslook::pickerDividerOpacity));
    }
}

} // namespace lumacap
