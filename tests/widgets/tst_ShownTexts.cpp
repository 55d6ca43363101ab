// SPDX-License-Identifier: GPL-3.0-or-later

// What a label and a log do with texts from a machine: they are content, never a document.

#include "LongText.h"
#include "Stand.h"

#include "devices/DropDownListDevice.h"
#include "devices/InputDevice.h"
#include "devices/Label.h"
#include "devices/MultilineDevice.h"
#include "devices/OutputDigitalDevice.h"
#include "devices/OutputGraphDevice.h"
#include "devices/OutputVector.h"
#include "TestMain.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <thread>

namespace {

/// A FIFO, and whether anybody has opened it for reading. Whoever did is let go at once.
class WatchedFifo
{
public:
    explicit WatchedFifo(const QString& path) : m_path(path.toLocal8Bit())
    {
        mkfifo(m_path.constData(), 0600);
        m_watch = std::thread([this] {
            while (!m_done) {
                const int fd = ::open(m_path.constData(), O_WRONLY | O_NONBLOCK);
                if (fd >= 0) { // it needs a reader to succeed
                    m_opened = true;
                    ::close(fd);
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
    }
    ~WatchedFifo()
    {
        m_done = true;
        m_watch.join();
    }
    bool wasOpened() const { return m_opened; }

private:
    const QByteArray m_path;
    std::atomic<bool> m_done{false};
    std::atomic<bool> m_opened{false};
    std::thread m_watch;
};

QImage pictureOf(QLabel& label)
{
    return label.grab().toImage();
}

/// As `like` would look with that text in that format.
QImage pictureOf(const QString& text, const QLabel& like, Qt::TextFormat format)
{
    QWidget parent;
    auto* const label = new QLabel(text, &parent);
    label->setTextFormat(format);
    label->setFont(like.font());
    label->setWordWrap(true);
    label->setAlignment(like.alignment());
    label->resize(like.size());
    return pictureOf(*label);
}

QString nested(const QString& open, const QString& close, int depth)
{
    return open.repeated(depth) + "x" + close.repeated(depth);
}

} // namespace

class tst_ShownTexts : public QObject
{
    Q_OBJECT

private slots:
    void inlineMarksAreShownAsMarks_data();
    void inlineMarksAreShownAsMarks();
    void documentIsShownVerbatim_data();
    void documentIsShownVerbatim();
    void documentIsShownVerbatimInAWarning_data() { documentIsShownVerbatim_data(); }
    void documentIsShownVerbatimInAWarning();
    void markedTextAfterADocumentIsShownAsMarksAgain();
    void fileOfATextIsNeverOpened_data();
    void fileOfATextIsNeverOpened();
    void nestedTablesTakeNoTime_data();
    void nestedTablesTakeNoTime();
    void captionsShowDocumentsVerbatim();

private:
    QTemporaryDir m_folder;
};

void tst_ShownTexts::inlineMarksAreShownAsMarks_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("bold") << "<b>mark</b>";
    QTest::newRow("coloured") << "<font color='red'>mark</font>";
    QTest::newRow("coloured, upper case") << "<FONT COLOR=\"#ff0000\" SIZE=4>mark</FONT>";
    QTest::newRow("styled")
        << "<span style=\"color: rgb(255, 0, 0); font-weight: bold\">mark</span>";
    QTest::newRow("heading") << "<h2>mark</h2>";
    QTest::newRow("link") << "<a href=\"page\">mark</a>";
    QTest::newRow("in a paragraph") << "<p align=\"center\"><i>ma</i><br/><u>rk</u></p>";
    QTest::newRow("a table") << "<table><tr><td>mark</td></tr></table>";
    QTest::newRow("two lists, one after the other") << "<ul><li>m</li></ul>a<ol><li>rk</li></ol>";
    QTest::newRow("entity") << "<b>m</b>&lt;ark";
}

void tst_ShownTexts::inlineMarksAreShownAsMarks()
{
    QFETCH(QString, text);
    Stand<Label> label;
    show(*label.widget);
    label.device.input(text);
    QCOMPARE(pictureOf(*label.only<QLabel>()),
             pictureOf(text, *label.only<QLabel>(), Qt::AutoText));
    QCOMPARE(label.only<QLabel>()->text(), text);

    Stand<MultilineDevice> log;
    log.device.input(text);
    QTextEdit plain;
    plain.append(text);
    QCOMPARE(log.only<QTextEdit>()->toPlainText(), plain.toPlainText());
    QVERIFY(!log.only<QTextEdit>()->toPlainText().contains('>'));
}

void tst_ShownTexts::documentIsShownVerbatim_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("picture") << "<img src='/nowhere/a.png'>";
    QTest::newRow("picture after a mark") << "<b>a</b> <IMG SRC=\"/nowhere/a.png\">";
    QTest::newRow("picture, with a space") << "<b>a</b>< img src='/nowhere/a.png'>";
    QTest::newRow("picture, in quotes") << "<b>a</b><'img' src='/nowhere/a.png'>";
    QTest::newRow("picture in an attribute") << "<b title=\"<img src='/nowhere/a'>\">a</b>";
    QTest::newRow("background") << "<body background='/nowhere/a.png'>a</body>";
    QTest::newRow("background of a cell") << "<table><tr><td background='/nowhere/a'>a</table>";
    QTest::newRow("background by style") << "<p style='background-image: url(/nowhere/a)'>a</p>";
    QTest::newRow("address, coded") << "<p style='background-image: &#117;rl(/nowhere/a)'>a</p>";
    QTest::newRow("address, escaped") << "<p style='background-image: u\\72l(/nowhere/a)'>a</p>";
    QTest::newRow("style sheet") << "<link rel='stylesheet' href='/nowhere/a.css'><b>a</b>";
    QTest::newRow("styles") << "<style>@import url(/nowhere/a.css);</style><b>a</b>";
    QTest::newRow("nested tables") << nested("<table><tr><td>", "</td></tr></table>", 2);
    QTest::newRow("nested lists") << nested("<ul><li>", "</li></ul>", 2);
    QTest::newRow("list in a table") << "<table><tr><td><ol><li>a</ol></table>";
    QTest::newRow("table closed by another's end") << "<table><tr><td></ul><table><tr><td>a";
    QTest::newRow("frames") << "<div style='float: left'>a<div style='float: left'>b</div></div>";
    QTest::newRow("huge letters") << "<span style='font-size: 30000pt'>a</span>";
}

void tst_ShownTexts::documentIsShownVerbatim()
{
    QFETCH(QString, text);
    Stand<Label> label;
    show(*label.widget);
    label.device.input(text);
    QCOMPARE(pictureOf(*label.only<QLabel>()),
             pictureOf(text, *label.only<QLabel>(), Qt::PlainText));
    QCOMPARE(label.only<QLabel>()->text(), text);

    Stand<MultilineDevice> log;
    log.device.input(QString("before"));
    log.device.input(text);
    log.device.input(QString("after"));
    QCOMPARE(log.only<QTextEdit>()->toPlainText(), "before\n" + text + "\nafter");
    QCOMPARE(log.only<QTextEdit>()->document()->blockCount(), 3);
}

void tst_ShownTexts::documentIsShownVerbatimInAWarning()
{
    QFETCH(QString, text);
    Stand<Label> label;
    label.device.inputWarning(true);
    label.device.input("one\n" + text); // its first line is plain, the whole is not
    QTextDocument shown;
    shown.setHtml(label.only<QLabel>()->text());
    QCOMPARE(shown.toPlainText(), "one " + text);
    for (const QTextFormat& format : shown.allFormats()) {
        QVERIFY(!format.isImageFormat() && !format.isTableFormat() && !format.isListFormat());
    }
}

void tst_ShownTexts::markedTextAfterADocumentIsShownAsMarksAgain()
{
    Stand<Label> label;
    label.device.input(QString("<img src='/nowhere/a.png'>"));
    label.device.input(QString("<b>a</b>"));
    QCOMPARE(label.only<QLabel>()->textFormat(), Qt::AutoText);
}

void tst_ShownTexts::fileOfATextIsNeverOpened_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("picture") << "<img src=\"file://%1\">";
    QTest::newRow("picture by path") << "<img src=\"%1\">";
    QTest::newRow("background") << "<table><tr><td background=\"%1\">a</td></tr></table>";
    QTest::newRow("background by style") << "<p style=\"background-image: url(%1)\">a</p>";
    QTest::newRow("style sheet") << "<link rel=\"stylesheet\" href=\"%1\"><b>a</b>";
}

void tst_ShownTexts::fileOfATextIsNeverOpened()
{
    QFETCH(QString, text);
    const QString path = m_folder.filePath("fifo" + QString(QTest::currentDataTag()).remove(' '));
    WatchedFifo fifo(path);
    text = text.arg(path);
    Stand<Label> label({{"Value", text}});
    Stand<Label> warning;
    Stand<MultilineDevice> log;
    Stand<OutputDigitalDevice> readout({{"name", text}, {"widget/units", text}});
    show(*label.widget);
    show(*warning.widget);
    show(*log.widget);
    show(*readout.widget);
    label.device.input(text);
    warning.device.inputWarning(true);
    warning.device.input(text);
    log.device.input(text);
    QTest::qWait(50);
    for (auto* const shown : {&label, &warning}) { // nor with the text that comes after it
        shown->device.input(QString("<b>a</b>"));
    }
    QTest::qWait(50);
    QVERIFY(!fifo.wasOpened());
}

void tst_ShownTexts::nestedTablesTakeNoTime_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("14") << 14;
    QTest::newRow("20") << 20;
    QTest::newRow("1000") << 1000;
}

void tst_ShownTexts::nestedTablesTakeNoTime()
{
    QFETCH(int, depth);
    const QString text = nested("<table><tr><td>", "</td></tr></table>", depth);
    Stand<Label> label;
    Stand<MultilineDevice> log;
    show(*label.widget);
    show(*log.widget);
    const double start = cpuSeconds();
    label.device.input(text);
    log.device.input(text);
    QCoreApplication::processEvents();
    QVERIFY2(cpuSeconds() - start < 1, qPrintable(QString::number(cpuSeconds() - start)));
}

void tst_ShownTexts::captionsShowDocumentsVerbatim()
{
    const QString text = nested("<table><tr><td>", "</td></tr></table>", 3);
    Stand<OutputDigitalDevice> readout({{"name", text}, {"widget/units", text}});
    Stand<InputDevice> field({{"name", text}, {"units", text}});
    Stand<DropDownListDevice> list({{"widget/label", text}});
    Stand<OutputGraphDevice> graph({{"name", text}});
    Stand<OutputVector> vector({{"name", text}});
    int texts = 0;
    for (const BaseWidget* widget : {readout.widget.get(), field.widget.get(), list.widget.get(),
                                     graph.widget.get(), vector.widget.get()}) {
        for (const QLabel* label : widget->findChildren<QLabel*>()) {
            if (label->text() == text) {
                QCOMPARE(label->textFormat(), Qt::PlainText);
                ++texts;
            }
        }
    }
    QCOMPARE(texts, 7);
}

NORVO_TEST(tst_ShownTexts)
#include "tst_ShownTexts.moc"
