#include "platform/wayland/clipboard/PipeWriter.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace lumacap::wayland {

namespace {

/// A reader that reads only when it is told to.
class Reader {
public:
    Reader()
    {
        std::array<int, 2> ends{-1, -1};
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("no pipe");
        m_descriptor = ends[0];
        writingEnd = ends[1];
        fcntl(m_descriptor, F_SETFL, O_NONBLOCK);
        std::signal(SIGPIPE, SIG_IGN); // as the program does
    }
    Q_DISABLE_COPY_MOVE(Reader)
    ~Reader() { leave(); }

    /// What is there, `most` bytes of it.
    QByteArray take(qsizetype most)
    {
        QByteArray bytes(most, Qt::Uninitialized);
        const ssize_t count = read(m_descriptor, bytes.data(), static_cast<std::size_t>(most));
        m_isAtTheEnd = count == 0;
        bytes.truncate(std::max<ssize_t>(count, 0));
        return bytes;
    }
    bool isAtTheEnd() const { return m_isAtTheEnd; }
    void leave()
    {
        if (m_descriptor >= 0)
            close(std::exchange(m_descriptor, -1));
    }

    int writingEnd = -1;

private:
    int m_descriptor = -1;
    bool m_isAtTheEnd = false;
};

QByteArray distinctBytes(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    std::uint32_t number = 1;
    for (char &byte : bytes) {
        number = number * 1664525 + 1013904223;
        byte = static_cast<char>(number >> 24);
    }
    return bytes;
}

/// Reads to the end, a bit a turn of the loop.
QByteArray readSlowly(Reader &reader, qsizetype aTurn)
{
    QByteArray all;
    const bool isDone = QTest::qWaitFor(
        [&] {
            all += reader.take(aTurn);
            return reader.isAtTheEnd();
        },
        20000);
    return isDone ? all : QByteArray();
}

} // namespace

TEST(PipeWriter, writesAllToAReaderThatIsSlow)
{
    Reader reader;
    const QByteArray bytes = distinctBytes(3'000'001);
    PipeWriter writer(reader.writingEnd, bytes);
    QSignalSpy ended(&writer, &PipeWriter::ended);

    writer.start();

    EXPECT_EQ(ended.count(), 0);
    EXPECT_EQ(readSlowly(reader, 100'000), bytes);
    EXPECT_EQ(ended.count(), 1);
}

TEST(PipeWriter, servesSeveralReadersAtOnce)
{
    Reader first;
    Reader second;
    const QByteArray bytes = distinctBytes(2'000'000);
    PipeWriter toFirst(first.writingEnd, bytes);
    PipeWriter toSecond(second.writingEnd, bytes);

    toFirst.start();
    toSecond.start();

    EXPECT_EQ(readSlowly(second, 500'000), bytes);
    EXPECT_EQ(readSlowly(first, 500'000), bytes);
}

TEST(PipeWriter, endsAtOnceWhenAllFits)
{
    Reader reader;
    PipeWriter writer(reader.writingEnd, "few");
    QSignalSpy ended(&writer, &PipeWriter::ended);

    writer.start();

    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(reader.take(10), "few");
    reader.take(10);
    EXPECT_TRUE(reader.isAtTheEnd());
}

TEST(PipeWriter, endsWhenTheReaderGoes)
{
    Reader reader;
    PipeWriter writer(reader.writingEnd, distinctBytes(3'000'000));
    QSignalSpy ended(&writer, &PipeWriter::ended);
    writer.start();

    reader.leave();

    EXPECT_TRUE(QTest::qWaitFor([&ended] { return ended.count() == 1; }, 20000));
}

TEST(PipeWriter, givesUpAReaderThatTakesNothing)
{
    Reader reader;
    PipeWriter writer(reader.writingEnd, distinctBytes(3'000'000), 50ms);
    QSignalSpy ended(&writer, &PipeWriter::ended);

    writer.start();

    EXPECT_TRUE(QTest::qWaitFor([&ended] { return ended.count() == 1; }, 20000));
    while (!reader.take(1'000'000).isEmpty()) { } // what was written before
    EXPECT_TRUE(reader.isAtTheEnd());
}

TEST(PipeWriter, leavesNoDescriptorOpenWhenItGoesEarly)
{
    Reader reader;
    {
        PipeWriter writer(reader.writingEnd, distinctBytes(3'000'000));
        writer.start();
    }

    while (!reader.take(1'000'000).isEmpty()) { }
    EXPECT_TRUE(reader.isAtTheEnd());
}

} // namespace lumacap::wayland
