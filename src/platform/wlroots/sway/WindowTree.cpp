#include "platform/wlroots/sway/WindowTree.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::sway {

namespace {

using Windows = std::vector<TreeWindow>;

QRectF rectOf(const QJsonValue &value)
{
    return {value[u"x"].toDouble(), value[u"y"].toDouble(), value[u"width"].toDouble(),
            value[u"height"].toDouble()};
}

/// How many title bars are above each of `siblings`, children of a container of this layout.
qsizetype titleBarsIn(const QString &layout, const QJsonArray &siblings)
{
    return layout == u"stacked"_s ? siblings.size() : 1;
}

/// The tree has the title bar beside the window: its height, and that it is the first of several
/// where they lie one above the other.
QRectF frameOf(const QJsonObject &node, qsizetype titleBars)
{
    const double titleBar = node[u"deco_rect"][u"height"].toDouble();
    const auto above = titleBar * static_cast<double>(titleBars);
    return rectOf(node[u"rect"]).adjusted(0, -above, 0, 0);
}

TreeWindow windowOf(const QJsonObject &node, qsizetype titleBars)
{
    const QJsonValue properties = node[u"window_properties"];
    TreeWindow window;
    window.id = node[u"id"].toInteger();
    if (const std::int64_t processId = node[u"pid"].toInteger(); processId > 0)
        window.processId = processId;
    window.frame = frameOf(node, titleBars);
    window.title = node[u"name"].toString();
    window.applicationId = node[u"app_id"].toString();
    window.className = properties[u"class"].toString();
    window.classInstance = properties[u"instance"].toString();
    return window;
}

/// The windows in `node`, a container or a window itself, which is under so many title bars.
void appendSeen(const QJsonObject &node, qsizetype titleBars, Windows &windows)
{
    // Only windows tell whether they are seen.
    if (node[u"visible"].toBool())
        windows.push_back(windowOf(node, titleBars));
    const QJsonArray children = node[u"nodes"].toArray();
    for (const auto &child : children)
        appendSeen(child.toObject(), titleBarsIn(node[u"layout"].toString(), children), windows);
}

bool isFullScreen(const QJsonObject &node)
{
    if (node[u"fullscreen_mode"].toInt() != 0)
        return true;
    const QJsonArray children = node[u"nodes"].toArray();
    return std::ranges::any_of(
        children, [](const QJsonValue &child) { return isFullScreen(child.toObject()); });
}

/// The windows of workspaces in the order in which they are painted, the last ones in front.
struct Painted {
    Windows tiled;
    Windows floating;
    Windows fullScreen;
    Windows overFullScreen;
};

void appendWorkspace(const QJsonObject &workspace, Painted &painted)
{
    Windows tiled;
    Windows floating;
    Windows fullScreen;
    bool isCovered = false;
    const QString layout = workspace[u"layout"].toString();
    const QJsonArray children = workspace[u"nodes"].toArray();
    for (const auto &child : children) {
        isCovered = isCovered || isFullScreen(child.toObject());
        appendSeen(child.toObject(), titleBarsIn(layout, children), tiled);
    }
    const QJsonArray floatingChildren = workspace[u"floating_nodes"].toArray();
    for (const auto &child : floatingChildren) {
        const bool covers = isFullScreen(child.toObject());
        isCovered = isCovered || covers;
        appendSeen(child.toObject(), 1, covers ? fullScreen : floating);
    }
    const auto append = [](Windows &to, const Windows &from) {
        to.insert(to.end(), from.begin(), from.end());
    };
    // What is still seen beside a full-screen window is its own, and in front of it.
    append(isCovered ? painted.fullScreen : painted.tiled, tiled);
    append(painted.fullScreen, fullScreen);
    append(isCovered ? painted.overFullScreen : painted.floating, floating);
}

} // namespace

std::vector<TreeWindow> windowsOf(const QJsonObject &tree)
{
    Painted painted;
    const QJsonArray outputs = tree[u"nodes"].toArray();
    for (const auto &output : outputs) {
        const QJsonArray workspaces = output[u"nodes"].toArray();
        for (const auto &workspace : workspaces)
            appendWorkspace(workspace.toObject(), painted);
    }
    Windows frontToBack;
    for (const Windows *layer :
         {&painted.overFullScreen, &painted.fullScreen, &painted.floating, &painted.tiled})
        frontToBack.insert(frontToBack.end(), layer->rbegin(), layer->rend());
    return frontToBack;
}

} // namespace lumacap::sway
