// SPDX-License-Identifier: GPL-3.0-or-later

#include "GraphParts.h"
#include "TestMain.h"

#include <QFontMetrics>
#include <QtTest>

/// The labels below a time graph can be told apart, however narrow it is.
class tst_TimeLabels : public QObject
{
    Q_OBJECT

private slots:
    void labelsStandApart_data();
    void labelsStandApart();
    void wideGraphHasTheUsualTicks();
    void tickerMayOutliveItsAxis();
    void labelsAreThoseOfTheLibrary();
    void numbersAreThoseOfTheLibrary();

private:
    static QVector<double> usualTicks(QCPAxis& axis)
    {
        QVector<double> ticks;
        QCPAxisTickerDateTime().generate(axis.range(), QLocale(), 'g', 6, ticks, nullptr, nullptr);
        return ticks;
    }
};

void tst_TimeLabels::labelsStandApart_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("period");
    QTest::addColumn<int>("width");
    for (const char* format : {"hh:mm:ss", "mm:ss", "yyyy-MM-dd hh:mm:ss"}) {
        for (const char* period : {"2", "10", "60", "90", "3600", "100000", "5000000"}) {
            for (const int width : {240, 330, 480, 700, 1300}) {
                QTest::addRow("%s, %s s on %d pixels", format, period, width)
                    << format << period << width;
            }
        }
    }
}

void tst_TimeLabels::labelsStandApart()
{
    QFETCH(QString, format);
    QFETCH(QString, period);
    QFETCH(int, width);
    TimeGraph stand({{"widget/timeFormat", format}, {"widget/timePeriod", period}});
    QVERIFY(stand.show({width, 300}));
    stand.refresh();
    stand.plot()->replot(QCustomPlot::rpImmediateRefresh);
    const QCPAxis& axis = *stand.plot()->xAxis;
    const QFontMetrics metrics(axis.tickLabelFont());
    const QVector<QString> labels = axis.tickVectorLabels();
    double end = -1e9; // Of the label before, in pixels.
    for (int i = 0; i < labels.size(); ++i) {
        const double key = axis.tickVector().at(i);
        if (axis.range().contains(key)) {
            const double half = metrics.horizontalAdvance(labels.at(i)) / 2.;
            QVERIFY2(axis.coordToPixel(key) - half > end, qPrintable(labels.at(i)));
            end = axis.coordToPixel(key) + half;
        }
    }
}

void tst_TimeLabels::wideGraphHasTheUsualTicks()
{
    TimeGraph stand({{"widget/timePeriod", "60"}});
    QVERIFY(stand.show({1600, 300}));
    stand.plot()->replot(QCustomPlot::rpImmediateRefresh);
    QCOMPARE(stand.plot()->xAxis->tickVector(), usualTicks(*stand.plot()->xAxis));
    stand.widget->resize(240, 300);
    stand.plot()->replot(QCustomPlot::rpImmediateRefresh);
    QVERIFY(stand.plot()->xAxis->tickVector().size() < usualTicks(*stand.plot()->xAxis).size());
}

void tst_TimeLabels::tickerMayOutliveItsAxis()
{
    auto plot = std::make_unique<QCustomPlot>();
    norvo::plot::setDateTimeLabels(plot->xAxis, "hh:mm:ss");
    const QSharedPointer<QCPAxisTicker> ticker = plot->xAxis->ticker();
    plot.reset();
    QVector<double> ticks;
    ticker->generate({0, 60}, QLocale(), 'g', 6, ticks, nullptr, nullptr);
    QVERIFY(ticks.size() > 3);
}

/// However long the axis runs, and when its format is another one.
void tst_TimeLabels::labelsAreThoseOfTheLibrary()
{
    QCustomPlot plot;
    plot.resize(800, 300);
    norvo::plot::setDateTimeLabels(plot.xAxis, "hh:mm:ss");
    const auto ours = plot.xAxis->ticker().dynamicCast<QCPAxisTickerDateTime>();
    QVERIFY(ours);
    const auto labels = [](QCPAxisTickerDateTime& ticker, double begin) {
        QVector<double> ticks;
        QVector<QString> found;
        ticker.generate({begin, begin + 60}, QLocale(), 'g', 6, ticks, nullptr, &found);
        return found;
    };
    QCPAxisTickerDateTime theirs;
    for (const QString format : {"hh:mm:ss", "ss", "mm"}) {
        ours->setDateTimeFormat(format);
        theirs.setDateTimeFormat(format);
        QCOMPARE(labels(*ours, 1.6e9), labels(theirs, 1.6e9));
    }
    for (double begin = 1.6e9; begin < 1.6e9 + 1500; begin += 7) {
        QCOMPARE(labels(*ours, begin), labels(theirs, begin));
    }
}

/// As its number format, its precision and its range change.
void tst_TimeLabels::numbersAreThoseOfTheLibrary()
{
    QCustomPlot ours;
    QCustomPlot theirs;
    norvo::plot::keepNumbers(ours.yAxis);
    QSet<QString> shown;
    for (const QString format : {"g", "f", "eb", "f"}) {
        for (const int precision : {2, 5}) {
            for (double most = 1; most < 1e6; most *= 1.9) {
                for (QCustomPlot* plot : {&ours, &theirs}) {
                    plot->resize(300, 300);
                    plot->yAxis->setNumberFormat(format);
                    plot->yAxis->setNumberPrecision(precision);
                    plot->yAxis->setRange(-most / 3, most);
                    plot->replot();
                }
                QCOMPARE(ours.yAxis->tickVectorLabels(), theirs.yAxis->tickVectorLabels());
                shown.insert(ours.yAxis->tickVectorLabels().last());
            }
        }
    }
    QVERIFY(shown.size() > 20);
    for (QCustomPlot* plot : {&ours, &theirs}) {
        plot->setLocale(QLocale(QLocale::German));
        plot->yAxis->setRange(0, 1);
        plot->replot();
    }
    QCOMPARE(ours.yAxis->tickVectorLabels(), theirs.yAxis->tickVectorLabels());
}

NORVO_TEST(tst_TimeLabels)
#include "tst_TimeLabels.moc"
