// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/HeardSignal.h"

#include "host/panel/Descriptions.h"
#include "TestMain.h"

#include "norvo/BaseDevice.h"

using namespace norvo;

/// Sends values of every kind.
class ManyDevice : public BaseDevice
{
    Q_OBJECT

signals:
    void output(QString text);
    void output(double value);
    void output(bool isOn);
    void pulse();
    void name(QString text, double value);
};

class tst_HeardSignal : public QObject
{
    Q_OBJECT

    static QString resolved(const QString& signal, const AlarmLimit& limit)
    {
        AlarmSetting alarm;
        alarm.device = "boiler";
        alarm.signal = signal;
        alarm.signalPlace = {7, 5};
        alarm.limit = limit;
        Diagnostics diagnostics("p");
        const auto planned = resolveAlarm(alarm, ManyDevice(), diagnostics);
        return planned ? planned->signature : describe::lines(diagnostics).join('\n');
    }

private slots:
    void signalIsTheOneThatTheLimitCompares_data()
    {
        using Kind = AlarmLimit::Kind;
        QTest::addColumn<QString>("signal");
        QTest::addColumn<int>("kind");
        QTest::addColumn<double>("number");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const QString& signal, Kind kind, double number,
                            const QString& expected) {
            QTest::newRow(name) << signal << int(kind) << number << expected;
        };
        row("above", "output", Kind::Above, 1, "output(double)");
        row("below, written in full", "output( double )", Kind::Below, 1, "output(double)");
        row("is", "output", Kind::Is, 0, "output(bool)");
        row("equals a number", "output", Kind::Equals, 1, "output(double)");
        row("equals a text", "output", Kind::Equals, qQNaN(), "output(QString)");
        row("first of several arguments", "name", Kind::Equals, qQNaN(), "name(QString,double)");
        row("text above", "output(QString)", Kind::Above, 1,
            "p:7:5: error: above needs a number, and \"boiler\" sends output(QString)");
        row("pulse", "pulse", Kind::Is, 1,
            "p:7:5: error: is needs yes or no, and \"boiler\" sends pulse()");
        row("misspelt", "outptu", Kind::Above, 1,
            "p:7:5: error: \"boiler\" has no signal \"outptu\"; did you mean \"output\"?");
        row("unknown", "temperature", Kind::Above, 1,
            "p:7:5: error: \"boiler\" has no signal \"temperature\"; valid names: \"output\", "
            "\"pulse\", \"name\"");
        row("unknown overload", "output(int)", Kind::Above, 1,
            "p:7:5: error: \"boiler\" has no signal \"output(int)\"; it has output(QString), "
            "output(double), output(bool)");
    }

    void signalIsTheOneThatTheLimitCompares()
    {
        QFETCH(QString, signal);
        QFETCH(int, kind);
        QFETCH(double, number);
        QFETCH(QString, expected);
        AlarmLimit limit;
        limit.kind = AlarmLimit::Kind(kind);
        limit.number = number;
        QCOMPARE(resolved(signal, limit), expected);
    }

    void recordedSignalIsANumberElseYesOrNoElseAText()
    {
        const auto resolved = [](const QString& signal) {
            HistorySignal recorded{"boiler", {}, signal, {7, 5}};
            Diagnostics diagnostics("p");
            const auto planned = resolveHistory(recorded, ManyDevice(), diagnostics);
            return planned ? planned->signature : describe::lines(diagnostics).join('\n');
        };
        QCOMPARE(resolved("output"), QString("output(double)"));
        QCOMPARE(resolved("output(QString)"), QString("output(QString)"));
        QCOMPARE(resolved("name"), QString("name(QString,double)"));
        QCOMPARE(resolved("outptu"), QString("p:7:5: error: \"boiler\" has no signal \"outptu\"; "
                                             "did you mean \"output\"?"));
        QCOMPARE(resolved("pulse"),
                 QString("p:7:5: error: a history needs a number, yes or no, or a text, and "
                         "\"boiler\" sends pulse()"));
    }
};

NORVO_TEST(tst_HeardSignal)

#include "tst_HeardSignal.moc"
