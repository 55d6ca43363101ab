// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "host/services/disk/DiskSync.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

using norvo::DiskSync;

namespace {

constexpr int kPatience = 60000; ///< ms

} // namespace

/// What it does on the disk cannot be seen, but that it is done with a file can: it has closed it.
class tst_DiskSync : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_file.setFileName(m_folder.filePath("file"));
        QVERIFY(m_file.open(QIODevice::WriteOnly));
    }
    void cleanup() { m_file.close(); }
    void eachRequestIsDone();
    void requestsUntilThenAreOne();
    void endWaitsForWhatWasAskedFor();

private:
    /// Descriptors of the file in this process.
    int openCount() const
    {
        int count = 0;
        const QFileInfoList all = QDir("/proc/self/fd").entryInfoList(QDir::System | QDir::Files);
        for (const QFileInfo& one : all) {
            count += one.symLinkTarget() == m_file.fileName() ? 1 : 0;
        }
        return count;
    }

    QTemporaryDir m_folder;
    QFile m_file;
};

void tst_DiskSync::eachRequestIsDone()
{
    DiskSync sync;
    for (int i = 0; i < 2; ++i) {
        sync.request(m_file.handle());
        QTRY_COMPARE_WITH_TIMEOUT(openCount(), 1, kPatience);
    }
}

void tst_DiskSync::requestsUntilThenAreOne()
{
    DiskSync sync;
    for (int i = 0; i < 100; ++i) {
        sync.request(m_file.handle());
    }
    QVERIFY(openCount() < 100);
    QTRY_COMPARE_WITH_TIMEOUT(openCount(), 1, kPatience);
}

void tst_DiskSync::endWaitsForWhatWasAskedFor()
{
    auto sync = std::make_unique<DiskSync>();
    sync->request(m_file.handle());
    sync.reset();
    QCOMPARE(openCount(), 1);
}

NORVO_GUILESS_TEST(tst_DiskSync)
#include "tst_DiskSync.moc"
