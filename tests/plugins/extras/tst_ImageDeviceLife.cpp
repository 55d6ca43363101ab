// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/ImageDevice.h"
#include "EventCounter.h"
#include "MessageLog.h"
#include "Recorder.h"
#include "Stand.h"
#include "TestMain.h"

#include <QElapsedTimer>

#include <cstdio>

/// Pictures over time: at starts and stops, when they grow stale, and how they come onto the
/// screen.
class tst_ImageDeviceLife : public QObject
{
    Q_OBJECT

private slots:
    void badNumberIsAnError();
    void noNumberAsStaleTimeIsNone();
    void shownIsSaidAtTheChangesOnly();
    void everyPictureBeginsTheStaleTimeAgain();
    void staleIsOverWithTheNextPicture();
    void stopEndsFollowingAndTheStaleTime();
    void stopDropsThePictureThatWaits();
    void newStartSaysThatNothingIsShown();
    void fileIsTakenOnlyWhileRunning();
    void emptyFileNameEndsTheFollowing();
    void replacedFileIsWatchedOn();
    void fileIsGivenTimeAfterAFailureToo();
    void zerosBehindAJpegAreItsEnd();
    void hugeJpegIsScaled();
    void pictureOfItsOwnSizeIsCutAtTheEdges();
    void widgetIsPaintedWhenThePictureChanges();
    void widgetAsksForItsRoom();

private:
    static QByteArray encoded(const QImage& image, const char* format = "png")
    {
        QByteArray data;
        QBuffer buffer(&data);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, format);
        return data;
    }
    static QImage filled(Qt::GlobalColor colour, const QSize& size = {40, 20})
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        return image;
    }
    static void write(const QString& name, const QByteArray& data)
    {
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(data), qint64(data.size()));
    }
    static QColor shownBy(const ImageDevice& device)
    {
        const QImage& image = device.feed().image();
        return image.isNull() ? QColor() : image.pixelColor(1, 1);
    }
};

void tst_ImageDeviceLife::badNumberIsAnError()
{
    ImageDevice device;
    device.setParam("stale", "often");
    MessageLog log;
    QVERIFY(!device.initialise());
    QVERIFY(log.take().first().contains("stale"));
}

void tst_ImageDeviceLife::noNumberAsStaleTimeIsNone()
{
    Stand<ImageDevice> stand({{"stale", "nan"}});
    QVERIFY(stand.device.isRunning());
    stand.device.input(filled(Qt::red));
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::red));
    QTest::qWait(100);
    QVERIFY(!stand.device.isStale());
}

void tst_ImageDeviceLife::shownIsSaidAtTheChangesOnly()
{
    Stand<ImageDevice> stand;
    Recorder recorder(&stand.device);
    stand.device.postInitialisation();
    QCOMPARE(recorder.take(), QStringList("shown(false)"));
    for (const Qt::GlobalColor colour : {Qt::red, Qt::green, Qt::blue}) {
        stand.device.input(filled(colour));
        QTRY_COMPARE(shownBy(stand.device), QColor(colour));
    }
    QCOMPARE(recorder.take(), QStringList("shown(true)"));
}

void tst_ImageDeviceLife::everyPictureBeginsTheStaleTimeAgain()
{
    Stand<ImageDevice> stand({{"stale", "1.5"}});
    QSignalSpy shown(&stand.device, &ImageDevice::shown);
    stand.device.input(filled(Qt::red));
    QTRY_COMPARE(shown.count(), 1);
    QTest::qWait(700);
    QElapsedTimer sinceTheSecond;
    sinceTheSecond.start();
    stand.device.input(filled(Qt::green));
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::green));
    QTRY_VERIFY(stand.device.isStale());
    QVERIFY2(sinceTheSecond.elapsed() >= 1400, "the half second of 1.5 counts as well");
}

void tst_ImageDeviceLife::staleIsOverWithTheNextPicture()
{
    Stand<ImageDevice> stand({{"stale", "0.1"}});
    stand.widget->resize(200, 200);
    stand.device.input(filled(Qt::red, {200, 200}));
    QTRY_VERIFY(stand.device.isStale());
    QVERIFY(stand.widget->grab().toImage().pixelColor(5, 5) != QColor(Qt::red));
    QStringList atTheNext;
    connect(&stand.device, &ImageDevice::shown, this, [&](bool on) {
        if (on) {
            atTheNext << stand.widget->grab().toImage().pixelColor(5, 5).name();
        }
    });
    stand.device.input(filled(Qt::blue, {200, 200}));
    QTRY_VERIFY(!atTheNext.isEmpty());
    QCOMPARE(atTheNext.first(), QString("#0000ff")); // without a veil
}

void tst_ImageDeviceLife::stopEndsFollowingAndTheStaleTime()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("camera.png");
    write(name, encoded(filled(Qt::red)));
    Stand<ImageDevice> stand({{"file", name}, {"stale", "0.2"}});
    stand.device.postInitialisation();
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::red));
    stand.device.preShutdown();
    Recorder recorder(&stand.device);
    write(name, encoded(filled(Qt::blue)));
    QTest::qWait(500);
    QCOMPARE(recorder.take(), QStringList());
    QCOMPARE(shownBy(stand.device), QColor(Qt::red));
}

void tst_ImageDeviceLife::stopDropsThePictureThatWaits()
{
    Stand<ImageDevice> stand;
    stand.device.input(filled(Qt::red));
    stand.device.preShutdown();
    QTest::qWait(50);
    QVERIFY(stand.device.feed().image().isNull());
}

void tst_ImageDeviceLife::newStartSaysThatNothingIsShown()
{
    Stand<ImageDevice> stand;
    stand.widget->resize(200, 200);
    stand.device.postInitialisation();
    stand.device.input(filled(Qt::red, {200, 200}));
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::red));
    stand.device.preShutdown();
    stand.device.setRunning(stand.device.initialise());
    Recorder recorder(&stand.device);
    stand.device.postInitialisation();
    QCOMPARE(recorder.take(), QStringList("shown(false)"));
    // The picture is still there, and veiled: it is from before the start.
    QVERIFY(stand.widget->grab().toImage().pixelColor(5, 5) != QColor(Qt::red));
    stand.device.input(filled(Qt::blue, {200, 200}));
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::blue));
    QCOMPARE(recorder.take(), QStringList("shown(true)"));
    QCOMPARE(stand.widget->grab().toImage().pixelColor(5, 5), QColor(Qt::blue));
}

void tst_ImageDeviceLife::fileIsTakenOnlyWhileRunning()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("camera.png");
    write(name, encoded(filled(Qt::red)));
    Stand<ImageDevice> stand;
    stand.device.setRunning(false);
    stand.device.file(name);
    QTest::qWait(50);
    QVERIFY(stand.device.feed().image().isNull());
    stand.device.setRunning(true);
    stand.device.file(name);
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::red));
}

void tst_ImageDeviceLife::emptyFileNameEndsTheFollowing()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("camera.png");
    write(name, encoded(filled(Qt::red)));
    Stand<ImageDevice> stand({{"file", name}});
    stand.device.postInitialisation();
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::red));
    stand.device.file("");
    write(name, encoded(filled(Qt::blue)));
    QTest::qWait(300);
    QCOMPARE(shownBy(stand.device), QColor(Qt::red));
}

void tst_ImageDeviceLife::replacedFileIsWatchedOn()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("camera.png");
    write(name, encoded(filled(Qt::red)));
    Stand<ImageDevice> stand({{"file", name}});
    stand.device.postInitialisation();
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::red));
    write(name + ".new", encoded(filled(Qt::green)));
    QCOMPARE(std::rename(qPrintable(name + ".new"), qPrintable(name)), 0);
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::green));
    QTest::qWait(50);
    write(name, encoded(filled(Qt::blue))); // in place, which its folder does not tell
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::blue));
}

void tst_ImageDeviceLife::fileIsGivenTimeAfterAFailureToo()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("camera.jpg");
    write(name, "no picture");
    Stand<ImageDevice> stand({{"file", name}});
    QSignalSpy alerts(&stand.device, &BaseDevice::alertRaised);
    MessageLog log;
    stand.device.postInitialisation();
    QTRY_COMPARE(alerts.count(), 1);
    write(name, encoded(filled(Qt::red), "jpg"));
    QTRY_VERIFY(!stand.device.feed().image().isNull());
    QSignalSpy arrivals(&stand.device.feed(), &PictureFeed::arrived);
    const QByteArray next = encoded(filled(Qt::blue), "jpg");
    QTest::qWait(100);
    arrivals.clear();
    write(name, next.left(next.size() / 2));
    QTest::qWait(250);
    write(name, next);
    QTRY_VERIFY(arrivals.count() > 0);
    QCOMPARE(alerts.count(), 1);
}

void tst_ImageDeviceLife::zerosBehindAJpegAreItsEnd()
{
    Stand<ImageDevice> stand;
    stand.device.input(encoded(filled(Qt::red), "jpg") + QByteArray(512, '\0'));
    QTRY_VERIFY(shownBy(stand.device).red() > 200);
}

void tst_ImageDeviceLife::hugeJpegIsScaled()
{
    QImage large(9000, 9000, QImage::Format_Grayscale8); // 324 MB with four bytes for each pixel
    large.fill(Qt::white);
    Stand<ImageDevice> stand;
    stand.device.input(encoded(large, "jpg"));
    QTRY_VERIFY_WITH_TIMEOUT(!stand.device.feed().image().isNull(), 60'000);
    const QSize size = stand.device.feed().image().size();
    QVERIFY(size.width() < 9000 && size.width() > 8000);
    QCOMPARE(size.width(), size.height());
}

void tst_ImageDeviceLife::pictureOfItsOwnSizeIsCutAtTheEdges()
{
    QImage picture = filled(Qt::red, {600, 600});
    QPainter(&picture).fillRect(QRect(250, 250, 100, 100), Qt::blue);
    Stand<ImageDevice> stand({{"widget/scaling", "none"}});
    stand.widget->resize(200, 200);
    stand.device.input(picture);
    QTRY_VERIFY(!stand.device.feed().image().isNull());
    const QImage shown = stand.widget->grab().toImage();
    QCOMPARE(shown.pixelColor(100, 100), QColor(Qt::blue));
    QCOMPARE(shown.pixelColor(60, 60), QColor(Qt::blue)); // a hundred pixels around the middle
    QCOMPARE(shown.pixelColor(40, 40), QColor(Qt::red));
}

void tst_ImageDeviceLife::widgetIsPaintedWhenThePictureChanges()
{
    Stand<ImageDevice> stand({{"stale", "0.3"}});
    stand.widget->resize(200, 200);
    stand.widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(stand.widget.get()));
    QTest::qWait(50);
    EventCounter events(stand.widget.get());
    int painted = 0;
    const auto isPainted = [&] { return (painted += events.take(QEvent::Paint)) > 0; };
    stand.device.input(filled(Qt::red));
    QTRY_VERIFY(isPainted());
    painted = 0;
    stand.device.input(filled(Qt::blue));
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::blue)); // shown() says nothing of it
    QTRY_VERIFY(isPainted());
    painted = 0;
    QTRY_VERIFY(stand.device.isStale());
    QTRY_VERIFY(isPainted());
}

void tst_ImageDeviceLife::widgetAsksForItsRoom()
{
    const Stand<ImageDevice> stand;
    QCOMPARE(stand.widget->minimumSize(), QSize(160, 120));
    QCOMPARE(stand.widget->sizePolicy(),
             QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding));
}

NORVO_TEST(tst_ImageDeviceLife)
#include "tst_ImageDeviceLife.moc"
