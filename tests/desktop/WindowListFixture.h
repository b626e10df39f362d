#pragma once

#include "ListedWindows.h"
#include "harness/PlainWindow.h"
#include "harness/PrivateDesktop.h"
#include "harness/WaitFor.h"

#include <gmock/gmock.h>

#include <memory>

namespace lumacap::harness {

/// A desktop whose windows the program lists.
struct WindowListFixture : testing::Test {
    void start(const DesktopOptions &options)
    {
        desktop = std::make_unique<PrivateDesktop>(options);
        display = desktop->server().display();
    }

    /// From now on the expectations are about a list that follows the desktop.
    void follow()
    {
        list = std::make_unique<ListedWindows>(*desktop, QStringList{QStringLiteral("follow")});
    }

    PlainWindow &add(const char *title, const QRect &area,
                     Placement placement = Placement::ByManager)
    {
        windows.push_back(std::make_unique<PlainWindow>(display, area, placement));
        windows.back()->setTitle(title);
        return *windows.back();
    }
    PlainWindow &addShown(const char *title, const QRect &area,
                          Placement placement = Placement::ByManager)
    {
        PlainWindow &window = add(title, area, placement);
        window.show();
        return window;
    }

    void expectTitles(const std::vector<std::string> &titles) const
    {
        std::ignore = waitFor([&] { return list->titles() == titles; });
        EXPECT_EQ(list->titles(), titles);
    }
    void expectFrame(const char *title, const QRectF &frame) const
    {
        std::ignore = waitFor([&] { return list->window(title).frame == frame; });
        EXPECT_EQ(list->window(title).frame, frame) << list->window(title);
    }
    /// The listed window once its layer is one of those that `isExpected` allows.
    template <class Condition>
    void expectLayer(const char *title, Condition isExpected) const
    {
        EXPECT_TRUE(waitFor([&] {
            const ListedWindow window = list->window(title);
            return window.number != 0 && isExpected(window.layer);
        })) << list->window(title);
    }
    void expectOwner(const char *title, const std::string &owner) const
    {
        std::ignore = waitFor([&] { return list->window(title).owner == owner; });
        EXPECT_EQ(list->window(title).owner, owner);
    }

    std::unique_ptr<PrivateDesktop> desktop;
    QByteArray display;
    std::vector<std::unique_ptr<PlainWindow>> windows;
    std::unique_ptr<ListedWindows> list;
};

} // namespace lumacap::harness
