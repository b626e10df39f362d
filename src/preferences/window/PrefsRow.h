#pragma once

#include "graphics/Text.h"

#include <QWidget>

namespace lumacap {

/// A label and, at the trailing edge, the control that it names.
class PrefsRow final : public QWidget {
    Q_OBJECT

public:
    /// Makes `control` its child.
    PrefsRow(const QString &label, QWidget *control, QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Text m_label;
};

} // namespace lumacap
