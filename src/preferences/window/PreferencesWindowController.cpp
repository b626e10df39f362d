#include "preferences/window/PreferencesWindowController.h"

#include "preferences/window/PreferencesWindow.h"

#include <QPointer>

#include <utility>

namespace lumacap {

PreferencesWindowController::PreferencesWindowController(const PreferencesServices &services,
                                                         std::function<void()> onHotkeysChanged)
    : m_services(services)
    , m_onHotkeysChanged(std::move(onHotkeysChanged))
{
}

PreferencesWindowController::~PreferencesWindowController() = default;

void PreferencesWindowController::show()
{
    if (!m_window || !m_window->isVisible()) {
        m_window = std::make_unique<PreferencesWindow>(m_services, [self = QPointer(this)] {
            if (self)
                self->m_onHotkeysChanged();
        });
        // Not under the feet of the event that closes it. By then another may be open.
        const auto letGo = [this] {
            if (m_window && !m_window->isVisible())
                m_window.reset();
        };
        connect(m_window.get(), &PreferencesWindow::closed, this, letGo, Qt::QueuedConnection);
    }
    m_window->makeKeyAndOrderFront();
}

} // namespace lumacap
