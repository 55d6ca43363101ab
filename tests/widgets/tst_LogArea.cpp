// SPDX-License-Identifier: GPL-3.0-or-later

#include "Stand.h"

#include "devices/MultilineDevice.h"
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
    void narrowForAMomentItLosesNoLines();
    void hiddenAreaKeepsTheNewestLines_data();
    void hiddenAreaKeepsTheNewestLines();
    void tallTextNeverShownLosesItsOldestLinesWhenShown();
    void tallTextHeldBackLosesItsOldestLinesWhenShown();
    void receivedLinesCannotBeUndone_data();
    void receivedLinesCannotBeUndone();
    void pictureWhileHiddenShowsTheStartWithoutScrolling();
    void fontChangedWhileHiddenActsAsOnATextEdit();
    void linesAreThoseOfATextEdit();
    void rowsOfALongTextAreLines();
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

void tst_LogArea::narrowForAMomentItLosesNoLines()
{
    LogArea area;
    area.setFont(QFont("Courier", 30));
    area.resize(800, 400);
    show(area);
    fill(area, 8000, QString(60, 'x') + ' ');
    area.resize(71, 400);
    QCoreApplication::processEvents();
    QVERIFY(area.document()->size().height() < kTallestDrawn);
    QCOMPARE(area.document()->blockCount(), 8000);
    QVERIFY(darkPixels(area.grab().toImage()) > 100);
    fill(area, 1, "more");
    area.resize(800, 400);
    QCoreApplication::processEvents();
    QCOMPARE(area.document()->blockCount(), 8001);
    QCOMPARE(area.document()->firstBlock().text(), QString(60, 'x') + " 0");
    QTRY_VERIFY(laidOutLines(area) > 8001); // wrapped again
}

void tst_LogArea::hiddenAreaKeepsTheNewestLines_data()
{
    QTest::addColumn<bool>("wasShown");
    QTest::newRow("never shown") << false;
    QTest::newRow("shown before") << true;
}

void tst_LogArea::hiddenAreaKeepsTheNewestLines()
{
    QFETCH(bool, wasShown);
    LogArea area;
    area.resize(800, 400);
    if (wasShown) {
        show(area);
        area.hide();
    }
    int most = 0;
    bool isEverShort = false; // Right behind a drop, too.
    for (int i = 0; i < 250'000; ++i) {
        area.appendLine(QString::number(i));
        const int count = area.document()->blockCount();
        most = qMax(most, count);
        isEverShort = isEverShort || count < qMin(i + 1, 100'000);
    }
    QVERIFY(!isEverShort);
    QCOMPARE(most, 112'000);
    QVERIFY(area.document()->blockCount() >= 100'000);
    QCOMPARE(lastLine(area), QString("249999"));

    for (int i = 0; i < 40'000; ++i) {
        area.appendLine(QString(1000, 'x'));
    }
    QVERIFY(area.document()->characterCount() <= 11'000'000);
    QVERIFY(area.document()->characterCount() >= 5'000'000);
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

void tst_LogArea::receivedLinesCannotBeUndone_data()
{
    QTest::addColumn<bool>("isHidden");
    QTest::newRow("received while shown") << false;
    QTest::newRow("received while hidden") << true;
}

void tst_LogArea::receivedLinesCannotBeUndone()
{
    QFETCH(bool, isHidden);
    LogArea area;
    show(area);
    fill(area, 5);
    area.setVisible(!isHidden);
    fill(area, 50);
    show(area);
    QTest::keyClick(&area, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&area, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(area.document()->blockCount(), 55);
}

void tst_LogArea::pictureWhileHiddenShowsTheStartWithoutScrolling()
{
    Stand<MultilineDevice> stand({{"widget/disableScrolling", "true"}});
    stand.widget->resize(400, 200);
    show(*stand.widget);
    stand.widget->hide();
    for (int i = 0; i < 20; ++i) {
        stand.device.input(i);
    }
    stand.widget->grab();
    auto* const area = stand.only<QTextEdit>();
    QVERIFY(area->verticalScrollBar()->maximum() > 100);
    QCOMPARE(area->verticalScrollBar()->value(), 0);
}

void tst_LogArea::fontChangedWhileHiddenActsAsOnATextEdit()
{
    LogArea area;
    QTextEdit edit;
    for (QTextEdit* each : {static_cast<QTextEdit*>(&area), &edit}) {
        each->resize(400, 200);
        show(*each);
        each->hide();
    }
    for (int i = 0; i < 30; ++i) {
        area.appendLine(QString::number(i));
        edit.append(QString::number(i));
    }
    for (QTextEdit* each : {static_cast<QTextEdit*>(&area), &edit}) {
        each->setFont(QFont("Courier", 40));
        show(*each);
    }
    QCOMPARE(area.verticalScrollBar()->maximum(), edit.verticalScrollBar()->maximum());
    QCOMPARE(area.verticalScrollBar()->value(), edit.verticalScrollBar()->value());
}

void tst_LogArea::linesAreThoseOfATextEdit()
{
    LogArea area;
    QTextEdit edit;
    edit.setUndoRedoEnabled(false);
    for (const char* const text : {"", "one", "<b>two</b>", "three", "four & five", "a &lt; b", "",
                                   "<font color='red'>six</font>", "seven\neight", "nine\tten"}) {
        area.appendLine(text);
        edit.append(text);
        QCOMPARE(area.toHtml(), edit.toHtml());
        QCOMPARE(area.textCursor().position(), edit.textCursor().position());
        QCOMPARE(area.currentCharFormat(), edit.currentCharFormat());
    }
}

void tst_LogArea::rowsOfALongTextAreLines()
{
    QStringList rows;
    for (int i = 0; i < 120; ++i) {
        rows.append(QString(49, 'x') + QString::number(i));
    }
    for (const QChar lineBreak : {QChar('\n'), QChar(QChar::LineSeparator)}) {
        LogArea area;
        area.appendLine(rows.join(lineBreak));
        QCOMPARE(area.toPlainText().split('\n'), rows);
    }
}

NORVO_TEST(tst_LogArea)
#include "tst_LogArea.moc"
