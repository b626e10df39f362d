#include "platform/freedesktop/CanberraSoundPlayer.h"

#include "Environment.h"
#include "Waiting.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <cstdlib>
#include <optional>
#include <thread>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using lumacap::freedesktop::CanberraSoundPlayer;
using lumacap::tests::EnvironmentVariable;
using lumacap::tests::waitUntil;

namespace {

/// A sound server that takes connections and never says a word.
class SilentServer {
public:
    explicit SilentServer(const QByteArray &path)
        : m_socket{socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)}
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        path.toStdString().copy(address.sun_path, sizeof address.sun_path - 1);
        m_listens =
            bind(m_socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0
            && listen(m_socket, 16) == 0;
    }
    Q_DISABLE_COPY_MOVE(SilentServer)
    ~SilentServer() { close(m_socket); }

    bool listens() const { return m_listens; }

private:
    int m_socket;
    bool m_listens = false;
};

/// In milliseconds. Who waits for a server that hangs waits the thirty seconds after which the
/// library gives up; anything far below that is a busy machine.
constexpr qint64 heldUp = 20'000;

qsizetype entriesOf(const QString &folder)
{
    return QDir{folder}.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

qsizetype threads()
{
    return entriesOf(u"/proc/self/task"_s);
}

qsizetype descriptors()
{
    return entriesOf(u"/proc/self/fd"_s);
}

/// A machine whose only sound server, if any, is the one a test puts at `socket`.
class CanberraSoundPlayerTest : public testing::Test {
protected:
    void SetUp() override
    {
        // The thread sanitizer adds one thread of its own when the first thread starts. A joined
        // thread is still listed for a moment and must not be counted as one at rest.
        QString first;
        std::thread([&first] { first = u"/proc/self/task/%1"_s.arg(gettid()); }).join();
        ASSERT_TRUE(waitUntil([&first] { return !QFileInfo::exists(first); }));
    }

    QByteArray socketPath() const { return QFile::encodeName(m_home.filePath(u"native"_s)); }

    QTemporaryDir m_home;
    EnvironmentVariable m_server{"PULSE_SERVER", "unix:" + socketPath()};
    EnvironmentVariable m_driver{"CANBERRA_DRIVER", "pulse"};
    EnvironmentVariable m_user{"HOME", QFile::encodeName(m_home.path())};
    EnvironmentVariable m_settings{"XDG_CONFIG_HOME", QFile::encodeName(m_home.path())};
    EnvironmentVariable m_runtime{"XDG_RUNTIME_DIR", QFile::encodeName(m_home.path())};
    CanberraSoundPlayer m_player{m_home.filePath(u"own.wav"_s)};
};

TEST_F(CanberraSoundPlayerTest, aMissingServerHoldsNobodyUpAndNothingStays)
{
    const auto threadsAtRest = threads();
    const auto descriptorsAtRest = descriptors();
    for (int sound = 0; sound < 3; ++sound) {
        QElapsedTimer clock;
        clock.start();
        m_player.play();
        EXPECT_LT(clock.elapsed(), heldUp);
        EXPECT_TRUE(waitUntil([&] { return threads() == threadsAtRest; }));
    }
    EXPECT_TRUE(waitUntil([&] { return descriptors() == descriptorsAtRest; }));
}

TEST_F(CanberraSoundPlayerTest, aHangingServerHoldsUpOneThreadHoweverManySounds)
{
    const auto threadsAtRest = threads();
    std::optional<SilentServer> server(socketPath());
    ASSERT_TRUE(server->listens());
    m_player.play();
    ASSERT_TRUE(waitUntil([&] { return threads() > threadsAtRest + 1; })); // ours and the library's
    const auto threadsOfOneSound = threads();
    QElapsedTimer clock;
    clock.start();
    for (int sound = 0; sound < 50; ++sound)
        m_player.play();
    EXPECT_LT(clock.elapsed(), heldUp);
    waitUntil([&] { return threads() > threadsOfOneSound; }, std::chrono::milliseconds{300});
    EXPECT_EQ(threads(), threadsOfOneSound);
    server.reset(); // which ends the connections nobody accepted
    EXPECT_TRUE(waitUntil([&] { return threads() == threadsAtRest; }));
}

TEST_F(CanberraSoundPlayerTest, aPlayerGoesWhileItsServerHangs)
{
    const auto threadsAtRest = threads();
    std::optional<SilentServer> server(socketPath());
    ASSERT_TRUE(server->listens());
    std::optional<CanberraSoundPlayer> player(m_home.filePath(u"own.wav"_s));
    player->play();
    ASSERT_TRUE(waitUntil([&] { return threads() > threadsAtRest + 1; }));
    QElapsedTimer clock;
    clock.start();
    player.reset();
    EXPECT_LT(clock.elapsed(), heldUp);
    server.reset();
    EXPECT_TRUE(waitUntil([&] { return threads() == threadsAtRest; }));
}

/// Plays into a server that hangs and leaves main; the code tells what went wrong before.
[[noreturn]] void exitWhileStuck(CanberraSoundPlayer &player, const QString &home)
{
    const auto threadsAtRest = threads();
    player.play();
    const bool isStuck = waitUntil([&] { return threads() > threadsAtRest + 1; });
    QDir{home}.removeRecursively(); // leaving main this way destroys no local object
    if (!isStuck)
        std::exit(3); // NOLINT(concurrency-mt-unsafe): that is the question
    std::exit(0); // NOLINT(concurrency-mt-unsafe)
}

TEST_F(CanberraSoundPlayerTest, theProgramEndsWhileItsServerHangs)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const SilentServer server(socketPath());
    ASSERT_TRUE(server.listens());
    QElapsedTimer clock;
    clock.start();
    EXPECT_EXIT(exitWhileStuck(m_player, m_home.path()), testing::ExitedWithCode(0), "^$");
    EXPECT_LT(clock.elapsed(), heldUp);
}

} // namespace
