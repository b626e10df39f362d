#include "platform/wlroots/sway/SwayPointerFinder.h"

#include "platform/wlroots/sway/Ipc.h"

#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::sway {

namespace {

constexpr auto patience = 500ms;

struct Told {
    std::optional<QPointF> middle; ///< of the focused output
    bool isExactWanted = false;
};

/// Owns all it needs: whoever asks may be gone when the answer comes.
QCoro::Task<Told> askAt(QString path)
{
    Ipc ipc(path, patience);
    AwaitedReply askedConfig = ipc.ask(Request::GetConfig);
    const Ipc::Reply outputs = co_await ipc.ask(Request::GetOutputs);
    const Ipc::Reply config = co_await askedConfig;
    Told told;
    if (const auto frame = outputs ? focusedFrame(outputs->array()) : std::nullopt)
        told.middle = frame->center();
    if (config)
        told.isExactWanted = separatesFocusFromPointer(config->object()[u"config"].toString());
    co_return told;
}

} // namespace

SwayPointerFinder::SwayPointerFinder(QString path, std::unique_ptr<wayland::PointerFinder> exactly)
    : m_path(std::move(path))
    , m_exactly(std::move(exactly))
{
}

QCoro::Task<std::optional<QPointF>> SwayPointerFinder::find()
{
    const Told told = co_await askAt(m_path);
    if (!told.isExactWanted || m_exactly == nullptr)
        co_return told.middle;
    const auto exact = co_await m_exactly->find();
    co_return exact ? exact : told.middle;
}

std::optional<QRectF> focusedFrame(const QJsonArray &outputs)
{
    const auto focused = std::ranges::find_if(
        outputs, [](const auto &output) { return output.toObject()[u"focused"_s].toBool(); });
    if (focused == outputs.end())
        return std::nullopt;
    const QJsonValue rect = focused->toObject()[u"rect"_s];
    return QRectF(rect[u"x"].toDouble(), rect[u"y"].toDouble(), rect[u"width"].toDouble(),
                  rect[u"height"].toDouble());
}

bool separatesFocusFromPointer(const QString &configuration)
{
    static const QRegularExpression separating(
        u"^\\s*(focus_follows_mouse\\s+no|mouse_warping\\s+none)\\s*$"_s,
        QRegularExpression::MultilineOption);
    return separating.match(configuration).hasMatch();
}

} // namespace lumacap::sway
