#pragma once

#include "preferences/look/ChoiceGroup.h"

#include <QStringList>

namespace lumacap {

/// Texts side by side in one trough, of equal widths.
class SegmentedPicker final : public ChoiceGroup {
    Q_OBJECT

public:
    SegmentedPicker(const QString &name, const QStringList &labels, QWidget *parent);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QRect segment(int index) const;
};

} // namespace lumacap
