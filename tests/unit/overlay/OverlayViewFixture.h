#pragma once

#include "AnnotationPictures.h"
#include "Pointer.h"
#include "fakes/FakeDefaultsStore.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakeWindowList.h"
#include "overlay/OverlayPainting.h"
#include "overlay/OverlayView.h"
#include "preferences/storage/PreferencesStorage.h"

#include <QCoroTask>

#include <gmock/gmock.h>

namespace lumacap::tests {

/// A view of one screen whose points are its pixels, with nothing but the desktop behind it faked.
class OverlayViewFixture : public testing::Test {
protected:
    static constexpr CapturedScreen oneScreen{{{0, 0}, {400, 300}}, 1, {400, 300}, 300};

    OverlayViewFixture()
    {
        QCoro::waitFor(m_windows.prepare());
        m_store.confirmCallback = m_confirm.AsStdFunction();
        m_store.cancelCallback = m_cancel.AsStdFunction();
        show(oneScreen);
    }

    void show(const CapturedScreen &captured)
    {
        m_frozen = screenOfDistinctPixels(captured.pixelSize);
        m_view =
            std::make_unique<OverlayView>(m_windows, m_preferences, captured, m_frozen, m_store);
        m_view->resize(captured.pixelSize);
        m_pointer = std::make_unique<Pointer>(*m_view);
    }

    /// Chooses a tool as the toolbar does, and lets the view hear of it.
    void use(AnnotationTool tool)
    {
        m_store.setCurrentTool(tool);
        QCoreApplication::sendPostedEvents();
    }

    /// How many marks are finished.
    std::size_t count() const { return m_store.annotations().size(); }
    /// The mark added last, if it is of this kind.
    template <class Kind>
    const Kind *last() const
    {
        return count() == 0 ? nullptr
                            : dynamic_cast<const Kind *>(m_store.annotations().back().get());
    }

    /// What the view shows is what it would show if all were drawn anew.
    void expectFullRepaint(const OverlayScene &scene) const
    {
        QImage whole(m_frozen.size(), QImage::Format_ARGB32_Premultiplied);
        paintOverlay(whole, m_frozen, dimmed(m_frozen), scene, {oneScreen.bounds().size, 1},
                     whole.rect());
        EXPECT_EQ(m_view->picture(), whole);
    }

    FakeDefaultsStore m_defaults;
    FakeLoginItem m_loginItem;
    PreferencesStorage m_preferences{m_defaults, m_loginItem};
    FakeWindowList m_windows;
    testing::NiceMock<testing::MockFunction<void()>> m_confirm;
    testing::NiceMock<testing::MockFunction<void()>> m_cancel;
    AnnotationStore m_store{m_preferences};
    QImage m_frozen;
    std::unique_ptr<OverlayView> m_view;
    std::unique_ptr<Pointer> m_pointer;
};

} // namespace lumacap::tests
