// SPDX-License-Identifier: GPL-3.0-or-later

#include "GraphParts.h"
#include "MessageLog.h"
#include "TestMain.h"

#include <QtTest>

/// Senders and their colours. Times are given, so that nothing waits.
class tst_GraphOutputWidgetCurves : public QObject
{
    Q_OBJECT

private slots:
    void firstSenderIsOrangeWithoutLegend();
    void secondSenderIsGreenAndBringsTheLegend();
    void coloursGoByTheCount_data();
    void coloursGoByTheCount();
    void coloursCountAfreshAfterDeinitialise();

    void fillIsTheCurvesColourHalfTransparent();
    void colourChangeKeepsTheFill();
    void colourChangeDoesNotFill();
    void colourTexts_data();
    void colourTexts();
    void settingsOfAnUnknownSenderBeginItsCurve();
    void namesAreDrawnVerbatim();
    void strangeNumbersAreTakenAndDrawn();
    void manySendersAreTaken();
    void longNameOfACurveIsCut();
};

void tst_GraphOutputWidgetCurves::firstSenderIsOrangeWithoutLegend()
{
    TimeGraph stand;
    stand.input(1, "A", 100);
    QCOMPARE(stand.curve(0)->pen().color(), QColor(250, 140, 0));
    QVERIFY(isCosmeticSolid(stand.curve(0)->pen()));
    QCOMPARE(stand.curve(0)->brush(), QBrush(Qt::NoBrush));
    QCOMPARE(stand.curve(0)->name(), QString("A"));
    QVERIFY(!stand.plot()->legend->visible());
}

void tst_GraphOutputWidgetCurves::secondSenderIsGreenAndBringsTheLegend()
{
    TimeGraph stand;
    QCPLayoutInset* const inset = stand.plot()->axisRect(0)->insetLayout();
    inset->setInsetAlignment(0, Qt::AlignBottom | Qt::AlignLeft);
    stand.input(1, "B", 100);
    QCOMPARE(inset->insetAlignment(0), Qt::AlignBottom | Qt::AlignLeft);
    stand.input(1, "A", 100);
    QCOMPARE(stand.curve(1)->pen().color(), QColor(Qt::green));
    QVERIFY(isCosmeticSolid(stand.curve(1)->pen()));
    QCOMPARE(stand.curve(1)->brush(), QBrush(Qt::NoBrush));
    QVERIFY(stand.plot()->legend->visible());
    QCOMPARE(inset->insetAlignment(0), Qt::AlignTop | Qt::AlignRight);
    QCOMPARE(stand.legend(), QStringList({"B", "A"}));
    QCOMPARE(stand.curve(0)->pen().color(), QColor(250, 140, 0));
}

void tst_GraphOutputWidgetCurves::coloursGoByTheCount_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QColor>("colour");
    const QVector<QColor> colours{
        QColor(250, 140, 0), Qt::green,     Qt::blue,      Qt::cyan,     Qt::magenta,
        Qt::yellow,          Qt::darkRed,   Qt::darkGreen, Qt::darkBlue, Qt::darkCyan,
        Qt::darkMagenta,     Qt::lightGray, Qt::red,       Qt::green,    Qt::blue};
    for (int i = 0; i < colours.size(); ++i) {
        QTest::addRow("sender %d", i + 1) << i + 1 << colours[i];
    }
    QTest::newRow("sender 24") << 24 << QColor(Qt::lightGray);
    QTest::newRow("sender 25") << 25 << QColor(Qt::red);
}

void tst_GraphOutputWidgetCurves::coloursGoByTheCount()
{
    QFETCH(int, count);
    QFETCH(QColor, colour);
    TimeGraph stand;
    for (int i = 1; i <= count; ++i) {
        stand.input(i, QString::number(100 - i), 100);
    }
    QCOMPARE(stand.plot()->graphCount(), count);
    QCOMPARE(stand.curve(count - 1)->pen().color(), colour);
}

void tst_GraphOutputWidgetCurves::coloursCountAfreshAfterDeinitialise()
{
    TimeGraph stand;
    stand.input(1, "A", 100);
    stand.input(1, "B", 100);
    stand.widget->deinitialise();
    QVERIFY(stand.widget->isInitialised());
    QCOMPARE(stand.plot()->graphCount(), 2);
    stand.input(2, "B", 101);
    QCOMPARE(stand.curves(), QString("A: (100, 1) | B: (100, 1) | B: (101, 2)"));
    QCOMPARE(stand.curve(2)->pen().color(), QColor(250, 140, 0));
}

void tst_GraphOutputWidgetCurves::fillIsTheCurvesColourHalfTransparent()
{
    TimeGraph stand;
    stand.graph().inputFill("A", true);
    QCOMPARE(stand.curve(0)->brush(), QBrush(QColor(250, 140, 0, 128)));
    QCOMPARE(stand.curve(0)->pen().color().alpha(), 255);
    stand.graph().inputFill("A", false);
    QCOMPARE(stand.curve(0)->brush(), QBrush(Qt::NoBrush));
}

void tst_GraphOutputWidgetCurves::colourChangeKeepsTheFill()
{
    TimeGraph stand;
    stand.graph().inputFill("A", true);
    stand.graph().inputColor("A", "#102030");
    QCOMPARE(stand.curve(0)->pen().color(), QColor(0x10, 0x20, 0x30));
    QVERIFY(isCosmeticSolid(stand.curve(0)->pen()));
    QCOMPARE(stand.curve(0)->brush(), QBrush(QColor(0x10, 0x20, 0x30, 128)));
}

void tst_GraphOutputWidgetCurves::colourChangeDoesNotFill()
{
    TimeGraph stand;
    stand.graph().inputColor("A", "red");
    QCOMPARE(stand.curve(0)->pen().color(), QColor(Qt::red));
    QCOMPARE(stand.curve(0)->brush().style(), Qt::NoBrush);
    stand.graph().inputFill("A", true);
    stand.graph().inputFill("A", false);
    stand.graph().inputColor("A", "blue");
    QCOMPARE(stand.curve(0)->brush().style(), Qt::NoBrush);
}

void tst_GraphOutputWidgetCurves::colourTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("name") << "orange" << QColor(255, 165, 0);
    QTest::newRow("name in capitals") << "Dark Red" << QColor(0x8b, 0, 0);
    QTest::newRow("three digits") << "#f80" << QColor(255, 136, 0);
    QTest::newRow("six digits") << "#ff8800" << QColor(255, 136, 0);
    QTest::newRow("unknown is invalid, in silence") << "oranje" << QColor();
    QTest::newRow("empty is invalid, in silence") << "" << QColor();
}

void tst_GraphOutputWidgetCurves::colourTexts()
{
    QFETCH(QString, text);
    QFETCH(QColor, colour);
    TimeGraph stand;
    stand.input(1, "A", 100);
    MessageLog log;
    stand.graph().inputColor("A", text);
    QCOMPARE(stand.curve(0)->pen().color().isValid(), colour.isValid());
    QCOMPARE(stand.curve(0)->pen().color().rgb(), colour.rgb());
    QCOMPARE(log.take(), QStringList());
    QVERIFY(!stand.plot()->toPixmap(200, 100).isNull());
}

void tst_GraphOutputWidgetCurves::settingsOfAnUnknownSenderBeginItsCurve()
{
    TimeGraph stand;
    stand.graph().inputFill("A", false);
    stand.graph().inputColor("B", "red");
    stand.graph().inputName("C", "Sea");
    QCOMPARE(stand.curves(), QString("A:  | B:  | Sea: "));
    QCOMPARE(stand.curve(0)->pen().color(), QColor(250, 140, 0));
    QCOMPARE(stand.curve(2)->pen().color(), QColor(Qt::blue));
    QVERIFY(stand.plot()->legend->visible());
}

void tst_GraphOutputWidgetCurves::namesAreDrawnVerbatim()
{
    TimeGraph stand;
    stand.input(1, "A", 100);
    stand.input(1, "B", 100);
    const QFontMetrics metrics(stand.plot()->legend->font());
    const auto widthWithName = [&](const QString& name) {
        stand.graph().inputName("A", name);
        stand.plot()->toPixmap(600, 300);
        return stand.plot()->legend->item(0)->outerRect().width();
    };
    const QString marked = "<b>bold</b> <img src='/etc/hostname'>";
    const int more = widthWithName(marked) - widthWithName("bold");
    const int letters = metrics.boundingRect(marked).width() - metrics.boundingRect("bold").width();
    QVERIFY2(qAbs(more - letters) <= 4, qPrintable(QString("%1, %2").arg(more).arg(letters)));
}

void tst_GraphOutputWidgetCurves::strangeNumbersAreTakenAndDrawn()
{
    TimeGraph stand;
    const double now = secondsNow();
    const QVector<double> values{1, qQNaN(), 2, qInf(), 3, -qInf(), 1e308, -1e308, 5e-324};
    for (int i = 0; i < values.size(); ++i) {
        stand.input(values[i], "A", now + i * 0.01);
    }
    stand.graph().inputFill("A", true);
    QCOMPARE(pointCount(stand.curve(0)), values.size());
    stand.refresh();
    QVERIFY(!stand.plot()->toPixmap(200, 100).isNull());
    const QCPRange range = stand.plot()->yAxis->range();
    QVERIFY(qIsFinite(range.lower) && qIsFinite(range.upper));
}

void tst_GraphOutputWidgetCurves::manySendersAreTaken()
{
    TimeGraph stand;
    constexpr int count = 5000;
    for (int i = 0; i < count; ++i) {
        stand.input(i, QString::number(i), 100);
    }
    QCOMPARE(stand.plot()->graphCount(), count);
    QCOMPARE(stand.plot()->legend->itemCount(), count);
    stand.widget->deinitialise();
    stand.input(1, "0", 100);
    QCOMPARE(stand.plot()->graphCount(), count + 1);
}

void tst_GraphOutputWidgetCurves::longNameOfACurveIsCut()
{
    const QString name = QString("name ").repeated(200'000);
    TimeGraph stand;
    MessageLog log;
    stand.input(1, name, 100);
    stand.graph().inputName("B", name);
    stand.graph().inputName("B", name);
    for (int i = 0; i < 2; ++i) {
        const QString shown = stand.curve(i)->name();
        QVERIFY(shown.size() < 1'000 && shown.endsWith(QChar(0x2026)));
        QVERIFY(name.startsWith(shown.left(shown.size() - 1)));
    }
    QCOMPARE(log.take().filter("1000000").size(), 1);
}

NORVO_TEST(tst_GraphOutputWidgetCurves)
#include "tst_GraphOutputWidgetCurves.moc"
