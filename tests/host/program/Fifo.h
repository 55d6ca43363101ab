// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <vector>

/// A named pipe whose reader reads only when it is told to.
class Fifo
{
public:
    Fifo()
    {
        if (mkfifo(qPrintable(path()), 0600) != 0 ||
            (m_reader = open(qPrintable(path()), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) < 0) {
            qFatal("there is no pipe");
        }
        fcntl(m_reader, F_SETPIPE_SZ, 4096); // So that it is full soon.
    }
    ~Fifo() { closeReader(); }
    Q_DISABLE_COPY(Fifo)

    QString path() const { return m_folder.filePath("pipe"); }

    void closeReader()
    {
        close(m_reader);
        m_reader = -1;
    }

    /// What is in the pipe, at most so many bytes; waits up to a second for the first.
    QByteArray read(int most)
    {
        pollfd waiting{m_reader, POLLIN, 0};
        poll(&waiting, 1, 1000);
        std::vector<char> bytes(static_cast<size_t>(most));
        const ssize_t count = ::read(m_reader, bytes.data(), bytes.size());
        return QByteArray(bytes.data(), int(qMax<ssize_t>(0, count)));
    }

    /// Everything up to the end of the last writer.
    QByteArray readToEnd()
    {
        QByteArray all;
        for (QByteArray part = read(65536); !part.isEmpty(); part = read(65536)) {
            all += part;
        }
        return all;
    }

private:
    QTemporaryDir m_folder;
    int m_reader = -1;
};
