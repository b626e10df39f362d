#include "platform/kwin/windows/KWinWindowList.h"

#include "platform/kwin/Script.h"
#include "platform/kwin/windows/WindowFacts.h"
#include "platform/kwin/windows/WindowScript.h"
#include "platform/wayland/Outputs.h"

#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::kwin {

namespace {

/// It takes some milliseconds, unless KWin is busy. A list that comes later is kept all the same.
constexpr auto limit = 1s;

const auto scriptName = u"lumacap-windows"_s;

} // namespace

KWinWindowList::KWinWindowList(const wayland::Outputs &outputs, const ApplicationNames &names,
                               QDBusConnection bus)
    : m_outputs(outputs)
    , m_names(names)
    , m_bus(std::move(bus))
{
    Script::unload(m_bus, scriptName);
    connect(&outputs, &wayland::Outputs::changed, this, [this] {
        if (m_script)
            keep(m_told);
    });
}

KWinWindowList::~KWinWindowList() = default;

QCoro::Task<> KWinWindowList::prepare()
{
    m_script = std::make_unique<Script>(m_bus, scriptName, windowScript());
    connect(m_script.get(), &Script::told, this, &KWinWindowList::keep);
    co_await m_script->run(QDeadlineTimer(limit));
}

void KWinWindowList::release()
{
    m_script.reset();
    m_told.clear();
    m_windows.clear();
}

void KWinWindowList::keep(const QString &told)
{
    m_told = told;
    m_windows = windowRecords(windowFacts(told.toUtf8()), m_outputs.all(), m_names);
}

} // namespace lumacap::kwin
