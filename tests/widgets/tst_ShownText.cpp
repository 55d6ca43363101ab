// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/ShownText.h"
#include "TestMain.h"

#include <QLabel>
#include <QtTest>

/// How a text is told to be marks or plain; what is shown of either is looked at elsewhere.
class tst_ShownText : public QObject
{
    Q_OBJECT

private slots:
    void textWithoutMarksIsPlain_data();
    void textWithoutMarksIsPlain();
    void marksCountInTextsOfUpTo4000Characters();
};

void tst_ShownText::textWithoutMarksIsPlain_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isMarked");
    QTest::newRow("empty") << "" << false;
    QTest::newRow("number") << "12.5" << false;
    QTest::newRow("closing bracket") << "a > b" << false;
    QTest::newRow("mark") << "<b>12.5</b>" << true;
    QTest::newRow("entity") << "a &lt; b" << true;
    QTest::newRow("picture") << "<img src='a'>" << false;
}

/// That costs a label less than to find it out.
void tst_ShownText::textWithoutMarksIsPlain()
{
    QFETCH(QString, text);
    QFETCH(bool, isMarked);
    QCOMPARE(norvo::isMarked(text), isMarked);
    QLabel label;
    norvo::showText(label, text);
    QCOMPARE(label.textFormat(), isMarked ? Qt::AutoText : Qt::PlainText);
}

void tst_ShownText::marksCountInTextsOfUpTo4000Characters()
{
    const QString text = "<b>" + QString(3997, 'x');
    QVERIFY(norvo::isMarked(text));
    QVERIFY(!norvo::isMarked(text + 'x'));
}

NORVO_TEST(tst_ShownText)
#include "tst_ShownText.moc"
