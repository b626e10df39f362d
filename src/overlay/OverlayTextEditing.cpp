#include "annotation/shapes/TextAnnotation.h"
#include "overlay/AnnotationTextField.h"
#include "overlay/OverlayView.h"

namespace lumacap {
namespace {

namespace look { // canvas points
constexpr Size fieldSize{200, 24};
constexpr double fieldDrop = 12; // from the press to the field's lower edge
constexpr double fontSize = 18;
} // namespace look

} // namespace

/// A field that is open already goes, and its text with it: the new press starts over.
void OverlayView::beginTextEditing(Point<Canvas> location)
{
    removeTextField();
    const Rect<Canvas> frame{{location.x, location.y - look::fieldDrop}, look::fieldSize};
    m_activeTextField = new AnnotationTextField(frame, nsColor(m_store.currentColor()),
                                                look::fontSize * unitsAPoint(), this);
    AnnotationTextField *const field = m_activeTextField;
    connect(field, &AnnotationTextField::textFieldAction, this,
            [this, field] { commitTextField(*field); });
    field->setGeometry(widgetRect(frame));
    field->show();
    field->setFocus();
}

void OverlayView::commitTextField(AnnotationTextField &field)
{
    if (m_activeTextField != &field)
        return;
    constexpr double unusedWidth = 1;
    const QString text = field.text();
    const Point<Canvas> position = field.frame().origin;
    removeTextField();
    if (!text.isEmpty())
        m_store.add(std::make_unique<TextAnnotation>(nsColor(m_store.currentColor()), unusedWidth,
                                                     position, text, look::fontSize));
}

/// Gives the keyboard back to the view. The field may be the one whose event this is.
void OverlayView::removeTextField()
{
    if (!m_activeTextField)
        return;
    AnnotationTextField *const field = m_activeTextField;
    m_activeTextField.clear();
    setFocus();
    field->hide();
    field->deleteLater();
}

} // namespace lumacap
