// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/ImageDevice.h"
#include "Declarations.h"
#include "Effort.h"
#include "MessageLog.h"
#include "Recorder.h"
#include "Stand.h"
#include "TestMain.h"

#include <sys/stat.h>

/// Device and widget, fed by files and by wire.
class tst_ImageDevice : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsParametersSignalsAndSlots();
    void pictureComesInEveryForm_data();
    void pictureComesInEveryForm();
    void onlyTheNewestOfATurnIsShown();
    void badDataIsReportedOnceUntilAGoodOneComes();
    void fileIsFollowed_data();
    void fileIsFollowed();
    void halfWrittenFileKeepsThePicture();
    void fifoIsRefused();
    void hugePictureIsScaledOrRefused();
    void stalePictureIsVeiledAndComesBack();
    void scalingPlacesThePicture_data();
    void scalingPlacesThePicture();
    void stoppedDeviceTakesNothing();
    void cameraLeavesMostOfACore();

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
    static bool write(const QString& name, const QByteArray& data)
    {
        QFile file(name);
        return file.open(QIODevice::WriteOnly) && file.write(data) == data.size();
    }
    static QColor shownBy(const ImageDevice& device)
    {
        const QImage& image = device.feed().image();
        return image.isNull() ? QColor() : image.pixelColor(1, 1);
    }
};

void tst_ImageDevice::declaresItsParametersSignalsAndSlots()
{
    ImageDevice device;
    QCOMPARE(parameterTable(device), QStringList({"file = ", "stale = 0 in s",
                                                  "widget/scaling = fit [fit, stretch, none]"}));
    QCOMPARE(methodTable(ImageDevice::staticMetaObject),
             QStringList({"signal shown(bool)", "slot input(QString)", "slot input(QByteArray)",
                          "slot input(QImage)", "slot file(QString)"}));
}

void tst_ImageDevice::pictureComesInEveryForm_data()
{
    QTest::addColumn<QVariant>("picture");
    const QByteArray data = encoded(filled(Qt::red));
    const QString base64 = data.toBase64();
    QTest::newRow("base64") << QVariant(base64);
    QTest::newRow("base64 with a head") << QVariant("data:image/png;base64," + base64);
    QTest::newRow("data") << QVariant(data);
    QTest::newRow("image") << QVariant(filled(Qt::red));
}

void tst_ImageDevice::pictureComesInEveryForm()
{
    QFETCH(QVariant, picture);
    Stand<ImageDevice> stand;
    Recorder recorder(&stand.device);
    stand.device.postInitialisation();
    QCOMPARE(recorder.take(), QStringList("shown(false)"));
    const QGenericArgument argument(picture.typeName(), picture.constData());
    QVERIFY(QMetaObject::invokeMethod(&stand.device, "input", argument));
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::red));
    QCOMPARE(recorder.take(), QStringList("shown(true)"));
}

void tst_ImageDevice::onlyTheNewestOfATurnIsShown()
{
    Stand<ImageDevice> stand;
    QSignalSpy arrivals(&stand.device.feed(), &PictureFeed::arrived);
    for (const Qt::GlobalColor colour : {Qt::red, Qt::green, Qt::blue}) {
        stand.device.input(encoded(filled(colour)));
    }
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::blue));
    QCOMPARE(arrivals.count(), 1);
}

void tst_ImageDevice::badDataIsReportedOnceUntilAGoodOneComes()
{
    Stand<ImageDevice> stand;
    QSignalSpy alerts(&stand.device, &BaseDevice::alertRaised);
    MessageLog log;
    const auto give = [&](const QByteArray& data) {
        stand.device.input(data);
        QCoreApplication::processEvents();
        QTest::qWait(1);
    };
    give(encoded(filled(Qt::red)));
    give("no picture");
    give("");
    QCOMPARE(alerts.count(), 1);
    QCOMPARE(shownBy(stand.device), QColor(Qt::red));
    give(encoded(filled(Qt::green)));
    give("no picture");
    QCOMPARE(alerts.count(), 2);
}

using Change = void (*)(const QString& name, const QByteArray& data);
Q_DECLARE_METATYPE(Change)

void tst_ImageDevice::fileIsFollowed_data()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char* name, Change change) { QTest::newRow(name) << change; };
    row("written in place", [](const QString& name, const QByteArray& data) { write(name, data); });
    row("replaced", [](const QString& name, const QByteArray& data) {
        write(name + ".new", data);
        QCOMPARE(std::rename(qPrintable(name + ".new"), qPrintable(name)), 0);
    });
    row("removed and come again", [](const QString& name, const QByteArray& data) {
        QFile::remove(name);
        QTest::qWait(50);
        write(name, data);
    });
}

void tst_ImageDevice::fileIsFollowed()
{
    QFETCH(Change, change);
    const QTemporaryDir folder;
    const QString name = folder.filePath("camera.png");
    QVERIFY(write(name, encoded(filled(Qt::red))));
    Stand<ImageDevice> stand({{"file", name}});
    stand.device.postInitialisation();
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::red));
    for (const Qt::GlobalColor colour : {Qt::green, Qt::blue}) {
        change(name, encoded(filled(colour)));
        QTRY_COMPARE(shownBy(stand.device), QColor(colour));
    }
}

void tst_ImageDevice::halfWrittenFileKeepsThePicture()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("camera.jpg");
    QVERIFY(write(name, encoded(filled(Qt::red, {400, 300}), "jpg")));
    Stand<ImageDevice> stand({{"file", name}});
    stand.device.postInitialisation();
    QTRY_VERIFY(!stand.device.feed().image().isNull());
    QSignalSpy alerts(&stand.device, &BaseDevice::alertRaised);
    QSignalSpy arrivals(&stand.device.feed(), &PictureFeed::arrived);
    const QByteArray next = encoded(filled(Qt::blue, {400, 300}), "jpg");
    QVERIFY(write(name, next.left(next.size() / 2)));
    QTest::qWait(250);
    QCOMPARE(arrivals.count(), 0);
    QVERIFY(write(name, next));
    QTRY_VERIFY(arrivals.count() > 0);
    QVERIFY(shownBy(stand.device).blue() > 200);
    QCOMPARE(alerts.count(), 0);
}

void tst_ImageDevice::fifoIsRefused()
{
    const QTemporaryDir folder;
    const QString name = folder.filePath("pipe");
    QCOMPARE(mkfifo(qPrintable(name), 0600), 0);
    Stand<ImageDevice> stand({{"file", name}});
    QSignalSpy alerts(&stand.device, &BaseDevice::alertRaised);
    MessageLog log;
    stand.device.postInitialisation();
    QTRY_COMPARE(alerts.count(), 1);
    QVERIFY(alerts[0][0].toString().endsWith("it is not a regular file"));
}

void tst_ImageDevice::hugePictureIsScaledOrRefused()
{
    Stand<ImageDevice> stand;
    QSignalSpy alerts(&stand.device, &BaseDevice::alertRaised);
    MessageLog log;
    QByteArray bitmap = encoded(filled(Qt::red), "bmp");
    bitmap.replace(18, 8, QByteArray::fromHex("e02e0000e02e0000")); // says 12000 x 12000
    stand.device.input(bitmap);
    QTRY_COMPARE(alerts.count(), 1);
    const QString reason = alerts[0][0].toString();
    QVERIFY2(reason.contains("12000 x 12000 pixels take more than 300 MB"), qPrintable(reason));
    stand.device.input(QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='20000' "
                                  "height='10000'><rect width='20000' height='10000'/></svg>"));
    QTRY_VERIFY(!stand.device.feed().image().isNull());
    QVERIFY(stand.device.feed().image().sizeInBytes() <= 300'000'000);
}

void tst_ImageDevice::stalePictureIsVeiledAndComesBack()
{
    Stand<ImageDevice> stand({{"stale", "0.2"}});
    stand.widget->resize(200, 200);
    QSignalSpy shown(&stand.device, &ImageDevice::shown);
    stand.device.input(filled(Qt::white, {200, 200}));
    QTRY_COMPARE(shown.count(), 1);
    QTRY_COMPARE(shown.count(), 2);
    QVERIFY(shown[0][0].toBool());
    QVERIFY(!shown[1][0].toBool());
    QVERIFY(stand.device.isStale());
    QVERIFY(stand.widget->grab().toImage().pixelColor(5, 5).lightness() < 100);
    stand.device.input(filled(Qt::white, {200, 200}));
    QTRY_VERIFY(shown.count() > 2);
    QVERIFY(shown[2][0].toBool());
}

void tst_ImageDevice::scalingPlacesThePicture_data()
{
    QTest::addColumn<QString>("scaling");
    QTest::addColumn<QRect>("place");
    QTest::newRow("fit") << "fit" << QRect(0, 50, 200, 100);
    QTest::newRow("stretch") << "stretch" << QRect(0, 0, 200, 200);
    QTest::newRow("none") << "none" << QRect(80, 90, 40, 20);
}

void tst_ImageDevice::scalingPlacesThePicture()
{
    QFETCH(QString, scaling);
    QFETCH(QRect, place);
    Stand<ImageDevice> stand({{"widget/scaling", scaling}});
    stand.widget->resize(200, 200);
    stand.device.input(filled(Qt::red));
    QTRY_COMPARE(shownBy(stand.device), QColor(Qt::red));
    const QImage image = stand.widget->grab().toImage();
    const QRect inside = place.adjusted(2, 2, -2, -2);
    QCOMPARE(image.pixelColor(inside.topLeft()), QColor(Qt::red));
    QCOMPARE(image.pixelColor(inside.bottomRight()), QColor(Qt::red));
    const QPoint above(100, place.top() - 3);
    QVERIFY(above.y() < 0 || image.pixelColor(above) != QColor(Qt::red));
}

void tst_ImageDevice::stoppedDeviceTakesNothing()
{
    Stand<ImageDevice> stand;
    stand.device.setRunning(false);
    stand.device.input(filled(Qt::red));
    QTest::qWait(20);
    QVERIFY(stand.device.feed().image().isNull());
}

void tst_ImageDevice::cameraLeavesMostOfACore()
{
    QImage view(640, 480, QImage::Format_RGB32);
    for (int y = 0; y < view.height(); ++y) {
        for (int x = 0; x < view.width(); ++x) {
            view.setPixel(x, y, qRgb(x / 3 + x * y % 16, y / 2 + x * 7 % 13, (x + y) / 5));
        }
    }
    const QString frame = encoded(view, "jpg").toBase64();
    Stand<ImageDevice> stand;
    stand.widget->resize(800, 600);
    stand.widget->show();
    QSignalSpy arrivals(&stand.device.feed(), &PictureFeed::arrived);
    const norvo::ProcessorTimer effort;
    constexpr int frames = 60; // two seconds of a camera
    for (int i = 0; i < frames; ++i) {
        stand.device.input(frame);
        QTRY_COMPARE_WITH_TIMEOUT(arrivals.count(), i + 1, 10000);
        stand.widget->repaint();
    }
    qInfo("%lld ms for %d pictures", effort.elapsedMs(), frames);
    QVERIFY2(effort.elapsedMs() < 1000, qPrintable(QString::number(effort.elapsedMs())));
}

NORVO_TEST(tst_ImageDevice)
#include "tst_ImageDevice.moc"
