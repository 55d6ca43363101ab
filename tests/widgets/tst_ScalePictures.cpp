// SPDX-License-Identifier: GPL-3.0-or-later

#include "LiteralGauges.h"
#include "LumenoGauge.h"
#include "TestMain.h"
#include "ValueBar.h"

#include <QtTest>

namespace {

using Params = QMap<QString, QString>;

Params paramsOf(const literal::Scale& scale)
{
    return {{"widget/minValue", QString::number(scale.min)},
            {"widget/maxValue", QString::number(scale.max)},
            {"widget/digitsStep", QString::number(scale.digitsStep)},
            {"widget/dashesStep", QString::number(scale.dashesStep)},
            {"widget/precision", QString::number(scale.precision)}};
}

/// Whether there are no more marks than pixels, so that not one of them may be left out.
bool isSparse(double step, const literal::Scale& scale, double pixels)
{
    return (scale.max - scale.min) / step < pixels;
}

void scalesAndSizes(const QVector<QSize>& sizes)
{
    QTest::addColumn<literal::Scale>("scale");
    QTest::addColumn<QSize>("size");
    const QVector<literal::Scale> scales{
        {0, 1, 0.5, 0.1, 0},      {0, 1, 0.5, 0.1, 2},      {0, 100, 20, 1, 0},
        {-50, 50, 25, 5, 1},      {0, 100, 50, 0.1, 0},     {0, 1, 0.25, 0.001, 2},
        {-1, 1, 0.3, 0.07, 3},    {1000, 2000, 500, 10, 0}, {0, 360, 90, 7.5, 0},
        {0, 1e-6, 5e-7, 1e-7, 7}, {0, 10000, 5000, 1, 0},   {0, 100, 0.5, 0.1, 0},
        {0, 1000, 0.5, 0.1, 0},   {0, 3000, 0.5, 0.1, 0}};
    for (const literal::Scale& scale : scales) {
        for (const QSize& size : sizes) {
            QTest::addRow("%g to %g by %g and %g at %d x %d", scale.min, scale.max,
                          scale.digitsStep, scale.dashesStep, size.width(), size.height())
                << scale << size;
        }
    }
}

/// Both pictures' part: `box` is in pixels of the widget.
int differenceWithin(const QRect& box, const QImage& one, const QImage& other, double factor)
{
    const QRect area(QTransform::fromScale(factor, factor).mapRect(box) & one.rect());
    return largestDifference(one.copy(area), other.copy(area));
}

} // namespace

Q_DECLARE_METATYPE(literal::Scale)

/// Whether the scales look as if every mark of theirs were drawn, one after the other.
class tst_ScalePictures : public QObject
{
    Q_OBJECT

private slots:
    void valueBarShowsEveryMark_data();
    void valueBarShowsEveryMark();
    void lumenoShowsEveryMark_data();
    void lumenoShowsEveryMark();
    void lumenoNumbersAreCutAtTheirBoxes_data();
    void lumenoNumbersAreCutAtTheirBoxes();
};

void tst_ScalePictures::valueBarShowsEveryMark_data()
{
    scalesAndSizes({{400, 120}, {210, 75}, {1000, 120}, {101, 61}});
}

void tst_ScalePictures::valueBarShowsEveryMark()
{
    QFETCH(literal::Scale, scale);
    QFETCH(QSize, size);
    for (const double factor : {1.0, 1.5, 2.0}) {
        Params params = paramsOf(scale);
        params["widget/minThreshold"] = params["widget/minValue"];
        params["widget/maxThreshold"] = params["widget/maxValue"];
        Bar bar(params, size);
        bar.device.input(qQNaN()); // No pointer.
        const QImage shown = bar.picture(factor);
        QImage expected(shown.size(), shown.format());
        expected.fill(kBehind);
        QPainter painter(&expected);
        painter.scale(factor, factor);
        literal::drawValueBar(painter, size, scale);
        painter.end();
        const bool allNumbers = isSparse(scale.digitsStep, scale, size.width() - 20);
        // Ticks end at 0.67 of the scale's height, numbers begin below 0.6 of it.
        const int textTop = int(size.height() - 5 - 0.4 * 0.55 * (size.height() - 10));
        const QRect compared(0, 0, size.width(), allNumbers ? size.height() : textTop);
        const int difference = differenceWithin(compared, shown, expected, factor);
        QVERIFY2(difference <= 2, qPrintable(QString::number(difference)));
    }
}

void tst_ScalePictures::lumenoShowsEveryMark_data()
{
    scalesAndSizes({{120, 220}, {91, 171}, {200, 400}, {120, 181}});
}

void tst_ScalePictures::lumenoShowsEveryMark()
{
    QFETCH(literal::Scale, scale);
    QFETCH(QSize, size);
    LumenoGauge gauge(paramsOf(scale), size);
    const double span = size.height() - 2.0 * gauge.margin();
    const bool allNumbers = isSparse(scale.digitsStep, scale, span);
    const bool allLines = isSparse(scale.dashesStep, scale, 8.0 * span);
    // A solid block of lines may lack some of the outermost columns that each covers in part.
    const int tolerance = allLines ? 2 : 24;
    for (const double factor : {1.0, 2.0, 1.5}) {
        if (factor == 1.5 && !(isSparse(scale.digitsStep, scale, 50.0) && allLines)) {
            continue; // Between pixels one of many numbers may go to the other one.
        }
        const QImage shown = pictureOf(*gauge.widget, Qt::white, factor);
        QImage expected(shown.size(), shown.format());
        expected.fill(Qt::white);
        QPainter painter(&expected);
        painter.scale(factor, factor);
        painter.setPen(Qt::blue);
        literal::drawLumenoScale(painter, size, scale);
        painter.end();
        // Between the value above and the caption below; numbers begin 9 right of the centre.
        const int top = LumenoGauge::valueHeight();
        const int bottom = size.height() - LumenoGauge::textHeight();
        const QRect compared(0, top, allNumbers ? size.width() : size.width() / 2 + 7,
                             bottom - top);
        const int difference = differenceWithin(compared, shown, expected, factor);
        QVERIFY2(difference <= tolerance, qPrintable(QString::number(difference)));
    }
}

void tst_ScalePictures::lumenoNumbersAreCutAtTheirBoxes_data()
{
    QTest::addColumn<int>("fontSize");
    for (int fontSize = 1; fontSize <= 48; ++fontSize) {
        QTest::addRow("%d pixels", fontSize) << fontSize;
    }
}

void tst_ScalePictures::lumenoNumbersAreCutAtTheirBoxes()
{
    QFETCH(int, fontSize);
    const QSize size(240, 500);
    const literal::Scale scale{-1, 1, 0.5, 0.25, 2};
    for (const int barWidth : {-4, 0, 5, 8, 40}) {
        Params params = paramsOf(scale);
        params["widget/fontSize"] = QString::number(fontSize);
        params["widget/barWidth"] = QString::number(barWidth);
        LumenoGauge gauge(params, size);
        const QImage shown = gauge.picture();
        QImage expected(shown.size(), shown.format());
        expected.fill(Qt::white);
        QPainter painter(&expected);
        painter.setPen(Qt::blue);
        literal::drawLumenoScale(painter, size, scale, fontSize, barWidth);
        painter.end();
        const int top = QFontMetrics(LumenoGauge::textFont(fontSize * 3 / 2, true)).height();
        const int bottom = size.height() - QFontMetrics(LumenoGauge::textFont(fontSize)).height();
        const QRect between(0, top, size.width(), bottom - top);
        QVERIFY(differenceWithin(between, shown, expected, 1.0) <= 1);
    }
}

NORVO_TEST(tst_ScalePictures)
#include "tst_ScalePictures.moc"
