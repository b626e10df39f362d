#include "platform/portal/PortalScreenCapture.h"

#include "platform/portal/DisplayCut.h"
#include "platform/portal/PictureFile.h"
#include "platform/portal/PortalRequest.h"
#include "platform/wayland/Outputs.h"

#include <QCoroTimer>
#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::portal {

namespace {

// Nothing tells here when a closed menu has left the screen: desktops fade menus out for a third of
// a second at most.
constexpr auto menuHasGone = 500ms;

const auto endOfService = u"the program ends"_s;

} // namespace

/// One picture at a time: some portals write each into the same file.
struct PortalScreenCapture::Turn {
    PortalScreenCapture &capture;

    bool await_ready() const { return !std::exchange(capture.m_isTaking, true); }
    void await_suspend(std::coroutine_handle<> waiting) const
    {
        capture.m_waiting.push_back(waiting);
    }
    void await_resume() const { }
};

PortalScreenCapture::PortalScreenCapture(QDBusConnection connection, QString applicationId,
                                         const wayland::Outputs &outputs,
                                         std::chrono::milliseconds limit)
    : m_portal(std::move(connection), std::move(applicationId))
    , m_outputs(outputs)
    , m_limit(limit)
{
}

PortalScreenCapture::~PortalScreenCapture()
{
    m_isEnding = true;
    for (const auto waiting : std::exchange(m_waiting, {}))
        waiting.resume(); // or whoever waits would never end
}

void PortalScreenCapture::endTurn()
{
    if (m_waiting.empty()) {
        m_isTaking = false;
        return;
    }
    const auto next = m_waiting.front();
    m_waiting.pop_front();
    next.resume();
}

QCoro::Task<Result<std::vector<DisplayInfo>>> PortalScreenCapture::displays()
{
    co_return wayland::displaysOf(m_outputs.all());
}

QCoro::Task<> PortalScreenCapture::settle()
{
    co_await QCoro::sleepFor(menuHasGone);
}

QCoro::Task<Result<QImage>> PortalScreenCapture::grab(DisplayId display, QSize /*pixelSize*/)
{
    const QPointer self{this};
    co_await Turn{*this};
    if (m_isEnding)
        co_return failure(endOfService);
    const timespec asked = fileClock();
    const auto uri = co_await newPicture();
    if (!self)
        co_return failure(endOfService);
    Result<QImage> image = failure(QString());
    if (uri)
        image = displayIn(*uri, asked, display);
    else
        image = std::unexpected(uri.error());
    // Not from within: the next one is another's.
    QMetaObject::invokeMethod(this, &PortalScreenCapture::endTurn, Qt::QueuedConnection);
    co_return image;
}

QCoro::Task<Result<QString>> PortalScreenCapture::newPicture()
{
    const QPointer self{this};
    const auto portal = co_await m_portal.reach();
    if (!self)
        co_return failure(endOfService);
    if (!portal)
        co_return std::unexpected(portal.error());
    Question question{u"org.freedesktop.portal.Screenshot"_s, u"Screenshot"_s, {}, {}, m_limit};
    question.arguments.append(QString()); // no window of ours asks
    question.options.insert(u"interactive"_s, false);
    const auto answer = co_await PortalRequest::ask(*portal, std::move(question), this);
    if (!answer)
        co_return std::unexpected(answer.error());
    co_return answer->value(u"uri"_s).toString();
}

Result<QImage> PortalScreenCapture::displayIn(const QString &uri, timespec asked,
                                              DisplayId display) const
{
    auto file = PictureFile::open(uri, asked);
    if (!file)
        return std::unexpected(file.error());
    DisplayCut cut;
    const auto picture = file->read([&](QSize size) -> Result<void> {
        const auto found = cutOf(display, m_outputs.all(), size);
        if (!found)
            return std::unexpected(found.error());
        cut = *found;
        return {};
    });
    file->discard(); // it was written for us, whatever is in it
    if (!picture)
        return std::unexpected(picture.error());
    return cutOut(*picture, cut);
}

} // namespace lumacap::portal
