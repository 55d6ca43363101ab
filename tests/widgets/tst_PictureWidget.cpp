// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "MessageLog.h"
#include "Stand.h"

#include "devices/ButtonDevice.h"
#include "devices/PictureDevice.h"
#include "widgets/PictureWidget.h"
#include "TestMain.h"

#include <QtTest>

namespace {

/// Quarters in four colours.
QImage quarters(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    QPainter painter(&image);
    painter.fillRect(width / 2, 0, width / 2, height / 2, Qt::green);
    painter.fillRect(0, height / 2, width / 2, height / 2, Qt::blue);
    painter.fillRect(width / 2, height / 2, width / 2, height / 2, Qt::yellow);
    return image;
}

} // namespace

class tst_PictureWidget : public QObject
{
    Q_OBJECT

private slots:
    void deviceMakesItsWidget();
    void declaresNothing();
    void classOfTheDeviceIsNotChecked();
    void formatIsRead_data();
    void formatIsRead();
    void pictureIsScaledOnlyWithBothSizes_data();
    void pictureIsScaledOnlyWithBothSizes();
    void scaledPictureIsDistortedWithoutSmoothing();
    void labelIsMadeAsAPlate();
    void pictureIsSeenInTheMiddle();

private:
    QString file(const QString& name, const QByteArray& content)
    {
        const QString path = m_folder.filePath(name);
        QFile out(path);
        return out.open(QFile::WriteOnly) && out.write(content) == content.size() ? path : "";
    }
    QString picture(const QString& name, const QImage& image)
    {
        const QString path = m_folder.filePath(name);
        return image.save(path) ? path : "";
    }

    QTemporaryDir m_folder;
};

void tst_PictureWidget::deviceMakesItsWidget()
{
    PictureDevice device;
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    QCOMPARE(widget->metaObject()->className(), "PictureWidget");
    QVERIFY(!widget->parent());
    QVERIFY(!widget->isInitialised());
    device.setParam("widget/filename", picture("own.png", quarters(20, 10)));
    widget->initialise();
    QVERIFY(widget->isInitialised());
}

void tst_PictureWidget::declaresNothing()
{
    QCOMPARE(methodTable(PictureWidget::staticMetaObject), QStringList());
}

void tst_PictureWidget::classOfTheDeviceIsNotChecked()
{
    ButtonDevice button;
    button.addParam("widget/filename", picture("any.png", quarters(20, 10)));
    PictureWidget widget(&button, nullptr);
    MessageLog log;
    widget.initialise();
    QCOMPARE(log.take(), QStringList());
    QVERIFY(widget.findChild<QLabel*>());
}

void tst_PictureWidget::formatIsRead_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("png") << picture("p.png", quarters(20, 10));
    QTest::newRow("jpeg") << picture("p.jpg", quarters(20, 10));
    QTest::newRow("bmp") << picture("p.bmp", quarters(20, 10));
    QTest::newRow("svg") << file("p.svg",
                                 "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='10'>"
                                 "<rect width='10' height='10' fill='red'/></svg>");
}

void tst_PictureWidget::formatIsRead()
{
    QFETCH(QString, path);
    QVERIFY(!path.isEmpty());
    MessageLog log;
    Stand<PictureDevice> stand({{"widget/filename", path}});
    QCOMPARE(log.take(), QStringList());
    auto* const label = stand.only<QLabel>();
    QVERIFY(label);
    const QImage image = label->pixmap(Qt::ReturnByValue).toImage();
    QCOMPARE(image.size(), QSize(20, 10));
    const QColor colour = image.pixelColor(2, 2);
    QVERIFY(colour.red() > 240 && colour.green() < 20 && colour.blue() < 20);
}

void tst_PictureWidget::pictureIsScaledOnlyWithBothSizes_data()
{
    QTest::addColumn<QString>("width");
    QTest::addColumn<QString>("height");
    QTest::addColumn<QSize>("size");
    const QSize own(200, 100);
    QTest::newRow("none") << "0"
                          << "0" << own;
    QTest::newRow("width alone") << "100"
                                 << "0" << own;
    QTest::newRow("height alone") << "0"
                                  << "50" << own;
    QTest::newRow("negative") << "-5"
                              << "50" << own;
    QTest::newRow("fractions are cut") << "99.9"
                                       << "50.5" << QSize(99, 50);
    QTest::newRow("squeezed") << "50"
                              << "50" << QSize(50, 50);
    QTest::newRow("enlarged") << "400"
                              << "300" << QSize(400, 300);
    QTest::newRow("below one pixel") << "0.5"
                                     << "50" << QSize(0, 0);
    QTest::newRow("NaN") << "nan"
                         << "50" << own;
    QTest::newRow("no numbers") << "wide"
                                << "high" << own;
}

void tst_PictureWidget::pictureIsScaledOnlyWithBothSizes()
{
    QFETCH(QString, width);
    QFETCH(QString, height);
    QFETCH(QSize, size);
    Stand<PictureDevice> stand({{"widget/filename", picture("size.png", quarters(200, 100))},
                                {"widget/width", width},
                                {"widget/height", height}});
    QVERIFY(stand.only<QLabel>());
    QCOMPARE(stand.only<QLabel>()->pixmap(Qt::ReturnByValue).size(), size);
}

void tst_PictureWidget::scaledPictureIsDistortedWithoutSmoothing()
{
    Stand<PictureDevice> stand({{"widget/filename", picture("s.png", quarters(200, 100))},
                                {"widget/width", "50"},
                                {"widget/height", "60"}});
    QCOMPARE(stand.only<QLabel>()
                 ->pixmap(Qt::ReturnByValue)
                 .toImage()
                 .convertToFormat(QImage::Format_RGB32),
             quarters(50, 60));
}

void tst_PictureWidget::labelIsMadeAsAPlate()
{
    const QString path = picture("l.png", quarters(200, 100));
    Stand<PictureDevice> own({{"widget/filename", path}});
    auto* const label = own.only<QLabel>();
    QCOMPARE(label->backgroundRole(), QPalette::Base);
    QCOMPARE(label->sizePolicy(), QSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored));
    QCOMPARE(label->alignment(), Qt::AlignHCenter | Qt::AlignVCenter);
    QCOMPARE(label->size(), QSize(200, 100));
    QCOMPARE(own.widget->getLayout()->itemAtPosition(0, 0)->widget(), label);

    Stand<PictureDevice> scaled(
        {{"widget/filename", path}, {"widget/width", "99.9"}, {"widget/height", "50.5"}});
    QCOMPARE(scaled.only<QLabel>()->size(), QSize(99, 50));
}

void tst_PictureWidget::pictureIsSeenInTheMiddle()
{
    Stand<PictureDevice> stand({{"widget/filename", picture("m.png", quarters(40, 20))}});
    stand.widget->resize(240, 120);
    stand.widget->show();
    const QImage seen = stand.widget->grab().toImage();
    QCOMPARE(seen.pixelColor(102, 52), QColor(Qt::red));
    QCOMPARE(seen.pixelColor(137, 52), QColor(Qt::green));
    QCOMPARE(seen.pixelColor(102, 67), QColor(Qt::blue));
    QCOMPARE(seen.pixelColor(137, 67), QColor(Qt::yellow));
    QVERIFY(seen.pixelColor(97, 52) != QColor(Qt::red));
    QVERIFY(seen.pixelColor(102, 47) != QColor(Qt::red));
}

NORVO_TEST(tst_PictureWidget)
#include "tst_PictureWidget.moc"
