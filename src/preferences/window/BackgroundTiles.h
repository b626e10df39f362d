#pragma once

#include "annotation/vocabulary/FrameBackgroundStyle.h"
#include "preferences/look/ChoiceGroup.h"

namespace lumacap {

/// A tile for each background behind a frame, three beside each other.
class BackgroundTiles final : public ChoiceGroup {
    Q_OBJECT

public:
    BackgroundTiles(const QString &name, FrameBackgroundStyle current, QWidget *parent);

Q_SIGNALS:
    void styleChosen(lumacap::FrameBackgroundStyle style);
};

} // namespace lumacap
