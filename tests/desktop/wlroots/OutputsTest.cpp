#include "SwayAgentFixture.h"
#include "harness/Captures.h"
#include "harness/WaitFor.h"

#include <QFile>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

struct OutputsTest : SwayAgentFixture { };

TEST_F(OutputsTest, theAgentFollowsThemWhateverTheyDo)
{
    startDesktop();
    startAgent();
    const auto capture = [this] {
        return agent->activate(u"full-screen"_s) && waitFor([this] { return files().size() == 1; })
            && QFile::remove(files().first());
    };
    for (const QString &change :
         {u"create_output"_s, u"output HEADLESS-2 position 0 900 scale 2"_s,
          u"output HEADLESS-1 scale 1.5"_s, u"output HEADLESS-1 transform 90"_s,
          u"output HEADLESS-1 resolution 1000x700"_s, u"create_output"_s, u"reload"_s}) {
        desktop->command(change);
        EXPECT_TRUE(capture()) << change.toStdString();
    }
    EXPECT_EQ(agent->process().ending(), std::nullopt);
    EXPECT_EQ(agent->process().errors(), QByteArray());
}

TEST_F(OutputsTest, anOverlayWhoseOutputIsTurnedGoes)
{
    startDesktop();
    startAgent();
    openOverlay();

    desktop->command(u"output HEADLESS-1 transform 180"_s);
    desktop->command(u"output HEADLESS-1 scale 2"_s);

    painted[u"HEADLESS-1"_s] = noisePicture(desktop->outputs().front().pixels, 9);
    desktop->paint(u"HEADLESS-1"_s, painted[u"HEADLESS-1"_s]);
    desktop->input().moveTo({2, 2});
    EXPECT_TRUE(waitFor([this] { return showsPlainly(); }));
    EXPECT_EQ(files(), QStringList());
}

} // namespace
} // namespace lumacap::harness
