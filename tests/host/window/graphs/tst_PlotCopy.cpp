// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "host/plots/PlotCopy.h"

#include <QFontMetrics>
#include <QtTest>

using norvo::PlotCopy;

namespace {

/// Rows of a picture in which there is anything but white.
int inkedRows(const QImage& picture)
{
    int rows = 0;
    for (int y = 0; y < picture.height(); ++y) {
        bool isWhite = true;
        for (int x = 0; x < picture.width(); ++x) {
            isWhite = isWhite && picture.pixelColor(x, y) == Qt::white;
        }
        rows += isWhite ? 0 : 1;
    }
    return rows;
}

QImage textAlone(const QString& text, const QFont& font)
{
    QImage picture(500, 300, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setFont(font);
    painter.drawText(20, 100, text);
    return picture;
}

} // namespace

/// How the copy of a plot is drawn.
class tst_PlotCopy : public QObject
{
    Q_OBJECT

private slots:
    void namesInTheLegendAreWhole();
    void timesStandApart_data();
    void timesStandApart();
};

/// Down to the last row of their letters.
void tst_PlotCopy::namesInTheLegendAreWhole()
{
    const QFont font("Arial", 24);
    QCustomPlot source;
    source.addGraph()->setName("gjpqy");
    source.graph()->setPen(Qt::NoPen);
    source.legend->setFont(font);
    source.legend->setBrush(Qt::NoBrush);
    source.legend->setBorderPen(Qt::NoPen);
    source.legend->setTextColor(Qt::black);
    source.legend->setVisible(true);
    PlotCopy copy(source);
    for (QCPAxis* axis : copy.axisRect()->axes()) {
        axis->setVisible(false);
        axis->grid()->setVisible(false);
    }
    copy.setBackground(Qt::white);
    const QImage picture = copy.toPixmap(500, 300).toImage();
    QCOMPARE(inkedRows(picture), inkedRows(textAlone("gjpqy", font)));
}

void tst_PlotCopy::timesStandApart_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("seconds");
    QTest::addColumn<int>("width");
    for (const char* format : {"hh:mm:ss", "mm:ss"}) {
        for (const int seconds : {2, 10, 15, 60, 3600, 100000}) {
            for (const int width : {250, 330, 400, 430, 466, 700}) {
                QTest::addRow("%s, %d s on %d pixels", format, seconds, width)
                    << format << seconds << width;
            }
        }
    }
}

void tst_PlotCopy::timesStandApart()
{
    QFETCH(QString, format);
    QFETCH(int, seconds);
    QFETCH(int, width);
    QCustomPlot source;
    const auto ticker = QSharedPointer<QCPAxisTickerDateTime>::create();
    ticker->setDateTimeFormat(format);
    source.xAxis->setTicker(ticker);
    source.xAxis->setTickLabelFont(QFont("Arial", 14));
    source.xAxis->setRange(1.77e9, 1.77e9 + seconds);
    PlotCopy copy(source);
    copy.resize(width, 200);
    copy.show();
    copy.replot(); // The width of what stands beside the times is known then.
    copy.replot();
    const QCPAxis& axis = *copy.xAxis;
    const QFontMetrics metrics(axis.tickLabelFont());
    double end = -1e9; // Of the text before, in pixels.
    for (int i = 0; i < axis.tickVector().size(); ++i) {
        const double time = axis.tickVector().at(i);
        const QString text = axis.tickVectorLabels().at(i);
        if (axis.range().contains(time)) {
            const double half = metrics.horizontalAdvance(text) / 2.;
            QVERIFY2(axis.coordToPixel(time) - half > end, qPrintable(text));
            end = axis.coordToPixel(time) + half;
        }
    }
}

NORVO_TEST(tst_PlotCopy)
#include "tst_PlotCopy.moc"
