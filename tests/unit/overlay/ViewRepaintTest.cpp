#include "OverlayViewFixture.h"

#include <random>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

/// What a person does with pointer and keyboard, in any order.
class ViewRepaintTest : public OverlayViewFixture, public testing::WithParamInterface<int> {
protected:
    void act()
    {
        switch (pick(14)) {
        case 0:
            return m_pointer->press(x(), y());
        case 1:
            return m_pointer->release(x(), y());
        case 2:
            return m_pointer->drag(x(), y(), x(), y());
        case 3:
            return m_pointer->key(Qt::Key_Z, Qt::ControlModifier);
        case 4:
            return m_pointer->key(Qt::Key_Escape);
        case 5:
            return useSomeTool();
        case 6:
            return m_store.setCurrentThickness(pick(2) == 0 ? LineThickness::Thin
                                                            : LineThickness::Thick);
        default:
            return m_pointer->move(x(), y());
        }
    }

    void useSomeTool()
    {
        auto tool = AnnotationTool::Text;
        while (tool == AnnotationTool::Text) // which is a widget of its own
            tool = static_cast<AnnotationTool>(pick(static_cast<int>(annotationTools.size())));
        m_store.setCurrentTool(tool);
        QCoreApplication::sendPostedEvents();
    }

    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
    double x() { return std::uniform_real_distribution<double>(-10, 410)(m_random); }
    double y() { return std::uniform_real_distribution<double>(-10, 310)(m_random); }

    std::mt19937 m_random{static_cast<unsigned>(GetParam())};
};

TEST_P(ViewRepaintTest, afterAnyEventEqualsAFullRepaint)
{
    m_windows.all = {{.layer = 0,
                      .windowNumber = 5,
                      .ownerPID = 77,
                      .bounds = Rect<TopLeftGlobal>{{50, 40}, {170, 120}},
                      .ownerName = u"Editor"_s,
                      .windowName = std::nullopt}};
    for (int event = 0; event < 250; ++event) {
        act();
        expectFullRepaint(m_view->scene());
        ASSERT_FALSE(HasFailure()) << "seed " << GetParam() << ", event " << event;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, ViewRepaintTest, testing::Range(0, 8));

} // namespace
} // namespace lumacap::tests
