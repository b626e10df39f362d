#pragma once

#include <QByteArray>
#include <QSize>
#include <QTemporaryDir>

#include <atomic>
#include <cstdint>
#include <thread>

struct wl_client;
struct wl_display;
struct wl_event_source;
struct wl_global;
struct wl_resource;

namespace lumacap::wlroots {

/// What the compositor does when it is asked for a picture.
enum class Answer {
    Copies,
    Refuses,
    IsSilent,
    LosesTheOutput,
    EndsTheConnection,
    CopiesToOthersMemoryOnly,
    IsReadyUnasked,
};

/// One display, and how pictures of it are made.
struct Behaviour {
    Answer answer = Answer::Copies;
    std::uint32_t version = 3;
    std::uint32_t format = 1; ///< of wl_shm
    QSize size{2, 2};
    std::uint32_t bytesPerLine = 8;
    /// Every row, in the order of memory.
    QByteArray bytes = QByteArray(16, '\x7f');
    bool isUpsideDown = false;
    std::int32_t transform = 0;
    /// How often it says that something was drawn, when it is to wait for that.
    int drawings = 0;
};

/// A compositor with one output that offers pictures of it, in a thread of its own. Its clients
/// find it through the environment, for as long as it lives.
class StandInCompositor {
public:
    explicit StandInCompositor(Behaviour behaviour);
    Q_DISABLE_COPY_MOVE(StandInCompositor)
    ~StandInCompositor();

    /// How many pictures it was asked to copy, at once or when something is drawn.
    int copiesAsked() const { return m_copiesAsked; }
    /// Whether the pointer was wanted in the last one.
    bool pointerAsked() const { return m_pointerAsked; }

private:
    friend struct Requests;

    QTemporaryDir m_folder;
    Behaviour m_behaviour;
    wl_display *m_display;
    wl_global *m_output = nullptr;
    int m_end = -1;
    wl_event_source *m_endSource;
    std::atomic<int> m_copiesAsked = 0;
    std::atomic<bool> m_pointerAsked = false;
    std::thread m_thread;
};

} // namespace lumacap::wlroots
