// SPDX-License-Identifier: GPL-3.0-or-later

#include "MessageLog.h"
#include "Stand.h"

#include "devices/PictureDevice.h"
#include "widgets/PictureWidget.h"
#include "TestMain.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, 0);
    qToBigEndian(number, bytes.data());
    return bytes;
}

constexpr char kTrueColour[] = "\x08\x06\x00\x00\x00"; ///< 8 bits for each of four channels.
constexpr char kInterlaced[] = "\x08\x06\x00\x00\x01";
constexpr char kDeep[] = "\x10\x06\x00\x00\x00"; ///< 16 bits for each.

/// A PNG file that declares its size and ends with the first bytes of the picture.
QByteArray pngDeclaring(int width, int height, const char* form = kTrueColour)
{
    QByteArray header = "IHDR" + bigEndian(width) + bigEndian(height);
    header += QByteArray(form, 5);
    static const auto crc = [](const QByteArray& bytes) {
        quint32 value = 0xffffffffu;
        for (const char byte : bytes) {
            value ^= quint8(byte);
            for (int bit = 0; bit < 8; ++bit) {
                value = value & 1 ? 0xedb88320u ^ (value >> 1) : value >> 1;
            }
        }
        return ~value;
    };
    return "\x89PNG\r\n\x1a\n" + bigEndian(13) + header + bigEndian(crc(header)) + bigEndian(100) +
           "IDATx";
}

QString tooLarge(const QString& size, int megabytes)
{
    return QString("%1 pixels take %2 MB, a picture may take 300").arg(size).arg(megabytes);
}

} // namespace

class tst_PictureRefusals : public QObject
{
    Q_OBJECT

private slots:
    void unreadableFileIsReported_data();
    void unreadableFileIsReported();
    void warningsOfQtComeOnce();
    void onlyRegularFilesAreOpened_data();
    void onlyRegularFilesAreOpened();
    void hugeDeclaredSizeIsRefused_data();
    void hugeDeclaredSizeIsRefused();
    void hugePngIsScaledOnlyWhereItIsReadRowByRow();
    void sizeAtTheLimitIsRead();
    void hugeTargetSizeIsRefused_data();
    void hugeTargetSizeIsRefused();

private:
    QString file(const QString& name, const QByteArray& content)
    {
        const QString path = m_folder.filePath(name);
        QFile out(path);
        return out.open(QFile::WriteOnly) && out.write(content) == content.size() ? path : "";
    }
    QTemporaryDir m_folder;
};

void tst_PictureRefusals::unreadableFileIsReported_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("empty name") << "";
    QTest::newRow("missing") << m_folder.filePath("missing.png");
    QTest::newRow("name with placeholders") << m_folder.filePath("%2 %1.png");
    QTest::newRow("directory") << m_folder.path();
    QTest::newRow("empty file") << file("empty.png", "");
    QTest::newRow("text") << file("text.png", "no picture");
    QTest::newRow("broken png") << file("broken.png", pngDeclaring(10, 10));
    QTest::newRow("broken svg") << file("broken.svg", "<svg width='10'");
}

void tst_PictureRefusals::unreadableFileIsReported()
{
    QFETCH(QString, path);
    QImageReader reader(path);
    QVERIFY(reader.read().isNull());
    QVERIFY(!reader.errorString().isEmpty());

    MessageLog log;
    Stand<PictureDevice> stand({{"widget/filename", path}});
    QStringList logged = log.take();
    logged = logged.filter(QRegularExpression("^critical: ")); // Qt may warn of its own accord
    QCOMPARE(logged, QStringList("critical: PictureWidget: Cannot load " + path + ": " +
                                 reader.errorString()));
    QVERIFY(stand.widget->findChildren<QWidget*>().isEmpty());
    QVERIFY(!stand.widget->isInitialised());
}

void tst_PictureRefusals::warningsOfQtComeOnce()
{
    MessageLog log;
    QImageReader(QString()).read();
    const QStringList expected = log.take();
    QVERIFY(!expected.isEmpty());
    Stand<PictureDevice> stand;
    QStringList logged = log.take();
    QVERIFY(logged.last().startsWith("critical: PictureWidget: "));
    logged.removeLast();
    QCOMPARE(logged, expected);
}

void tst_PictureRefusals::onlyRegularFilesAreOpened_data()
{
    QTest::addColumn<QString>("path");
    const QString fifo = m_folder.filePath("fifo.png");
    QVERIFY(mkfifo(fifo.toLocal8Bit(), 0600) == 0);
    const QString link = m_folder.filePath("link.png");
    QVERIFY(QFile::link(fifo, link));
    QTest::newRow("FIFO") << fifo;
    QTest::newRow("link to a FIFO") << link;
    QTest::newRow("device") << "/dev/zero";
}

void tst_PictureRefusals::onlyRegularFilesAreOpened()
{
    QFETCH(QString, path);
    // A writer that waits to be read from would be let go by whoever opens the FIFO.
    const int fd = ::open(path.toLocal8Bit(), O_RDWR | O_NONBLOCK);
    MessageLog log;
    Stand<PictureDevice> stand({{"widget/filename", path}});
    ::close(fd);
    QCOMPARE(log.take(), QStringList("critical: PictureWidget: Cannot load " + path +
                                     ": it is not a regular file"));
    QVERIFY(stand.widget->findChildren<QWidget*>().isEmpty());
}

void tst_PictureRefusals::hugeDeclaredSizeIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("size");
    QTest::addColumn<int>("megabytes");
    QTest::newRow("png") << file("huge.png", pngDeclaring(30000, 30000)) << "30000 x 30000" << 3600;
    QTest::newRow("product beyond int")
        << file("product.png", pngDeclaring(70000, 70000)) << "70000 x 70000" << 19600;
    QTest::newRow("bitmap") << file("huge.pbm", "P1 30000 30000\n") << "30000 x 30000" << 3600;
    QTest::newRow("svg") << file("huge.svg", "<svg xmlns='http://www.w3.org/2000/svg' "
                                             "width='30000' height='30000'/>")
                         << "30000 x 30000" << 3600;
}

void tst_PictureRefusals::hugeDeclaredSizeIsRefused()
{
    QFETCH(QString, path);
    QFETCH(QString, size);
    QFETCH(int, megabytes);
    MessageLog log;
    Stand<PictureDevice> stand({{"widget/filename", path}});
    QCOMPARE(log.take(), QStringList("critical: PictureWidget: Cannot load " + path + ": " +
                                     tooLarge(size, megabytes)));
    QVERIFY(stand.widget->findChildren<QWidget*>().isEmpty());
}

void tst_PictureRefusals::hugePngIsScaledOnlyWhereItIsReadRowByRow()
{
    const auto errorFor = [this](const QByteArray& content) {
        const QString path = file("huge.png", content);
        MessageLog log;
        const Stand<PictureDevice> stand(
            {{"widget/filename", path}, {"widget/width", "20"}, {"widget/height", "20"}});
        return log.take().last();
    };
    const QString refusal = "pixels take";
    QVERIFY(!errorFor(pngDeclaring(20000, 20000)).contains(refusal)); // it is read, and broken
    QVERIFY(errorFor(pngDeclaring(20000, 20000, kInterlaced)).contains(refusal));
    QVERIFY(errorFor(pngDeclaring(20000, 20000, kDeep)).contains(refusal));
}

void tst_PictureRefusals::sizeAtTheLimitIsRead()
{
    MessageLog log;
    const Stand<PictureDevice> atIt(
        {{"widget/filename", file("at.png", pngDeclaring(10000, 7500))}}); // 300 MB
    QVERIFY(!log.take().last().contains("pixels take"));
    const Stand<PictureDevice> beyond(
        {{"widget/filename", file("beyond.png", pngDeclaring(10000, 7501))}});
    QVERIFY(log.take().last().contains("pixels take"));
}

void tst_PictureRefusals::hugeTargetSizeIsRefused_data()
{
    QTest::addColumn<QString>("width");
    QTest::addColumn<QString>("height");
    QTest::addColumn<QString>("size");
    QTest::newRow("30000 each") << "30000"
                                << "30000"
                                << "30000 x 30000 pixels take 3600 MB";
    QTest::newRow("beyond int") << "1e10"
                                << "1"
                                << "2147483647 x 1 pixels take 8590 MB";
    QTest::newRow("infinite") << "inf"
                              << "1e300"
                              << "2147483647 x 2147483647 pixels take 18446744056530 MB";
}

void tst_PictureRefusals::hugeTargetSizeIsRefused()
{
    QFETCH(QString, width);
    QFETCH(QString, height);
    QFETCH(QString, size);
    const QString path = m_folder.filePath("target.png");
    QVERIFY(QImage(20, 10, QImage::Format_RGB32).save(path));
    MessageLog log;
    Stand<PictureDevice> stand(
        {{"widget/filename", path}, {"widget/width", width}, {"widget/height", height}});
    QCOMPARE(log.take(), QStringList("critical: PictureWidget: Cannot load " + path + ": " + size +
                                     ", a picture may take 300"));
    QVERIFY(stand.widget->findChildren<QWidget*>().isEmpty());
}

NORVO_TEST(tst_PictureRefusals)
#include "tst_PictureRefusals.moc"
