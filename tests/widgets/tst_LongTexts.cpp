// SPDX-License-Identifier: GPL-3.0-or-later

#include "LongText.h"
#include "MessageLog.h"
#include "Stand.h"

#include "devices/Label.h"
#include "devices/MultilineDevice.h"
#include "TestMain.h"

#include <QtTest>

namespace {

QString repeatedTo(const QString& part, int size)
{
    return part.repeated(size / part.size() + 1).left(size);
}

} // namespace

/// A text that is longer than can be shown takes little time, and is cut.
class tst_LongTexts : public QObject
{
    Q_OBJECT

private slots:
    void logOfManyLinesInOneTextIsCut();
    void longTextTakesLittleTime_data();
    void longTextTakesLittleTime();
    void longTextIsCutWithAMarkAndReportedOnce();
    void longLineOfALogIsCutAndTheOthersStay();
    void cutNeverPartsASurrogatePair();

private:
    QTemporaryDir m_folder;
};

void tst_LongTexts::logOfManyLinesInOneTextIsCut()
{
    for (const QChar lineBreak : {QChar('\n'), QChar(QChar::LineSeparator)}) {
        Stand<MultilineDevice> log;
        MessageLog messages;
        log.device.input(QString(4'000, lineBreak));
        QCOMPARE(log.only<QTextEdit>()->document()->blockCount(), 4'001);
        QCOMPARE(messages.take(), QStringList());
        log.device.input(QString(15'000, lineBreak));
        const QTextDocument* const document = log.only<QTextEdit>()->document();
        QVERIFY(document->blockCount() < 10'000);
        QVERIFY(document->lastBlock().text().endsWith(QChar(0x2026)));
        QCOMPARE(messages.take().filter("15000").size(), 1);
    }
}

void tst_LongTexts::longTextTakesLittleTime_data()
{
    QTest::addColumn<QString>("text");
    constexpr int kMillion = 1'000'000;
    QTest::newRow("paragraph") << "<p>" + repeatedTo("word ", kMillion);
    QTest::newRow("paragraphs") << repeatedTo("<p>word ", kMillion);
    QTest::newRow("unbroken, 100 kB") << QString(100'000, 'x');
    QTest::newRow("unbroken") << QString(kMillion, 'x');
    QTest::newRow("words") << repeatedTo("word ", kMillion);
    QTest::newRow("lines") << repeatedTo("word\n", kMillion);
    QTest::newRow("empty lines") << QString(kMillion, '\n');
    QTest::newRow("line separators") << QString(kMillion, QChar(QChar::LineSeparator));
    QTest::newRow("brackets") << QString(kMillion, '<');
    QTest::newRow("nested marks") << repeatedTo("<b>", 3'999) + "x";
}

void tst_LongTexts::longTextTakesLittleTime()
{
    QFETCH(QString, text);
    Stand<Label> label;
    Stand<MultilineDevice> log;
    show(*label.widget);
    show(*log.widget);
    MessageLog messages;
    const double start = cpuSeconds();
    label.device.input(text);
    QCoreApplication::processEvents();
    const double afterLabel = cpuSeconds();
    log.device.input(text);
    QCoreApplication::processEvents();
    const double end = cpuSeconds();
    const QString figures = QString("label %1 ms, log %2 ms")
                                .arg((afterLabel - start) * 1e3)
                                .arg((end - afterLabel) * 1e3);
    qInstallMessageHandler(nullptr);
    QVERIFY2(end - start < 1, qPrintable(figures));
}

void tst_LongTexts::longTextIsCutWithAMarkAndReportedOnce()
{
    const QString text = repeatedTo("word ", 1'000'000);
    Stand<Label> label;
    MessageLog messages;
    label.device.input(text);
    label.device.input(text);
    const QString shown = label.only<QLabel>()->text();
    QCOMPARE(shown.back(), QChar(0x2026));
    QVERIFY(shown.size() >= 10'000 && shown.size() < 100'000);
    QVERIFY(text.startsWith(shown.left(shown.size() - 1)));
    QCOMPARE(messages.take().filter("1000000").size(), 1);

    Stand<MultilineDevice> log;
    log.device.input(text);
    log.device.input(text);
    const QTextBlock line = log.only<QTextEdit>()->document()->lastBlock();
    QCOMPARE(line.text().back(), QChar(0x2026));
    QVERIFY(text.startsWith(line.text().left(line.text().size() - 1)));
    QCOMPARE(messages.take().filter("1000000").size(), 1);
}

void tst_LongTexts::longLineOfALogIsCutAndTheOthersStay()
{
    Stand<MultilineDevice> log;
    MessageLog messages;
    log.device.input("first\n" + QString(10'000, 'x') + "\nlast");
    const QStringList lines = log.only<QTextEdit>()->toPlainText().split('\n');
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.at(0), QString("first"));
    QVERIFY(lines.at(1).size() < 10'000 && lines.at(1).endsWith(QChar(0x2026)));
    QCOMPARE(lines.at(2), QString("last"));
    QCOMPARE(messages.take().size(), 1);
}

void tst_LongTexts::cutNeverPartsASurrogatePair()
{
    const QString pair = QString::fromUtf8("\xf0\x9f\x98\x80");
    for (const QString& before : {QString(), QString("a")}) {
        Stand<Label> label;
        label.device.input(before + repeatedTo(pair, 200'000));
        const QString shown = label.only<QLabel>()->text();
        QVERIFY(!shown.at(shown.size() - 2).isHighSurrogate());
    }
}

NORVO_TEST(tst_LongTexts)
#include "tst_LongTexts.moc"
