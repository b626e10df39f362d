#include "SwayAgentFixture.h"

#include "harness/Captures.h"
#include "harness/Settings.h"
#include "harness/WaitFor.h"

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

/// Room for the pointer in the upper left corner of an output.
constexpr QRect corner{0, 0, 100, 100};

} // namespace

qsizetype differingOutside(const QRect &hidden, const QImage &expected, const QImage &seen)
{
    if (expected.size() != seen.size())
        return qsizetype{expected.width()} * expected.height();
    return differingPixels(expected, seen)
        - differingPixels(expected.copy(hidden), seen.copy(hidden));
}

void SwayAgentFixture::startDesktop(const SwayOptions &options)
{
    desktop = std::make_unique<SwayDesktop>(options);
    std::uint32_t seed = 0;
    for (const TestOutput &output : desktop->outputs()) {
        painted[output.name] = noisePicture(output.pixels, ++seed);
        desktop->paint(output.name, painted[output.name]);
    }
    desktop->input().moveTo(desktop->outputs().front().frame.topLeft() + QPoint(2, 2));
    writeSettings(
        *desktop,
        {{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, desktop->folder(u"pictures"_s)}});
}

void SwayAgentFixture::startAgent()
{
    agent = std::make_unique<Agent>(*desktop);
    agent->requireReady();
}

bool SwayAgentFixture::showsPlainly(const QString &output)
{
    return differingOutside(corner, painted[output], desktop->look(output)) == 0;
}

void SwayAgentFixture::openOverlay(const QString &output)
{
    ASSERT_TRUE(agent->activate(u"selection"_s));
    ASSERT_TRUE(waitFor([&] { return !showsPlainly(output); }));
}

QStringList SwayAgentFixture::files() const
{
    return capturesIn(desktop->folder(u"pictures"_s));
}

QImage SwayAgentFixture::savedPicture()
{
    if (!waitFor([this] { return files().size() == 1; }))
        return {};
    return pictureIn(*desktop, files().first());
}

} // namespace lumacap::harness
