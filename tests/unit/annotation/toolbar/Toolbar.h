#pragma once

#include "annotation/AnnotationStore.h"
#include "annotation/toolbar/AnnotationToolbarView.h"
#include "annotation/toolbar/ToolbarButton.h"
#include "fakes/FakeDefaultsStore.h"
#include "fakes/FakeLoginItem.h"
#include "preferences/storage/PreferencesStorage.h"

#include <QImage>
#include <QStringList>
#include <QWidget>

#include <gmock/gmock.h>

#include <memory>

namespace lumacap::tests {

/// What stands for the overlay: counts what the toolbar lets through.
class Host final : public QWidget {
public:
    Host();

    int mouseEvents = 0;
    QList<int> keys;

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};

/// A toolbar on a host that is 1400 × 400 points large and has the keyboard.
class ToolbarTest : public testing::Test {
protected:
    ToolbarTest();

    /// Makes host and toolbar anew, with so many units a point.
    void show(double unitsAPoint = 1);
    /// Likewise, with a frame as these settings say.
    void showWith(FakeDefaultsStore &defaults, double unitsAPoint = 1);
    /// The next turn of the loop, and the host's answer to it.
    void settle();
    void place(double width);
    void addAnnotation();

    ToolbarButton &control(const char *objectName) const;
    /// The controls that are shown, in the order of the keyboard.
    QList<ToolbarButton *> shownControls() const;
    QStringList shownNames() const;
    /// A click at the middle of a control, through the window.
    void click(const char *objectName);
    /// A place of the toolbar, in its points, in units of the host.
    QPoint inHost(QPointF points) const;

    /// The toolbar alone, at `ratio` device pixels a unit.
    QImage picture(double ratio = 1) const;

    FakeLoginItem m_loginItem;
    std::unique_ptr<AnnotationStore> m_store;
    std::unique_ptr<Host> m_host;
    AnnotationToolbarView *m_toolbar = nullptr;
};

/// The palette of the host: a light one with colours that are easily told apart.
QPalette testPalette();
/// The strip's colour over nothing in that palette, its accent and its text.
QColor groundColor();
inline const QColor accentColor(0, 100, 200);
inline const QColor textColor(20, 30, 40);
/// `color` at `opacity` over `ground`.
QColor over(const QColor &ground, const QColor &color, double opacity);

/// That the colours differ by `tolerance` of 255 at most in each channel.
testing::AssertionResult areAlike(const QColor &color, const QColor &expected, int tolerance = 2);

} // namespace lumacap::tests
