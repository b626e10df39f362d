#include "preferences/window/PrefsRow.h"

#include "graphics/PointPainting.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/look/PrefsTheme.h"

#include <QHBoxLayout>
#include <QPainter>

#include <cmath>

namespace lumacap {

PrefsRow::PrefsRow(const QString &label, QWidget *control, QWidget *parent)
    : QWidget(parent)
    , m_label(label, prefslook::bodyFont, FontWeight::Regular)
{
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addSpacing(static_cast<int>(std::ceil(m_label.size().width)) + prefslook::rowGap);
    layout->addStretch();
    layout->addWidget(control, 0, Qt::AlignVCenter);
    setMinimumHeight(static_cast<int>(std::ceil(m_label.size().height)));
}

void PrefsRow::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    drawTextAtLeft(painter, m_label, rect(), prefsThemeOf(palette()).primary);
}

} // namespace lumacap
