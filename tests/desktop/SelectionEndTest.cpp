#include "SelectionFixture.h"
#include "harness/PopUps.h"
#include "harness/WaitFor.h"

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// How a selection ends.
struct SelectionEndTest : SelectionFixture { };

TEST_F(SelectionEndTest, theOverlayGoesBeforeThePictureIsSaved)
{
    // Big enough that to write it takes many times as long as to look whether the overlay is up.
    start({.server = {.size = {3840, 2160}}});
    const XConnection connection(desktop->server().display());
    const auto withoutOverlay = popUps(connection);
    openOverlay();
    ASSERT_NE(popUps(connection), withoutOverlay);

    press(u"Return"_s);

    // First goes the picture to the clipboard, then into the file.
    ASSERT_TRUE(waitFor([&] { return connection.selectionOwner("CLIPBOARD") != 0; }));
    EXPECT_EQ(popUps(connection), withoutOverlay);
    EXPECT_EQ(savedPicture().size(), QSize(3840, 2160));
}

} // namespace
} // namespace lumacap::harness
