#pragma once

#include <QByteArray>
#include <QCoroTask>

namespace lumacap::gnome {

/// Whether an X server takes connections at `display` (":0", as DISPLAY holds it). Asking makes a
/// desktop start the one that it starts on demand; this waits for it with the event loop turning,
/// for ten seconds at most.
QCoro::Task<bool> xServerAnswers(QByteArray display);

} // namespace lumacap::gnome
