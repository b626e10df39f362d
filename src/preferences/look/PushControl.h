#pragma once

#include "graphics/Text.h"
#include "preferences/look/PrefsControl.h"

namespace lumacap {

/// A small bordered button, as wide as its text needs.
class PushControl final : public PrefsControl {
    Q_OBJECT

public:
    PushControl(const QString &text, QWidget *parent);

    QPainterPath outline() const override;
    QSize sizeHint() const override;

protected:
    void paintFace(QPainter &painter, const PrefsTheme &theme) const override;

private:
    Text m_text;
};

} // namespace lumacap
