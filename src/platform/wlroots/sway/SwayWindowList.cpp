#include "platform/wlroots/sway/SwayWindowList.h"

#include "platform/Spawn.h"
#include "platform/WindowOwner.h"
#include "platform/wayland/Outputs.h"
#include "platform/wlroots/sway/WindowTree.h"

#include <QPointer>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::sway {

namespace {

/// A window that opens is several changes, which are read as one.
constexpr auto burst = 15ms;
/// What goes on changing is read no more often.
constexpr auto pause = 200ms;
/// The compositor does not tell when a window is resized or the layout changes: it is asked.
constexpr auto untold = 400ms;

constexpr int ordinary = 0;

bool isOnAnOutput(const QRectF &frame, const std::vector<wayland::Output> &outputs)
{
    return std::ranges::any_of(outputs, [&frame](const wayland::Output &output) {
        return frame.intersects(QRectF(output.frame));
    });
}

} // namespace

SwayWindowList::SwayWindowList(const wayland::Outputs &outputs, const ApplicationNames &names,
                               QString path)
    : m_outputs(outputs)
    , m_names(names)
    , m_path(std::move(path))
{
    m_reading.setSingleShot(true);
    connect(&m_reading, &QTimer::timeout, this, [this] { spawn(read()); });
}

SwayWindowList::~SwayWindowList()
{
    release(); // or whoever waits for an answer would go on in what is left of us
}

QCoro::Task<> SwayWindowList::prepare()
{
    ++m_round;
    if (!m_ipc) {
        m_ipc = std::make_unique<Ipc>(m_path);
        connect(m_ipc.get(), &Ipc::happened, this, &SwayWindowList::readSoon);
        m_ipc->subscribe({u"window"_s, u"workspace"_s});
    }
    co_await read();
}

void SwayWindowList::release()
{
    ++m_round;
    m_reading.stop();
    m_pause.setRemainingTime(0);
    m_ipc.reset();
    m_isReading = false;
    m_windows.clear();
}

QCoro::Task<> SwayWindowList::read()
{
    const QPointer self(this);
    const unsigned int round = m_round;
    m_isReading = true;
    m_hasChanged = false;
    m_reading.stop();
    const Ipc::Reply tree = co_await m_ipc->ask(Request::GetTree);
    if (!self || m_round != round)
        co_return;
    m_isReading = false;
    if (tree)
        keep(tree->object());
    m_pause.setRemainingTime(pause);
    m_reading.start(m_hasChanged ? pause : untold);
}

void SwayWindowList::keep(const QJsonObject &tree)
{
    const std::vector<wayland::Output> outputs = m_outputs.all();
    m_windows.clear();
    for (const TreeWindow &window : windowsOf(tree)) {
        if (!isOnAnOutput(window.frame, outputs))
            continue;
        m_windows.push_back({.layer = ordinary,
                             .windowNumber = window.id,
                             .ownerPID = window.processId,
                             .bounds = topLeftFrame(window.frame, outputs),
                             .ownerName = ownerName({window.applicationId, window.className,
                                                     window.classInstance, window.processId},
                                                    m_names),
                             .windowName = window.title});
    }
}

void SwayWindowList::readSoon()
{
    m_hasChanged = true;
    const auto wait = std::max(burst, std::chrono::milliseconds(m_pause.remainingTime()));
    // The first change of a burst starts the wait, so that endless changes don't prolong it.
    if (!m_isReading && m_reading.remainingTimeAsDuration() > wait)
        m_reading.start(wait);
}

} // namespace lumacap::sway
