#include "platform/freedesktop/CanberraSoundPlayer.h"

#include "platform/freedesktop/ApplicationId.h"

#include <QFile>

#include <canberra.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

using namespace std::chrono_literals;

namespace lumacap::freedesktop {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t mostSounds = 4;
constexpr auto latestBegin = 2s; // a click heard later than that belongs to nothing
constexpr auto longestSound = 10s;

} // namespace

/// What is asked of the thread, and what it says of itself.
struct CanberraSoundPlayer::Requests {
    explicit Requests(const QString &path)
        : ownSound{QFile::encodeName(path)}
    {
    }

    const QByteArray ownSound;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Clock::time_point> waiting; ///< when each sound was asked for
    std::size_t playing = 0;
    bool isServed = false; ///< a thread runs, or is about to
};

/// One connection to the sound server. Every operation may take as long as the server likes, and
/// must be called without the lock: the library reports ends while it holds a lock of its own.
class CanberraSoundPlayer::Server {
public:
    explicit Server(Requests &requests)
        : m_requests{requests}
    {
        if (ca_context_create(&m_context) != CA_SUCCESS)
            return;
        ca_context_change_props(m_context, CA_PROP_APPLICATION_NAME, "Lumacap",
                                CA_PROP_APPLICATION_ID, applicationId.data(),
                                CA_PROP_APPLICATION_ICON_NAME, applicationId.data(), nullptr);
        m_isOpen = ca_context_open(m_context) == CA_SUCCESS;
    }
    Q_DISABLE_COPY_MOVE(Server)
    ~Server()
    {
        if (m_context != nullptr)
            ca_context_destroy(m_context); // ends what still plays; no report comes after this
    }

    /// Plays what is asked for until nothing is left to play, or a sound doesn't end.
    void playAll()
    {
        std::unique_lock lock(m_requests.mutex);
        do {
            while (!m_requests.waiting.empty()) {
                const auto asked = m_requests.waiting.front();
                m_requests.waiting.pop_front();
                if (Clock::now() - asked > latestBegin)
                    continue;
                ++m_requests.playing; // before it begins: its end may be reported at once
                lock.unlock();
                const bool hasBegun = begin();
                lock.lock();
                if (!hasBegun)
                    --m_requests.playing;
            }
            m_requests.changed.wait_for(lock, longestSound, [this] {
                return !m_requests.waiting.empty() || m_requests.playing == 0;
            });
        } while (!m_requests.waiting.empty());
    }

private:
    /// Whether a sound began; then its end will be reported.
    bool begin()
    {
        if (!m_isOpen)
            return false;
        const int themed = begin(CA_PROP_EVENT_ID, "screen-capture");
        const bool themeHasNone = themed == CA_ERROR_NOTFOUND || themed == CA_ERROR_CORRUPT
            || themed == CA_ERROR_NOTSUPPORTED || themed == CA_ERROR_TOOBIG;
        return themed == CA_SUCCESS
            || (themeHasNone
                && begin(CA_PROP_MEDIA_FILENAME, m_requests.ownSound.constData()) == CA_SUCCESS);
    }

    int begin(const char *key, const char *value)
    {
        ca_proplist *properties = nullptr;
        if (const int error = ca_proplist_create(&properties); error != CA_SUCCESS)
            return error;
        ca_proplist_sets(properties, key, value);
        ca_proplist_sets(properties, CA_PROP_MEDIA_ROLE, "event");
        const int result =
            ca_context_play_full(m_context, soundNumber, properties, &Server::onEnd, &m_requests);
        ca_proplist_destroy(properties);
        return result;
    }

    /// On a thread of the library.
    static void onEnd(ca_context * /*context*/, uint32_t /*sound*/, int /*error*/, void *requests)
    {
        auto &ended = *static_cast<Requests *>(requests);
        const std::scoped_lock lock(ended.mutex);
        --ended.playing;
        ended.changed.notify_one();
    }

    static constexpr uint32_t soundNumber = 1; // for cancelling, which nobody does

    Requests &m_requests;
    ca_context *m_context = nullptr;
    bool m_isOpen = false;
};

CanberraSoundPlayer::CanberraSoundPlayer(const QString &ownSound)
    : m_requests{std::make_shared<Requests>(ownSound)}
{
}

CanberraSoundPlayer::~CanberraSoundPlayer() = default;

void CanberraSoundPlayer::play()
{
    const std::scoped_lock lock(m_requests->mutex);
    if (m_requests->waiting.size() + m_requests->playing >= mostSounds)
        return;
    m_requests->waiting.push_back(Clock::now());
    m_requests->changed.notify_one();
    if (std::exchange(m_requests->isServed, true))
        return;
    try {
        std::thread([requests = m_requests] { serve(requests); }).detach();
    } catch (const std::system_error &) { // no thread to be had: no sound, nothing worse
        m_requests->waiting.clear();
        m_requests->isServed = false;
    }
}

void CanberraSoundPlayer::serve(const std::shared_ptr<Requests> &requests)
{
    std::unique_lock lock(requests->mutex);
    while (!requests->waiting.empty()) {
        lock.unlock();
        {
            Server server(*requests);
            server.playAll();
        }
        lock.lock();
        requests->playing = 0; // also what the server never reported ended with the connection
    }
    requests->isServed = false;
}

} // namespace lumacap::freedesktop
