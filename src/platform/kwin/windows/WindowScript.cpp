#include "platform/kwin/windows/WindowScript.h"

namespace lumacap::kwin {

namespace {

// Plasma 5 calls windows clients, has no list in their order, and numbers its desktops; 6 has
// windows and objects. What a version does not have is undefined, and an error ends a script
// without a word: each property is asked whether it is there.
constexpr auto source = R"JS(
var kinds = ["popupWindow", "desktopWindow", "dock", "criticalNotification", "notification",
             "onScreenDisplay", "appletPopup", "tooltip", "popupMenu", "dropdownMenu", "comboBox",
             "dndIcon", "menu", "toolbar", "utility", "splash", "dialog"];

function all() {
    if (workspace.stackingOrder !== undefined)
        return workspace.stackingOrder;
    return workspace.clientList().slice().sort(function (one, other) {
        return one.stackingOrder - other.stackingOrder;
    });
}

function isOnCurrentDesktop(window) {
    var current = workspace.currentDesktop;
    if (window.onAllDesktops)
        return true;
    if (typeof current !== "object")
        return window.desktop === current;
    var desktops = window.desktops || [];
    for (var i = 0; i < desktops.length; ++i) {
        if (desktops[i].id === current.id)
            return true;
    }
    return desktops.length === 0;
}

function isInCurrentActivity(window) {
    var activities = window.activities || [];
    var current = workspace.currentActivity;
    return activities.length === 0 || !current || activities.indexOf(current) >= 0;
}

// What KWin leaves on the screen when it shows the desktop: no window tells whether it is hidden.
function staysOnDesktop(window) {
    return window.managed === false || window.dock || window.desktopWindow || window.inputMethod;
}

function isShown(window) {
    return !window.deleted && !window.minimized && !window.hidden && !window.shade
        && (!showsDesktop || staysOnDesktop(window)) && isOnCurrentDesktop(window)
        && isInCurrentActivity(window);
}

function kindOf(window) {
    for (var i = 0; i < kinds.length; ++i) {
        if (window[kinds[i]])
            return kinds[i];
    }
    return "normal";
}

function factsOf(window) {
    var frame = window.frameGeometry;
    return {
        id: String(window.internalId), pid: window.pid, title: String(window.caption),
        desktopFile: String(window.desktopFileName || ""),
        className: String(window.resourceClass || ""), instance: String(window.resourceName || ""),
        frame: [frame.x, frame.y, frame.width, frame.height], kind: kindOf(window),
        layer: window.layer, above: !!window.keepAbove, below: !!window.keepBelow,
        fullScreen: !!window.fullScreen
    };
}

// Once more where the desktop is shown, or is not any more, which scripts have to ask for: 5 tells
// none of the change.
var showsDesktop = false;
function tellAll() {
    tellShown();
    callDBus("org.kde.KWin", "/KWin", "org.freedesktop.DBus.Properties", "Get", "org.kde.KWin",
             "showingDesktop", function (answer) {
        if (showsDesktop !== !!answer) {
            showsDesktop = !!answer;
            tellShown();
        }
    });
}

function tellShown() {
    var windows = all();
    var facts = [];
    for (var i = 0; i < windows.length; ++i) {
        try {
            if (isShown(windows[i]))
                facts.push(factsOf(windows[i]));
        } catch (error) {
            // it is going at this moment
        }
    }
    tell(JSON.stringify(facts));
}

// A window that opens or is dragged is many changes, which are told as one.
var soon = typeof QTimer === "function" ? new QTimer() : null;
if (soon) {
    soon.singleShot = true;
    soon.interval = 10;
    soon.timeout.connect(tellAll);
}

function changed() {
    if (!soon)
        tellAll();
    else if (!soon.active)
        soon.start();
}

function follow(object, signals, whom) {
    for (var i = 0; i < signals.length; ++i) {
        var signal = object[signals[i]];
        if (signal && signal.connect)
            signal.connect(whom);
    }
}

function followWindow(window) {
    follow(window, ["frameGeometryChanged", "stackingOrderChanged", "minimizedChanged",
                    "hiddenChanged", "hiddenByShowDesktopChanged", "shadeChanged", "captionChanged",
                    "desktopChanged", "desktopsChanged", "activitiesChanged", "keepAboveChanged",
                    "keepBelowChanged", "fullScreenChanged", "activeChanged", "windowClassChanged",
                    "desktopFileNameChanged", "windowShown", "windowHidden"], changed);
}

var present = all();
for (var i = 0; i < present.length; ++i)
    followWindow(present[i]);
follow(workspace, ["windowAdded", "clientAdded"], function (window) {
    followWindow(window);
    changed();
});
follow(workspace, ["windowRemoved", "clientRemoved", "windowActivated", "clientActivated",
                   "currentDesktopChanged", "currentActivityChanged"], changed);
tellAll();
)JS";

} // namespace

QByteArray windowScript()
{
    return source;
}

} // namespace lumacap::kwin
