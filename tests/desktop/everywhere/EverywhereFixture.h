#pragma once

#include "annotation/shapes/Annotation.h"
#include "annotation/vocabulary/AnnotationColor.h"
#include "everywhere/DesktopMake.h"
#include "harness/AccessibleControls.h"
#include "harness/Agent.h"
#include "harness/Input.h"
#include "harness/Pictures.h"
#include "harness/Settings.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace lumacap::harness {

/// A person at any desktop: noise on its outputs, an agent that saves into a folder. Places are in
/// the desktop's own units, y down.
class EverywhereFixture : public testing::TestWithParam<DesktopMake> {
protected:
    using Marks = std::vector<std::unique_ptr<Annotation>>;

    EverywhereFixture();
    ~EverywhereFixture() override;

    /// Starts the agent with `settings`, besides those that save captures.
    void startAgent(Settings settings = {});
    TestDesktop &desktop() { return *m_desktop; }
    Agent &agent() { return *m_agent; }
    Input &hands() { return m_desktop->input(); }
    const TestOutput &output(std::size_t index) const { return m_outputs.at(index); }

    /// Puts the pointer into the corner of the output at which no test looks.
    void restPointerOn(std::size_t index);
    /// Asks for a selection with the pointer resting on the output, and waits for the overlay.
    void openOverlay(std::size_t index = 0);
    /// Whether something lies over what the outputs show.
    bool overlayIsUp();

    /// Presses a key that ends the overlay, until it has. The desktop gives the overlay the
    /// keyboard a little after it shows it.
    void endOverlay(std::uint32_t key);

    /// The controls that show, by their names.
    AccessibleControls &controls();
    /// Waits until the desktop has given a window of the program the keyboard, which it does a
    /// little after it shows it: keys pressed before go elsewhere.
    void awaitKeyboard();
    /// Clicks the control of this name, waited for.
    void use(const QString &control);

    QStringList files() const;
    /// The one file, once it is there and the overlay has gone.
    QImage savedPicture();
    QImage clipboardPicture();

    /// What the output shows at `area`, in native pixels.
    QImage shown(const QRect &area, std::size_t index = 0) const;
    /// The same with `marks` on it, for the first output; `area` is what was selected.
    QImage shownWith(const QRect &area, const Marks &marks) const;
    /// A place of the first output in the canvas, whose y goes up.
    Point<Canvas> canvas(QPoint place) const;
    /// The whole output, and what is seen of it: equal but for the pointer's neighbourhood.
    testing::AssertionResult equalsOutput(std::size_t index, const QImage &seen) const;

    static QColor colorOf(AnnotationColor color) { return nsColor(color); }

private:
    double scaleOf(std::size_t index) const;

    std::unique_ptr<TestDesktop> m_desktop;
    std::vector<TestOutput> m_outputs;
    std::vector<QImage> m_pictures;
    std::unique_ptr<Agent> m_agent;
    std::unique_ptr<AccessibleControls> m_controls;
};

/// Puts marks into a list that keeps them.
template <class... Kinds>
std::vector<std::unique_ptr<Annotation>> marks(std::unique_ptr<Kinds>... kinds)
{
    std::vector<std::unique_ptr<Annotation>> list;
    (list.push_back(std::move(kinds)), ...);
    return list;
}

} // namespace lumacap::harness
