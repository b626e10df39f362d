#pragma once

#include "annotation/toolbar/ToolbarButton.h"
#include "graphics/Text.h"

namespace lumacap {

/// Of two buttons the prominent one is what the user most likely wants.
enum class TextButtonStyle { Plain, Prominent };

/// A button as wide as its text needs.
class TextButton final : public ToolbarButton {
    Q_OBJECT

public:
    TextButton(const QString &text, TextButtonStyle style, QWidget *parent);

    Size frameSize() const override;

protected:
    void paintFace(QPainter &painter, const ToolbarTheme &theme) const override;

private:
    Text m_text;
    TextButtonStyle m_style;
};

} // namespace lumacap
