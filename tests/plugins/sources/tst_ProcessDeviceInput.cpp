// SPDX-License-Identifier: GPL-3.0-or-later

#include "ProcessSubject.h"
#include "TestMain.h"

#include <QtTest>

/// What is written to a program's standard input.
class tst_ProcessDeviceInput : public QObject
{
    Q_OBJECT

private slots:
    void inputIsALineOfStandardInput();
    void unreadInputIsCounted();
    void inputIntoAClosedEndIsCounted();
    void inputAfterTheEndIsCounted();
    void inputBeforeTheStartIsCounted();
    void inputOfSeveralLinesIsRefused_data();
    void inputOfSeveralLinesIsRefused();
};

void tst_ProcessDeviceInput::inputIsALineOfStandardInput()
{
    ProcessSubject child("cat");
    QTRY_COMPARE(child.notes, QStringList{"up"});
    child.device.input("hello");
    child.device.input(QString::fromUtf8("größer 3"));
    child.device.input(QString(300000, 'x')); // More than a pipe holds.
    QTRY_COMPARE(child.lines.size(), 3);
    QCOMPARE(child.lines,
             (QStringList{"hello", QString::fromUtf8("größer 3"), QString(300000, 'x')}));
    QVERIFY(child.alerts.isEmpty());
    child.stop();
}

void tst_ProcessDeviceInput::unreadInputIsCounted()
{
    ProcessSubject child("sleep 1000");
    QTRY_COMPARE(child.notes, QStringList{"up"});
    const QString text(500000, 'x');
    for (int i = 0; i < 5; ++i) {
        child.device.input(text);
    }
    QTRY_COMPARE(child.alerts, QStringList{"inputs lost, the program does not read them: 3"});
    child.stop();
}

void tst_ProcessDeviceInput::inputIntoAClosedEndIsCounted()
{
    ProcessSubject child("sh -c 'exec <&-; echo closed; exec sleep 1000'");
    QTRY_COMPARE(child.lines.size(), 1);
    child.device.input("hello");
    child.device.input("again");
    QTRY_COMPARE(child.alerts, QStringList{"inputs lost, the program does not read them: 2"});
    QCOMPARE(child.notes, (QStringList{"up", "text closed"}));
    child.stop();
}

void tst_ProcessDeviceInput::inputAfterTheEndIsCounted()
{
    ProcessSubject child("true");
    QTRY_VERIFY(child.hasFinished());
    child.device.input("hello");
    QTRY_COMPARE(child.alerts, QStringList{"inputs lost, the program is not running: 1"});
    child.stop();
    child.device.input("again");
}

void tst_ProcessDeviceInput::inputBeforeTheStartIsCounted()
{
    ProcessSubject child("cat");
    child.device.input("too early");
    QTRY_COMPARE(child.alerts, QStringList{"inputs lost, the program is not running: 1"});
    child.device.input("now");
    QTRY_COMPARE(child.lines, QStringList{"now"});
    child.stop();
}

void tst_ProcessDeviceInput::inputOfSeveralLinesIsRefused_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("line feed within") << "set 5\nshutdown";
    QTest::newRow("line feed at the end") << "set 5\n";
    QTest::newRow("carriage return") << "set 5\rshutdown";
}

void tst_ProcessDeviceInput::inputOfSeveralLinesIsRefused()
{
    QFETCH(QString, text);

    ProcessSubject child("cat");
    QTRY_COMPARE(child.notes, QStringList{"up"});
    child.device.input(text);
    child.device.input("next");
    QTRY_COMPARE(child.lines, QStringList{"next"});
    QTRY_COMPARE(child.alerts, QStringList{"inputs refused, they hold more than one line: 1"});
    child.stop();
}

NORVO_GUILESS_TEST(tst_ProcessDeviceInput)
#include "tst_ProcessDeviceInput.moc"
