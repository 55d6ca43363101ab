// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/BoundedLabel.h"
#include "TestMain.h"

#include <QtTest>

#include <functional>

Q_DECLARE_METATYPE(std::function<void(QLabel&)>)

/// The heights that it keeps are those that a plain label finds anew each time.
class tst_BoundedLabel : public QObject
{
    Q_OBJECT

private slots:
    void heightsAreThoseOfAPlainLabel_data();
    void heightsAreThoseOfAPlainLabel();
    void heightsFollowEveryChange_data();
    void heightsFollowEveryChange();
    void needsNoMoreThanTheScreen();

private:
    static void compareHeights(const BoundedLabel& label, const QLabel& plain)
    {
        for (int width : {60, 400, 20, 61, 1, 0, 90, 59, 200, 30, 1000, 45, 60, 10, 300, 120}) {
            QCOMPARE(label.heightForWidth(width), plain.heightForWidth(width));
        }
    }
    static void setUp(QLabel& label)
    {
        label.setWordWrap(true);
        label.setFont(QFont("Arial", 15));
        label.setTextFormat(Qt::PlainText);
    }
};

void tst_BoundedLabel::heightsAreThoseOfAPlainLabel_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Qt::TextFormat>("format");
    QTest::newRow("a number") << "12.5" << Qt::PlainText;
    QTest::newRow("words") << "Pump in the second hall is off" << Qt::PlainText;
    QTest::newRow("one long word") << "Druckerhoehungsanlagenschalter" << Qt::PlainText;
    QTest::newRow("lines") << "Pump\nis\noff since 12:00" << Qt::PlainText;
    QTest::newRow("nothing") << "" << Qt::PlainText;
    QTest::newRow("marks") << "Pump <b>in the second</b> hall<br>is off" << Qt::AutoText;
    QTest::newRow("table") << "<table><tr><td>a b c d e f</td><td>g h</td></tr></table>"
                           << Qt::RichText;
}

void tst_BoundedLabel::heightsAreThoseOfAPlainLabel()
{
    QFETCH(QString, text);
    QFETCH(Qt::TextFormat, format);
    BoundedLabel label;
    QLabel plain;
    for (QLabel* each : {static_cast<QLabel*>(&label), &plain}) {
        setUp(*each);
        each->setTextFormat(format);
        each->setText(text);
    }
    compareHeights(label, plain);
    QCOMPARE(label.sizeHint(), plain.sizeHint());
}

void tst_BoundedLabel::heightsFollowEveryChange_data()
{
    using Change = std::function<void(QLabel&)>;
    QTest::addColumn<Change>("change");
    const auto row = [](const char* name, const Change& change) { QTest::newRow(name) << change; };
    row("text", [](QLabel& label) { label.setText("On"); });
    row("font", [](QLabel& label) { label.setFont(QFont("Arial", 30)); });
    row("margin", [](QLabel& label) { label.setMargin(9); });
    row("margins around", [](QLabel& label) { label.setContentsMargins(9, 9, 9, 9); });
    row("indent", [](QLabel& label) {
        label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
        label.setIndent(20);
    });
    row("frame", [](QLabel& label) { label.setFrameStyle(QFrame::Box); });
    row("least size", [](QLabel& label) { label.setMinimumSize(150, 80); });
    row("one line", [](QLabel& label) { label.setWordWrap(false); });
    row("style sheet",
        [](QLabel& label) { label.setStyleSheet("padding: 7px; font-size: 30px;"); });
}

void tst_BoundedLabel::heightsFollowEveryChange()
{
    using Change = std::function<void(QLabel&)>;
    QFETCH(Change, change);
    BoundedLabel label;
    QLabel plain;
    for (QLabel* each : {static_cast<QLabel*>(&label), &plain}) {
        setUp(*each);
        each->setText("Pump in the second hall is off");
        each->ensurePolished();
    }
    compareHeights(label, plain);
    const int before = plain.heightForWidth(150);
    for (QLabel* each : {static_cast<QLabel*>(&label), &plain}) {
        change(*each);
    }
    QVERIFY(plain.heightForWidth(150) != before);
    compareHeights(label, plain);
}

void tst_BoundedLabel::needsNoMoreThanTheScreen()
{
    BoundedLabel label;
    setUp(label);
    label.setText(QString("word ").repeated(2000));
    const QSize screen = label.screen()->availableSize();
    QCOMPARE(label.heightForWidth(10), screen.height());
    QVERIFY(label.minimumSizeHint().height() <= screen.height());
    label.setText(QString(2000, 'w'));
    QCOMPARE(label.minimumSizeHint().width(), screen.width());
}

NORVO_TEST(tst_BoundedLabel)
#include "tst_BoundedLabel.moc"
