// SPDX-License-Identifier: GPL-3.0-or-later

// Pictures with more pixels than fit into memory as they are: memory is bounded, not the picture.

#include "MessageLog.h"
#include "Stand.h"

#include "devices/PictureDevice.h"
#include "TestMain.h"

#include <QtTest>

#include <sys/resource.h>

namespace {

/// The most memory that this process has used so far.
qint64 peakKilobytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

QImage halves(const QSize& size, QImage::Format format)
{
    QImage image(size, format);
    if (format == QImage::Format_Mono) {
        image.setColorTable({qRgb(255, 255, 255), qRgb(0, 0, 0)});
    }
    image.fill(Qt::white);
    for (int y = 0; y < size.height() / 2; ++y) {
        memset(image.scanLine(y), format == QImage::Format_Mono ? 0xff : 0,
               size_t(image.bytesPerLine()));
    }
    return image;
}

} // namespace

class tst_PictureLarge : public QObject
{
    Q_OBJECT

private slots:
    void largePictureIsScaledDown_data();
    void largePictureIsScaledDown();

private:
    QString picture(const QString& name, const QImage& image)
    {
        const QString path = m_folder.filePath(name);
        return image.save(path) ? path : QString();
    }
    QString svg(const QString& name)
    {
        const QString path = m_folder.filePath(name);
        QFile out(path);
        out.open(QFile::WriteOnly);
        out.write("<svg xmlns='http://www.w3.org/2000/svg' width='40000' height='40000'>"
                  "<rect width='40000' height='40000' fill='white'/>"
                  "<rect width='40000' height='20000' fill='black'/></svg>");
        return path;
    }
    QTemporaryDir m_folder;
};

void tst_PictureLarge::largePictureIsScaledDown_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("drawing") << svg("drawing.svg");
    QTest::newRow("plan of one bit a pixel")
        << picture("plan.png", halves({8200, 8200}, QImage::Format_Mono));
    QTest::newRow("photograph") << picture("photo.jpg",
                                           halves({10000, 9000}, QImage::Format_Grayscale8));
}

void tst_PictureLarge::largePictureIsScaledDown()
{
    QFETCH(QString, path);
    QVERIFY(!path.isEmpty());
    MessageLog log;
    const qint64 before = peakKilobytes();
    Stand<PictureDevice> stand(
        {{"widget/filename", path}, {"widget/width", "100"}, {"widget/height", "80"}});
    const qint64 used = peakKilobytes() - before;
    QCOMPARE(log.take(), QStringList());
    const QImage shown = stand.only<QLabel>()->pixmap(Qt::ReturnByValue).toImage();
    QCOMPARE(shown.size(), QSize(100, 80));
    QCOMPARE(qGray(shown.pixel(50, 10)), 0);
    QCOMPARE(qGray(shown.pixel(50, 70)), 255);
    QVERIFY2(used < 310'000, qPrintable(QString("%1 kB").arg(used)));
}

NORVO_TEST(tst_PictureLarge)
#include "tst_PictureLarge.moc"
