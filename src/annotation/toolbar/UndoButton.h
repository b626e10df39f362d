#pragma once

#include "annotation/toolbar/ToolbarButton.h"

namespace lumacap {

/// A symbol alone, pale while there is nothing to undo.
class UndoButton final : public ToolbarButton {
    Q_OBJECT

public:
    explicit UndoButton(QWidget *parent);

    Size frameSize() const override;

protected:
    void paintFace(QPainter &painter, const ToolbarTheme &theme) const override;
    QPainterPath focusRing() const override;

private:
    QPainterPath ground() const;
};

} // namespace lumacap
