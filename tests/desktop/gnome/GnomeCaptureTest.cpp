// Pictures of a real GNOME Shell, through a real PipeWire.
#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Input.h"
#include "harness/Pictures.h"
#include "harness/Settings.h"
#include "harness/WaitFor.h"
#include "harness/wayland/GnomeDesktop.h"

#include <QDir>

#include <csignal>

#include <gmock/gmock.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

/// A person at a GNOME desktop, whose monitors show noise.
class GnomeCapture : public testing::Test {
protected:
    void beginEmpty(const GnomeOptions &options = {})
    {
        m_desktop = std::make_unique<GnomeDesktop>(options);
    }
    void begin(const GnomeOptions &options = {})
    {
        beginEmpty(options);
        for (const TestOutput &output : m_desktop->outputs()) {
            m_pictures.push_back(noisePicture(output.pixels));
            m_desktop->paint(output.name, m_pictures.back());
        }
    }

    GnomeDesktop &desktop() { return *m_desktop; }
    const QImage &painted(std::size_t index = 0) const { return m_pictures.at(index); }

    /// What the command line's capture answers.
    Answer capture(const QString &file)
    {
        return m_desktop->ask(program({u"full-screen"_s, u"--output"_s, file}));
    }
    /// The picture of the first monitor; null when none was taken.
    QImage picture()
    {
        const QString file = m_desktop->folder(u"pictures"_s) + u"/taken.png"_s;
        const Answer answer = capture(file);
        EXPECT_EQ(answer.ending, Ending{}) << answer.errors.toStdString();
        return pictureIn(*m_desktop, file);
    }

private:
    std::unique_ptr<GnomeDesktop> m_desktop;
    std::vector<QImage> m_pictures;
};

int openFiles(pid_t process)
{
    return static_cast<int>(QDir(u"/proc/%1/fd"_s.arg(process)).count());
}

int threads(pid_t process)
{
    return static_cast<int>(QDir(u"/proc/%1/task"_s.arg(process)).count());
}

} // namespace

TEST_F(GnomeCapture, isWhatTheMonitorShows)
{
    begin();
    desktop().checkCallers();

    EXPECT_EQ(differingPixels(painted(), picture()), 0);
}

TEST_F(GnomeCapture, holdsThePointer)
{
    beginEmpty(); // the shell's own background, which has a pointer of its own
    const QRect around(400, 300, 100, 100);
    const auto seen = [&] { return desktop().look(u"Meta-0"_s).copy(around); };
    desktop().input().moveTo(around.center());
    QImage with;
    QImage taken;
    ASSERT_TRUE(waitFor([&] { // the shell loads its background in its own time
        with = seen();
        taken = picture().copy(around);
        return differingPixels(with, seen()) == 0;
    }));

    EXPECT_EQ(differingPixels(with, taken), 0);
    desktop().input().moveTo(around.topLeft() - QPoint(200, 200));
    EXPECT_TRUE(waitFor([&] { return differingPixels(with, seen()) > 0; })) << "not the pointer";
}

TEST_F(GnomeCapture, isOfThePrimaryMonitorAlone)
{
    begin({.monitors = {{1000, 700}, {800, 600}}});

    EXPECT_EQ(differingPixels(painted(), picture()), 0);
}

TEST_F(GnomeCapture, isTheSameAHundredTimesAndLeavesNothingOpen)
{
    begin();
    writeSettings(desktop(),
                  {{u"saveToFile"_s, u"true"_s},
                   {u"copyToClipboard"_s, u"false"_s},
                   {u"saveDirectory"_s, desktop().folder(u"pictures"_s)}});
    Agent agent(desktop());
    agent.requireReady();
    const auto takeOne = [&] {
        ASSERT_TRUE(agent.activate(u"full-screen"_s));
        ASSERT_TRUE(
            waitFor([&] { return !capturesIn(desktop().folder(u"pictures"_s)).isEmpty(); }));
        const QString file = capturesIn(desktop().folder(u"pictures"_s)).first();
        EXPECT_EQ(differingPixels(painted(), pictureIn(desktop(), file)), 0);
        QFile::remove(file);
    };
    for (int times = 0; times < 3; ++times)
        takeOne();
    const pid_t process = agent.process().pid();
    const int filesBefore = openFiles(process);
    const int threadsBefore = threads(process);

    for (int times = 0; times < 100 && !HasFailure(); ++times)
        takeOne();

    EXPECT_TRUE(waitFor([&] { return openFiles(process) <= filesBefore; }));
    EXPECT_TRUE(waitFor([&] { return threads(process) <= threadsBefore; }));
}

TEST_F(GnomeCapture, forASelectionIsOfTheMonitorUnderThePointer)
{
    beginEmpty({.monitors = {{1000, 700}, {800, 600}}});
    const QString folder = desktop().folder(u"pictures"_s);
    writeSettings(desktop(), {{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, folder}});
    Agent agent(desktop());
    agent.requireReady();
    const auto sizeOfWhatIsSavedAt = [&](QPoint place) {
        for (const QString &file : capturesIn(folder))
            QFile::remove(file);
        desktop().input().moveTo(place);
        EXPECT_TRUE(agent.activate(u"selection"_s));
        EXPECT_TRUE(waitFor([&] {
            desktop().input().press({evdev::enter}); // the whole monitor, once it is frozen
            return waitFor([&] { return !capturesIn(folder).isEmpty(); }, std::chrono::seconds(1));
        }));
        const QStringList files = capturesIn(folder);
        return files.isEmpty() ? QSize() : pictureIn(desktop(), files.first()).size();
    };

    EXPECT_EQ(sizeOfWhatIsSavedAt({1000 + 400, 300}), QSize(800, 600));
    EXPECT_EQ(sizeOfWhatIsSavedAt({500, 300}), QSize(1000, 700));
}

TEST_F(GnomeCapture, failsInOneLineWherePipeWireIsGone)
{
    begin();
    desktop().pipeWire().terminate();
    const QString file = desktop().folder(u"pictures"_s) + u"/none.png"_s;

    const Answer answer = capture(file);

    EXPECT_EQ(answer.ending, (Ending{1, 0}));
    EXPECT_EQ(answer.errors.count('\n'), 1) << answer.errors.toStdString();
    EXPECT_THAT(entriesOf(desktop().folder(u"pictures"_s)), testing::IsEmpty());
}

TEST_F(GnomeCapture, failsWherePipeWireHangs)
{
    begin();
    desktop().pipeWire().send(SIGSTOP);
    const QString file = desktop().folder(u"pictures"_s) + u"/none.png"_s;

    const Answer answer = capture(file);
    desktop().pipeWire().send(SIGCONT);

    EXPECT_EQ(answer.ending, (Ending{1, 0}));
    EXPECT_THAT(answer.errors.toStdString(), testing::HasSubstr("no picture was taken"));
    EXPECT_THAT(entriesOf(desktop().folder(u"pictures"_s)), testing::IsEmpty());
    EXPECT_EQ(differingPixels(painted(), picture()), 0); // as soon as it goes on
}

TEST_F(GnomeCapture, endsWithTheShell)
{
    begin();
    Agent agent(desktop());
    agent.requireReady();

    desktop().end();

    EXPECT_EQ(agent.process().waitForEnd(std::chrono::seconds(10)), Ending{})
        << agent.process().errors().toStdString();
}

} // namespace lumacap::harness
