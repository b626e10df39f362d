#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/wayland/SwayDesktop.h"

#include <QFile>

#include <gmock/gmock.h>

#include <algorithm>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// Takes connections, and reads nothing of what they say.
class SilentSocket {
public:
    explicit SilentSocket(const QString &path)
        : m_descriptor(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::ranges::copy(QFile::encodeName(path), std::begin(address.sun_path));
        m_listens =
            bind(m_descriptor, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0
            && listen(m_descriptor, 8) == 0;
    }
    ~SilentSocket() { close(m_descriptor); }
    Q_DISABLE_COPY_MOVE(SilentSocket)

    bool listens() const { return m_listens; }

private:
    int m_descriptor;
    bool m_listens = false;
};

TEST(SilentCompositor, aCaptureIntoAFileSaysThatItDoesNotAnswer)
{
    SwayDesktop desktop;
    const QString pictures = desktop.folder(u"pictures"_s);
    const QString socket = desktop.folder(u"silent"_s) + u"/wayland"_s;
    const SilentSocket nobody(socket);
    ASSERT_TRUE(nobody.listens());
    const QStringList capture =
        program({u"full-screen"_s, u"--output"_s, pictures + u"/capture.png"_s});
    const Answer answer = desktop.ask(
        QStringList{u"env"_s, u"-u"_s, u"DISPLAY"_s, u"WAYLAND_DISPLAY="_s + socket} + capture);
    EXPECT_EQ(answer.ending, (Ending{1, 0}));
    EXPECT_EQ(answer.errors, "lumacap: no picture was taken: the display does not answer\n");
    EXPECT_THAT(entriesOf(pictures), testing::IsEmpty());
}

} // namespace
} // namespace lumacap::harness
