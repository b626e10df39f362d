#include "preferences/recorder/ShortcutSilence.h"

#include "platform/HotkeyService.h"

namespace lumacap {

ShortcutSilence::ShortcutSilence(HotkeyService &service)
    : m_service(service)
{
}

ShortcutSilence::~ShortcutSilence()
{
    if (!m_recorders.empty())
        m_service.resume();
}

void ShortcutSilence::begin(const QObject *recorder)
{
    const bool isFirst = m_recorders.empty();
    m_recorders.insert(recorder);
    if (isFirst)
        m_service.suspend();
}

void ShortcutSilence::end(const QObject *recorder)
{
    if (m_recorders.erase(recorder) > 0 && m_recorders.empty())
        m_service.resume();
}

} // namespace lumacap
