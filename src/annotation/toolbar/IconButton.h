#pragma once

#include "annotation/toolbar/ToolbarButton.h"

#include <memory>
#include <variant>

namespace lumacap {

class Text;

/// A symbol on an icon button; `font` is the size in points of the font it goes with.
struct SymbolFace {
    QString symbol;
    double font;
};

/// A square that is filled while it is current, with a symbol or a short text in its middle.
class IconButton final : public ToolbarButton {
    Q_OBJECT

public:
    IconButton(QAccessible::Role role, const QString &name, const SymbolFace &face,
               QWidget *parent);
    IconButton(QAccessible::Role role, const QString &name, std::unique_ptr<Text> face,
               QWidget *parent);
    Q_DISABLE_COPY_MOVE(IconButton)
    ~IconButton() override;

    Size frameSize() const override;

protected:
    void paintFace(QPainter &painter, const ToolbarTheme &theme) const override;

private:
    std::variant<SymbolFace, std::unique_ptr<Text>> m_face;
};

} // namespace lumacap
