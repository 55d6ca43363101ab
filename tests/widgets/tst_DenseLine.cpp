// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/DenseLine.h"
#include "TestMain.h"

#include <QPainter>
#include <QtTest>

namespace plot = norvo::plot;

/// The line itself, without a plot around it.
class tst_DenseLine : public QObject
{
    Q_OBJECT

private slots:
    void spikeIsAsWideAsThePen_data();
    void spikeIsAsWideAsThePen();
    void pointsBesideThePictureChangeNothing_data();
    void pointsBesideThePictureChangeNothing();

private:
    static constexpr int kWidth = 60;
    static constexpr int kHeight = 40;

    static QVector<QPointF> spike()
    {
        QVector<QPointF> line;
        for (int i = 0; i <= 10 * kWidth; ++i) {
            line.append({0.1 * i, i == 300 ? 5.0 : 35.0});
        }
        return line;
    }

    static QImage picture(const QVector<QPointF>& line, double penWidth)
    {
        QImage image(kWidth, kHeight, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setClipRect(image.rect());
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Qt::black, penWidth, Qt::SolidLine, Qt::FlatCap));
        return plot::drawDenseLine(painter, line) ? image : QImage();
    }

    /// How many pixels of a row are covered, in parts or as a whole.
    static double coveredOf(const QImage& image, int row)
    {
        double covered = 0;
        for (int x = 0; x < image.width(); ++x) {
            covered += (255 - qRed(image.pixel(x, row))) / 255.0;
        }
        return covered;
    }
};

void tst_DenseLine::spikeIsAsWideAsThePen_data()
{
    QTest::addColumn<double>("penWidth");
    for (const double width : {1.0, 2.0, 3.0, 4.0}) {
        QTest::newRow(qPrintable(QString::number(width))) << width;
    }
}

void tst_DenseLine::spikeIsAsWideAsThePen()
{
    QFETCH(double, penWidth);
    const double covered = coveredOf(picture(spike(), penWidth), 20);
    constexpr double part = 0.25; // Of a pixel, in which heights are taken together.
    constexpr double shades = 0.05;
    QVERIFY2(qAbs(covered - penWidth) <= part + shades, qPrintable(QString::number(covered)));
}

void tst_DenseLine::pointsBesideThePictureChangeNothing_data()
{
    QTest::addColumn<QVector<QPointF>>("before");
    QTest::addColumn<QVector<QPointF>>("behind");
    using Line = QVector<QPointF>;
    QTest::newRow("on the left") << Line{{-900, 0}, {-800, 35}, {-0.001, 35}} << Line();
    QTest::newRow("far on the left") << Line{{-2e12, 0}, {-1e12, 35}, {-1, 35}} << Line();
    QTest::newRow("on the right") << Line() << Line{{61, 35}, {800, 35}, {900, 0}};
    QTest::newRow("far on the right") << Line() << Line{{61, 35}, {1e12, 35}, {2e12, 0}};
}

void tst_DenseLine::pointsBesideThePictureChangeNothing()
{
    QFETCH(QVector<QPointF>, before);
    QFETCH(QVector<QPointF>, behind);
    const QImage alone = picture({{0, 35}, {30, 5}, {60, 35}}, 1);
    QVERIFY(coveredOf(alone, 20) > 1);
    QCOMPARE(picture(before + QVector<QPointF>{{0, 35}, {30, 5}, {60, 35}} + behind, 1), alone);
}

NORVO_TEST(tst_DenseLine)
#include "tst_DenseLine.moc"
