// SPDX-License-Identifier: GPL-3.0-or-later

#include "GaugePicture.h"
#include "Stand.h"
#include "TestMain.h"

#include "devices/LumenoBarDevice.h"
#include "devices/OutputBarDevice.h"

#include <QApplication>
#include <QLabel>
#include <QTemporaryFile>
#include <QtTest>

namespace {

/// An application on a desktop that wants letters rendered to the parts of a pixel.
class SubPixelApplication : public QApplication
{
public:
    SubPixelApplication(int& argc, char** argv) : QApplication(prepared(argc), argv) {}

private:
    static int& prepared(int& argc)
    {
        static QTemporaryFile file;
        if (file.open()) {
            file.write("<fontconfig><include>/etc/fonts/fonts.conf</include>"
                       "<match target=\"pattern\"><edit name=\"rgba\" mode=\"assign\">"
                       "<const>rgb</const></edit></match></fontconfig>");
            file.close();
            qputenv("FONTCONFIG_FILE", file.fileName().toLocal8Bit());
        }
        return argc;
    }
};

/// Pixels that are not grey: only the fringes of letters are, in grey text on white.
int colouredPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            count += qAbs(qRed(pixel) - qBlue(pixel)) > 40;
        }
    }
    return count;
}

} // namespace

/// Letters of the gauges on a desktop with sub-pixel rendering.
class tst_GaugeSubPixels : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void lumenoTextsHaveFringes();
    void valueBarNumbersHaveFringes();
};

void tst_GaugeSubPixels::initTestCase()
{
    QLabel label("Wil");
    label.resize(60, 20);
    label.setStyleSheet("color: black");
    if (colouredPixels(pictureOf(label, Qt::white)) == 0) {
        QSKIP("No sub-pixel rendering here");
    }
}

void tst_GaugeSubPixels::lumenoTextsHaveFringes()
{
    Stand<LumenoBarDevice> gauge({{"widget/name", "Wil"}, {"widget/precision", "1"}});
    gauge.widget->resize(120, 300);
    QPalette palette;
    palette.setColor(QPalette::Text, Qt::black);
    gauge.widget->setPalette(palette);
    const QImage image = pictureOf(*gauge.widget, Qt::white);
    QVERIFY(colouredPixels(image.copy(69, 40, 51, 230)) > 10); // The numbers.
    QVERIFY(colouredPixels(image.copy(0, 280, 120, 20)) > 5);  // The caption.
}

void tst_GaugeSubPixels::valueBarNumbersHaveFringes()
{
    // On red alone: what has fringes there is not a mixture of red and the text's colour.
    Stand<OutputBarDevice> bar({{"widget/maxThreshold", "0"}, {"widget/precision", "2"}});
    bar.widget->resize(400, 160);
    const QImage image = pictureOf(*bar.widget, Qt::white);
    const QColor red("#FD454D");
    const QColor text("#F0F0F0");
    int fringes = 0;
    for (int y = 130; y < 152; ++y) {
        for (int x = 20; x < 380; ++x) {
            const QColor pixel = image.pixelColor(x, y);
            const double ofGreen =
                double(pixel.green() - red.green()) / (text.green() - red.green());
            const double ofBlue = double(pixel.blue() - red.blue()) / (text.blue() - red.blue());
            fringes += qAbs(ofGreen - ofBlue) > 0.15;
        }
    }
    QVERIFY(fringes > 10);
}

NORVO_TEST_WITH(tst_GaugeSubPixels, SubPixelApplication)
#include "tst_GaugeSubPixels.moc"
