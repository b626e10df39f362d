#pragma once

#include "harness/TestDesktop.h"

#include <QRectF>

#include <iosfwd>
#include <string>
#include <vector>

namespace lumacap::harness {

/// A window as the program lists it; one of nothing stands for none.
struct ListedWindow {
    std::uint32_t number = 0;
    int layer = 0;
    int process = 0;
    QRectF frame; ///< points from the main screen's upper left
    std::string owner;
    std::string title;

    friend bool operator==(const ListedWindow &, const ListedWindow &) = default;
};

/// Prints it in a failed expectation.
std::ostream &operator<<(std::ostream &stream, const ListedWindow &window);

/// The program's list of windows, as it follows the desktop.
class ListedWindows {
public:
    /// Starts a process that lists; `words` say how.
    ListedWindows(TestDesktop &desktop, const QStringList &words);

    /// All lists so far, the newest last, each frontmost first.
    std::vector<std::vector<ListedWindow>> history() const;
    /// The newest list; empty before there is one.
    std::vector<ListedWindow> now() const;
    /// The newest list's titles; window managers have windows of their own, without one.
    std::vector<std::string> titles() const;
    /// The window with that title in the newest list.
    ListedWindow window(const std::string &title) const;

    const Process &process() const { return m_process; }

private:
    const Process &m_process;
};

} // namespace lumacap::harness
