#include "platform/kwin/windows/WindowFacts.h"

#include "platform/WindowOwner.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>

#include <algorithm>
#include <array>
#include <optional>
#include <ranges>

using namespace Qt::StringLiterals;

namespace lumacap::kwin {

namespace {

constexpr int belowAll = -1;
constexpr int ordinary = 0;
constexpr int keptAbove = 3;
constexpr int aboveAll = 25;

/// KWin's number of the layer of ordinary windows, in every version.
constexpr int normalLayer = 2;

struct KindRow {
    QLatin1StringView kind;
    int layer;
};

/// Panels, notifications, menus and whatever else has a word of its own are above all.
constexpr std::array kindRows{
    KindRow{"normal"_L1, ordinary},   KindRow{"dialog"_L1, ordinary},
    KindRow{"splash"_L1, ordinary},   KindRow{"utility"_L1, keptAbove},
    KindRow{"toolbar"_L1, keptAbove}, KindRow{"desktopWindow"_L1, belowAll},
};

std::optional<QRectF> rectangle(const QJsonArray &numbers)
{
    constexpr int sides = 4;
    if (numbers.size() != sides)
        return std::nullopt;
    const QRectF frame(numbers.at(0).toDouble(), numbers.at(1).toDouble(), numbers.at(2).toDouble(),
                       numbers.at(3).toDouble());
    return !frame.isEmpty() ? std::optional(frame) : std::nullopt;
}

std::optional<WindowFacts> factsOf(const QJsonObject &told)
{
    const QUuid id(told[u"id"_s].toString());
    const auto frame = rectangle(told[u"frame"_s].toArray());
    if (id.isNull() || !frame)
        return std::nullopt;
    return WindowFacts{
        .number = id.data1, // as good as any of its numbers, for they come by chance
        .processId = told[u"pid"_s].toInteger(),
        .title = told[u"title"_s].toString(),
        .desktopFile = told[u"desktopFile"_s].toString(),
        .className = told[u"className"_s].toString(),
        .instance = told[u"instance"_s].toString(),
        .frame = *frame,
        .kind = told[u"kind"_s].toString(),
        .layer = told[u"layer"_s].toInt(normalLayer),
        .isKeptAbove = told[u"above"_s].toBool(),
        .isKeptBelow = told[u"below"_s].toBool(),
        .isFullScreen = told[u"fullScreen"_s].toBool(),
    };
}

bool isOnAnOutput(const QRectF &frame, const std::vector<wayland::Output> &outputs)
{
    return std::ranges::any_of(outputs, [&frame](const wayland::Output &output) {
        return QRectF(output.frame).intersects(frame);
    });
}

bool coversForUs(const WindowFacts &facts)
{
    return facts.processId == QCoreApplication::applicationPid() && layerOf(facts) > ordinary;
}

} // namespace

std::vector<WindowFacts> windowFacts(const QByteArray &told)
{
    std::vector<WindowFacts> windows;
    const QJsonArray list = QJsonDocument::fromJson(told).array();
    for (const auto value : list) {
        if (auto facts = factsOf(value.toObject()))
            windows.push_back(*std::move(facts));
    }
    return windows;
}

int layerOf(const WindowFacts &facts)
{
    const auto *const row = std::ranges::find(kindRows, facts.kind, &KindRow::kind);
    const int layer = row == kindRows.end() ? aboveAll : row->layer;
    if (layer != ordinary)
        return layer;
    if (facts.isKeptBelow || facts.layer < normalLayer)
        return belowAll;
    if (facts.isKeptAbove)
        return keptAbove;
    // Surfaces of the layer shell that tell no kind: other panels' ones, or ours.
    return facts.layer > normalLayer && !facts.isFullScreen ? aboveAll : ordinary;
}

std::vector<WindowRecord> windowRecords(const std::vector<WindowFacts> &facts,
                                        const std::vector<wayland::Output> &outputs,
                                        const ApplicationNames &names)
{
    std::vector<WindowRecord> records;
    for (const WindowFacts &window : facts | std::views::reverse) {
        if (!isOnAnOutput(window.frame, outputs) || coversForUs(window))
            continue;
        WindowRecord record;
        record.layer = layerOf(window);
        record.windowNumber = window.number;
        if (window.processId > 0)
            record.ownerPID = window.processId;
        record.bounds = wayland::topLeftFrame(window.frame, outputs);
        record.ownerName = ownerName(
            {window.desktopFile, window.className, window.instance, record.ownerPID}, names);
        record.windowName = window.title;
        records.push_back(record);
    }
    return records;
}

} // namespace lumacap::kwin
