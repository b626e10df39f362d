#include "preferences/window/SectionColumn.h"

#include "preferences/look/FocusRing.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/window/PrefsSection.h"
#include "preferences/window/ScrollMark.h"

#include <QEvent>
#include <QScrollBar>
#include <QVBoxLayout>

namespace lumacap {

SectionColumn::SectionColumn(QWidget *parent)
    : QScrollArea(parent)
    , m_mark(new ScrollMark(verticalScrollBar(), this))
{
    auto *const content = new QWidget;
    m_sections = new QVBoxLayout(content);
    using prefslook::padding;
    m_sections->setContentsMargins(padding, padding, padding, padding);
    m_sections->setSpacing(prefslook::sectionSpacing);
    m_sections->addStretch();
    new FocusRing(content);
    setWidget(content);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // the mark stands for it
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

void SectionColumn::add(PrefsSection *section)
{
    m_sections->insertWidget(m_sections->count() - 1, section);
}

void SectionColumn::reveal(QWidget *widget)
{
    // What is to be revealed was shown in this turn: the layouts around it come to know of it on
    // the next one, unless they are told from the inside out.
    for (QWidget *around = widget; around != this->widget(); around = around->parentWidget()) {
        if (around->layout() != nullptr)
            around->layout()->activate();
    }
    m_sections->activate();
    QEvent request(QEvent::LayoutRequest);
    event(&request);
    ensureWidgetVisible(widget, 0, prefslook::padding);
}

void SectionColumn::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    m_mark->placeIn(viewport()->geometry());
}

} // namespace lumacap
