#include "ListedWindows.h"

#include "harness/TestedBuild.h"

#include <algorithm>
#include <ostream>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

constexpr auto noTitle = "(no title)";

ListedWindow read(const QByteArray &line)
{
    const QList<QByteArray> fields = line.split('\t');
    return {.number = fields.value(0).toUInt(),
            .layer = fields.value(1).toInt(),
            .process = fields.value(2).toInt(),
            .frame = {fields.value(3).toDouble(), fields.value(4).toDouble(),
                      fields.value(5).toDouble(), fields.value(6).toDouble()},
            .owner = fields.value(7).toStdString(),
            .title = fields.value(8).toStdString()};
}

} // namespace

std::ostream &operator<<(std::ostream &stream, const ListedWindow &window)
{
    const QRectF &frame = window.frame;
    return stream << '"' << window.title << "\" of " << window.owner << " (" << window.process
                  << ") on layer " << window.layer << ", " << frame.width() << " x "
                  << frame.height() << " at " << frame.x() << ", " << frame.y();
}

ListedWindows::ListedWindows(TestDesktop &desktop, const QStringList &words)
    : m_process(desktop.start(u"window-list"_s,
                              QStringList{testedProgram(QStringLiteral(LUMACAP_WINDOW_LIST_PROBE))}
                                  + words))
{
}

std::vector<std::vector<ListedWindow>> ListedWindows::history() const
{
    std::vector<std::vector<ListedWindow>> lists;
    std::vector<ListedWindow> list;
    for (const QByteArray &line : m_process.output().split('\n')) {
        if (line.contains('\t'))
            list.push_back(read(line));
        else if (line == "end")
            lists.push_back(std::exchange(list, {}));
    }
    return lists;
}

std::vector<ListedWindow> ListedWindows::now() const
{
    const auto lists = history();
    return lists.empty() ? std::vector<ListedWindow>() : lists.back();
}

std::vector<std::string> ListedWindows::titles() const
{
    std::vector<std::string> titles;
    for (const ListedWindow &window : now()) {
        if (window.title != noTitle)
            titles.push_back(window.title);
    }
    return titles;
}

ListedWindow ListedWindows::window(const std::string &title) const
{
    const auto list = now();
    const auto found = std::ranges::find(list, title, &ListedWindow::title);
    return found == list.end() ? ListedWindow() : *found;
}

} // namespace lumacap::harness
