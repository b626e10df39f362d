#include "overlay/AnnotationTextField.h"

#include "overlay/OverlayKeys.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumacap {
namespace {

namespace look {
constexpr int textMargin = 3; // widget units, from the border
constexpr QColor border(128, 128, 128);
} // namespace look

} // namespace

AnnotationTextField::AnnotationTextField(const Rect<Canvas> &frame, const QColor &textColor,
                                         double fontSize, QWidget *parent)
    : QLineEdit(parent)
    , m_frame(frame)
{
    QFont typed = font();
    typed.setPixelSize(std::max(1, static_cast<int>(std::lround(fontSize))));
    typed.setWeight(QFont::Medium);
    setFont(typed);
    QPalette colors = palette();
    colors.setColor(QPalette::Base, Qt::white);
    colors.setColor(QPalette::Text, textColor);
    colors.setColor(QPalette::PlaceholderText, Qt::gray);
    setPalette(colors);
    setFrame(false); // the style's own leaves too little room for the letters
    setTextMargins(look::textMargin, 0, look::textMargin, 0);
    setPlaceholderText(u"Saisir du texte..."_s);
    setContextMenuPolicy(Qt::NoContextMenu); // the overlay can have no pop-up windows
}

bool AnnotationTextField::focusNextPrevChild(bool /*next*/)
{
    Q_EMIT textFieldAction();
    return true;
}

void AnnotationTextField::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::MouseFocusReason)
        Q_EMIT textFieldAction();
}

void AnnotationTextField::keyPressEvent(QKeyEvent *event)
{
    const bool isCommand = event->modifiers().testFlag(Qt::MetaModifier);
    if (isCommandUndo(*event))
        undo();
    else if (isEscape(*event) || isCommand) // the overlay's; no letter, whatever the keyboard says
        event->ignore();
    else
        QLineEdit::keyPressEvent(event);
}

void AnnotationTextField::paintEvent(QPaintEvent *event)
{
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    painter.setPen(look::border);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
}

} // namespace lumacap
