#pragma once

#include "platform/Screens.h"

#include <functional>

class QWidget;

namespace lumacap {

/// A widget over one whole screen. One at a time: covering a second screen uncovers the first.
class OverlaySurface {
public:
    OverlaySurface() = default;
    Q_DISABLE_COPY_MOVE(OverlaySurface)
    virtual ~OverlaySurface() = default;

    /// Shows `widget`, which has no parent, over all of `screen`, above panels and full-screen
    /// windows, and gives it the keyboard as soon as the desktop lets it; until then it is shown
    /// all the same. The pointer is the widget's over its screen, and on the others, which stay
    /// live, while a button pressed there is held. `onScreenChanged` is called, once, when the
    /// screen goes or changes its size or place, unless `uncover` came before.
    virtual void cover(QWidget &widget, const Screen &screen,
                       std::function<void()> onScreenChanged) = 0;
    /// Takes the widget off the screen, at once, however busy the caller is then, and gives the
    /// keyboard back to whoever had it. Nothing where it covers none.
    virtual void uncover(QWidget &widget) = 0;
};

} // namespace lumacap
