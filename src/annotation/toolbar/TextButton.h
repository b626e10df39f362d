#pragma once

#include "annotation/toolbar/ToolbarButton.h"
#include "graphics/Text.h"

namespace lumacap {

/// Of two buttons the prominent one is what the user most likely wants. A click on it takes the
/// keyboard first, so that a text that is being typed ends before the button acts.
enum class TextButtonStyle { Plain, Prominent };

/// A button as wide as its text needs.
class TextButton final : public ToolbarButton {
    Q_OBJECT

public:
    TextButton(const QString &text, TextButtonStyle style, QWidget *parent);

    Size frameSize() const override;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void paintFace(QPainter &painter, const ToolbarTheme &theme) const override;

private:
    Text m_text;
    TextButtonStyle m_style;
};

} // namespace lumacap
