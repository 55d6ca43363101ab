#include "widgets/LogArea.h"
#include "TestMain.h"

#include <QtTest>

namespace {

constexpr int kTallestDrawn = 8388607;

void fill(LogArea& area, int lines, const QString& text = "line")
{
    for (int i = 0; i < lines; ++i) {
        area.appendLine(text + QString::number(i));
    }
}

void show(QWidget& widget)
{
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
}

int laidOutLines(const LogArea& area)
{
    int lines = 0;
    for (QTextBlock block = area.document()->begin(); block.isValid(); block = block.next()) {
        lines += block.layout()->lineCount();
    }
    return lines;
}

int darkPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            count += qGray(image.pixel(x, y)) < 60;
        }
    }
    return count;
}

QString lastLine(const LogArea& area)
{
    return area.document()->lastBlock().text();
}

} // namespace

class tst_LogArea : public QObject
{
    Q_OBJECT

private slots:
    void visibleAreaLaysOutAtOnce();
    void hiddenAreaHoldsTheTextAndDoesNotLayOut_data();
    void hiddenAreaHoldsTheTextAndDoesNotLayOut();
    void shownAgainItStandsWhereTheTextEnds();
    void shownAgainItStaysWhereTheReaderWas();
    void textChangedIsMadeUpForWhenShown();
    void pictureOfAHiddenAreaShowsTheHeldLines();
    void areaMayDieWithHeldLines();

    void tallTextLosesItsOldestLines();
    void narrowedTallTextLosesItsOldestLines();
    void tallTextNeverShownLosesItsOldestLinesWhenShown();
    void tallTextHeldBackLosesItsOldestLinesWhenShown();
    void editsCanStillBeUndoneAfterwards();
};

void tst_LogArea::visibleAreaLaysOutAtOnce()
{
    LogArea area;
    area.resize(400, 200);
    show(area);
    fill(area, 10);
    QCOMPARE(laidOutLines(area), 10);
}

void tst_LogArea::hiddenAreaHoldsTheTextAndDoesNotLayOut_data()
{
    QTest::addColumn<int>("linesBefore");
    QTest::newRow("never shown") << -1;
    QTest::newRow("shown empty") << 0;
    QTest::newRow("shown with lines") << 5;
}

void tst_LogArea::hiddenAreaHoldsTheTextAndDoesNotLayOut()
{
    QFETCH(int, linesBefore);
    LogArea area;
    area.resize(400, 200);
    if (linesBefore >= 0) {
        show(area);
        fill(area, linesBefore);
        area.hide();
    }
    const int laidOut = laidOutLines(area);
    fill(area, 100);
    QCoreApplication::processEvents();
    QCOMPARE(laidOutLines(area), laidOut);
    QCOMPARE(area.document()->blockCount(), 100 + qMax(linesBefore, 0));
    QCOMPARE(lastLine(area), QString("line99"));
    area.show();
    QCOMPARE(laidOutLines(area), 100 + qMax(linesBefore, 0));
}

void tst_LogArea::shownAgainItStandsWhereTheTextEnds()
{
    LogArea area;
    area.resize(400, 200);
    show(area);
    area.hide();
    fill(area, 100);
    show(area);
    QVERIFY(area.verticalScrollBar()->maximum() > 500);
    QCOMPARE(area.verticalScrollBar()->value(), area.verticalScrollBar()->maximum());
}

void tst_LogArea::shownAgainItStaysWhereTheReaderWas()
{
    LogArea area;
    area.resize(400, 200);
    show(area);
    fill(area, 100);
    area.moveCursor(QTextCursor::Start);
    const int position = area.verticalScrollBar()->value();
    QVERIFY(position < 10);
    area.hide();
    fill(area, 100);
    show(area);
    QCOMPARE(area.verticalScrollBar()->value(), position);
}

void tst_LogArea::textChangedIsMadeUpForWhenShown()
{
    LogArea area;
    show(area);
    area.hide();
    QSignalSpy changes(&area, &QTextEdit::textChanged);
    fill(area, 3);
    QCOMPARE(changes.size(), 0);
    area.show();
    QCOMPARE(changes.size(), 1);
}

void tst_LogArea::pictureOfAHiddenAreaShowsTheHeldLines()
{
    LogArea area;
    area.resize(400, 200);
    show(area);
    area.hide();
    fill(area, 20);
    QVERIFY(darkPixels(area.grab().toImage()) > 300);
    QCOMPARE(laidOutLines(area), 20);
}

void tst_LogArea::areaMayDieWithHeldLines()
{
    auto area = std::make_unique<LogArea>();
    show(*area);
    area->hide();
    fill(*area, 3);
    const QPointer<QTextDocument> document = area->document();
    area.reset();
    QVERIFY(!document);
}

void tst_LogArea::tallTextLosesItsOldestLines()
{
    LogArea area;
    area.resize(300, 100);
    show(area);
    area.setFont(QFont("Courier", 1000));
    fill(area, 6000, ".");
    QVERIFY(area.document()->size().height() < kTallestDrawn);
    QVERIFY(area.document()->size().height() > kTallestDrawn * 0.8);
    QVERIFY(area.document()->firstBlock().text() != ".0");
    QCOMPARE(lastLine(area), QString(".5999"));
    QCOMPARE(area.verticalScrollBar()->value(), area.verticalScrollBar()->maximum());
}

void tst_LogArea::narrowedTallTextLosesItsOldestLines()
{
    LogArea area;
    area.setFont(QFont("Courier", 300));
    area.resize(3000, 100);
    show(area);
    fill(area, 10000, ".");
    QCOMPARE(area.document()->blockCount(), 10000);
    area.resize(400, 100);
    QVERIFY(area.document()->size().height() < kTallestDrawn);
    QVERIFY(area.document()->blockCount() < 10000);
    QCOMPARE(lastLine(area), QString(".9999"));
}

void tst_LogArea::tallTextNeverShownLosesItsOldestLinesWhenShown()
{
    LogArea area;
    area.setFont(QFont("Courier", 1000));
    area.resize(300, 100);
    fill(area, 20000, ".");
    QCOMPARE(area.document()->blockCount(), 20000);
    show(area);
    QVERIFY(area.document()->size().height() < kTallestDrawn);
    QCOMPARE(lastLine(area), QString(".19999"));
    area.resize(200, 100);
    QVERIFY(area.document()->size().height() < kTallestDrawn);
}

void tst_LogArea::tallTextHeldBackLosesItsOldestLinesWhenShown()
{
    LogArea area;
    area.setFont(QFont("Courier", 1000));
    area.resize(300, 100);
    show(area);
    area.hide();
    fill(area, 20000, ".");
    QCOMPARE(area.document()->blockCount(), 20000);
    show(area);
    QVERIFY(area.document()->size().height() < kTallestDrawn);
    QCOMPARE(lastLine(area), QString(".19999"));
}

void tst_LogArea::editsCanStillBeUndoneAfterwards()
{
    LogArea area;
    area.setFont(QFont("Courier", 1000));
    area.resize(300, 100);
    fill(area, 20000, ".");
    show(area);
    const int lines = area.document()->blockCount();
    QTest::keyClicks(&area, "x");
    QCOMPARE(lastLine(area), QString(".19999x"));
    QTest::keyClick(&area, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(lastLine(area), QString(".19999"));
    QCOMPARE(area.document()->blockCount(), lines);
}

NORVO_TEST(tst_LogArea)
#include "tst_LogArea.moc"
