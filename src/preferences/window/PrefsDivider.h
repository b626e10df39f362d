#pragma once

#include <QWidget>

namespace lumacap {

/// A line across, a point high.
class PrefsDivider final : public QWidget {
    Q_OBJECT

public:
    explicit PrefsDivider(QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace lumacap
