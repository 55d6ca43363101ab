#include "Declarations.h"
#include "MessageLog.h"
#include "Stand.h"

#include "devices/ButtonDevice.h"
#include "devices/PictureDevice.h"
#include "widgets/PictureWidget.h"

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

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, 0);
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// A PNG file that declares its size and ends with the first bytes of the picture.
QByteArray pngDeclaring(int width, int height)
{
    QByteArray header = "IHDR" + bigEndian(width) + bigEndian(height);
    header += QByteArray("\x08\x06\x00\x00\x00", 5);
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

QString tooLarge(const QString& size)
{
    return size + " pixels are more than the 67108864 that a picture may have";
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

    void unreadableFileIsTold_data();
    void unreadableFileIsTold();
    void hugeDeclaredSizeIsRefused_data();
    void hugeDeclaredSizeIsRefused();
    void hugeTargetSizeIsRefused_data();
    void hugeTargetSizeIsRefused();

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

void tst_PictureWidget::unreadableFileIsTold_data()
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

void tst_PictureWidget::unreadableFileIsTold()
{
    QFETCH(QString, path);
    QImageReader reader(path);
    QVERIFY(reader.read().isNull());
    QVERIFY(!reader.errorString().isEmpty());

    MessageLog log;
    Stand<PictureDevice> stand({{"widget/filename", path}});
    QStringList told = log.take();
    told = told.filter(QRegularExpression("^critical: ")); // Qt may warn of its own accord
    QCOMPARE(told, QStringList("critical: PictureWidget: Cannot load " + path + ": " +
                               reader.errorString()));
    QVERIFY(stand.widget->findChildren<QWidget*>().isEmpty());
    QVERIFY(!stand.widget->isInitialised());
}

void tst_PictureWidget::hugeDeclaredSizeIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("size");
    QTest::newRow("png") << file("huge.png", pngDeclaring(30000, 30000)) << "30000 x 30000";
    QTest::newRow("one row too many") << file("row.png", pngDeclaring(8192, 8193)) << "8192 x 8193";
    QTest::newRow("product beyond int")
        << file("product.png", pngDeclaring(70000, 70000)) << "70000 x 70000";
    QTest::newRow("bitmap") << file("huge.pbm", "P1 30000 30000\n") << "30000 x 30000";
    QTest::newRow("svg") << file("huge.svg", "<svg xmlns='http://www.w3.org/2000/svg' "
                                             "width='30000' height='30000'/>")
                         << "30000 x 30000";
}

void tst_PictureWidget::hugeDeclaredSizeIsRefused()
{
    QFETCH(QString, path);
    QFETCH(QString, size);
    MessageLog log;
    Stand<PictureDevice> stand(
        {{"widget/filename", path}, {"widget/width", "10"}, {"widget/height", "10"}});
    QCOMPARE(log.take(),
             QStringList("critical: PictureWidget: Cannot load " + path + ": " + tooLarge(size)));
    QVERIFY(stand.widget->findChildren<QWidget*>().isEmpty());
}

void tst_PictureWidget::hugeTargetSizeIsRefused_data()
{
    QTest::addColumn<QString>("width");
    QTest::addColumn<QString>("height");
    QTest::addColumn<QString>("size");
    QTest::newRow("30000 each") << "30000"
                                << "30000"
                                << "30000 x 30000";
    QTest::newRow("beyond int") << "1e10"
                                << "1"
                                << "2147483647 x 1";
    QTest::newRow("infinite") << "inf"
                              << "1e300"
                              << "2147483647 x 2147483647";
}

void tst_PictureWidget::hugeTargetSizeIsRefused()
{
    QFETCH(QString, width);
    QFETCH(QString, height);
    QFETCH(QString, size);
    const QString path = picture("target.png", quarters(20, 10));
    MessageLog log;
    Stand<PictureDevice> stand(
        {{"widget/filename", path}, {"widget/width", width}, {"widget/height", height}});
    QCOMPARE(log.take(),
             QStringList("critical: PictureWidget: Cannot load " + path + ": " + tooLarge(size)));
    QVERIFY(stand.widget->findChildren<QWidget*>().isEmpty());
}

QTEST_MAIN(tst_PictureWidget)
#include "tst_PictureWidget.moc"
