#pragma once

#include "graphics/Geometry.h"

#include <QLineEdit>

namespace lumacap {

/// Where the text of a mark is typed: in the mark's colour on white, in the way of the desktop and
/// its input methods.
class AnnotationTextField final : public QLineEdit {
    Q_OBJECT

public:
    /// `frame` is where the owner lays it; `fontSize` is in widget units.
    AnnotationTextField(const Rect<Canvas> &frame, const QColor &textColor, double fontSize,
                        QWidget *parent);

    const Rect<Canvas> &frame() const { return m_frame; }

Q_SIGNALS:
    /// Typing ended with the text to be kept: by Tab, or by a press on what takes the keyboard.
    void textFieldAction();

protected:
    bool focusNextPrevChild(bool next) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    Rect<Canvas> m_frame;
};

} // namespace lumacap
