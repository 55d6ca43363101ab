// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/sources/process/LinePump.h"
#include "TestMain.h"

#include <QtTest>

#include <array>
#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

using norvo::FileDescriptor;
using norvo::LinePump;

namespace {

constexpr int kPatience = 60000; ///< ms
constexpr norvo::LineQueue::Limits kRoomy{1000, 1000, 100000};

/// A pump that notes its lines, with this end of the pipe in the place of the program.
struct Pipe
{
    Pipe()
    {
        std::array<int, 2> ends{-1, -1};
        QCOMPARE(::pipe2(ends.data(), O_CLOEXEC), 0);
        writeEnd = FileDescriptor(ends[1]);
        pump = std::make_unique<LinePump>(FileDescriptor(ends[0]), kRoomy, nullptr);
        QObject::connect(pump.get(), &LinePump::line,
                         [this](const QByteArray& line) { notes << line; });
        QObject::connect(pump.get(), &LinePump::drained, [this] { notes << "drained"; });
    }

    void write(const QByteArray& text) const
    {
        QCOMPARE(::write(writeEnd.get(), text.constData(), size_t(text.size())),
                 ssize_t(text.size()));
    }

    FileDescriptor writeEnd;
    std::unique_ptr<LinePump> pump;
    QByteArrayList notes;
};

} // namespace

class tst_LinePump : public QObject
{
    Q_OBJECT

private slots:
    void emptyPipeIsNoEnd();
    void closedPipeEndsTheLastLine();
    void drainedComesAfterTheLastLine();
    void discardedLinesDoNotCome();
};

void tst_LinePump::emptyPipeIsNoEnd()
{
    Pipe pipe;
    pipe.pump->discard(); // Finds nothing.
    pipe.write("a\nb");
    QTRY_COMPARE_WITH_TIMEOUT(pipe.notes, QByteArrayList{"a"}, kPatience);
    pipe.pump->queue().finish();
    pipe.write("c\n");
    QTRY_COMPARE_WITH_TIMEOUT(pipe.notes, QByteArrayList({"a", "b", "c"}), kPatience);
}

void tst_LinePump::closedPipeEndsTheLastLine()
{
    Pipe pipe;
    pipe.write("a\nb");
    pipe.writeEnd.close();
    errno = EAGAIN; // Of a read before; the end of a stream sets none.
    QTRY_COMPARE_WITH_TIMEOUT(pipe.notes, QByteArrayList({"a", "b"}), kPatience);
}

void tst_LinePump::drainedComesAfterTheLastLine()
{
    Pipe pipe;
    pipe.write("a\nb");
    pipe.pump->finish();
    QCOMPARE(pipe.notes, QByteArrayList());
    QTRY_COMPARE_WITH_TIMEOUT(pipe.notes, QByteArrayList({"a", "b", "drained"}), kPatience);
}

void tst_LinePump::discardedLinesDoNotCome()
{
    Pipe pipe;
    pipe.write("old\n");
    pipe.pump->discard();
    pipe.write("new\n");
    QTRY_COMPARE_WITH_TIMEOUT(pipe.notes, QByteArrayList{"new"}, kPatience);
}

NORVO_GUILESS_TEST(tst_LinePump)
#include "tst_LinePump.moc"
