// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/BaseDevice.h"
#include "TestMain.h"

#include <QtTest>

/// A device with every kind of method that a host must or must not offer.
class Valve : public BaseDevice
{
    Q_OBJECT

public:
    Q_INVOKABLE void invokable(double) {}

signals:
    void output(double value);
    void output(const QString& text);
    void pulse();
    void pulse(int width);

public slots:
    void input(const QString&) {}
    void input(double) {}
    void open(bool = true, int = 0) {}

protected slots:
    void guarded(double) {}

private slots:
    void hidden(double) {}
};

class SmallValve : public Valve
{
    Q_OBJECT

signals:
    void own(double value);

public slots:
    void input(int) {}
};

class tst_BaseDeviceMethods : public QObject
{
    Q_OBJECT

private slots:
    void provider_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("signature");
        QTest::newRow("name") << "pulse"
                              << "pulse()";
        QTest::newRow("name with overloads gives the first declared") << "output"
                                                                      << "output(double)";
        QTest::newRow("full signature") << "output(double)"
                                        << "output(double)";
        QTest::newRow("full signature of a later overload") << "output(QString)"
                                                            << "output(QString)";
        QTest::newRow("sloppy signature") << " output( double ) "
                                          << "output(double)";
        QTest::newRow("sloppy reference") << "output( const QString & )"
                                          << "output(QString)";
        QTest::newRow("declared in a base") << "pulse(int)"
                                            << "pulse(int)";
        QTest::newRow("declared in the class itself") << "own"
                                                      << "own(double)";
        QTest::newRow("unknown name") << "outputs"
                                      << "";
        QTest::newRow("unknown overload") << "output(bool)"
                                          << "";
        QTest::newRow("name in another case") << "Output"
                                              << "";
        QTest::newRow("empty name") << ""
                                    << "";
        QTest::newRow("broken signature") << "output(double"
                                          << "";
        QTest::newRow("leading code") << "2output(double)"
                                      << "";
        QTest::newRow("a slot is no output") << "input(double)"
                                             << "";
        QTest::newRow("the host's own signal") << "methodsChanged"
                                               << "";
        QTest::newRow("the host's own signal in full") << "paramChanged(QString,QString)"
                                                       << "";
        QTest::newRow("QObject's own signal") << "destroyed"
                                              << "";
    }
    void provider()
    {
        QFETCH(QString, name);
        QFETCH(QString, signature);
        SmallValve valve;
        QString found = "something before";
        QObject* const object = valve.getProvider(name, found);
        QCOMPARE(found, signature);
        QCOMPARE(object, signature.isEmpty() ? nullptr : static_cast<QObject*>(&valve));
    }

    void receiver_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("signature");
        QTest::newRow("name with overloads gives the first declared") << "input"
                                                                      << "input(QString)";
        QTest::newRow("full signature") << "input(double)"
                                        << "input(double)";
        QTest::newRow("sloppy signature") << "input (double )"
                                          << "input(double)";
        QTest::newRow("overload declared further down") << "input(int)"
                                                        << "input(int)";
        QTest::newRow("all arguments") << "open"
                                       << "open(bool,int)";
        QTest::newRow("one default argument left out") << "open(bool)"
                                                       << "open(bool)";
        QTest::newRow("all default arguments left out") << "open()"
                                                        << "open()";
        QTest::newRow("a signal is no input") << "output(double)"
                                              << "";
        QTest::newRow("protected slot") << "guarded"
                                        << "";
        QTest::newRow("private slot") << "hidden(double)"
                                      << "";
        QTest::newRow("invokable is no slot") << "invokable"
                                              << "";
        QTest::newRow("QObject's own slot") << "deleteLater"
                                            << "";
        QTest::newRow("empty name") << ""
                                    << "";
    }
    void receiver()
    {
        QFETCH(QString, name);
        QFETCH(QString, signature);
        SmallValve valve;
        QString found = "something before";
        QObject* const object = valve.getReceiver(name, found);
        QCOMPARE(found, signature);
        QCOMPARE(object, signature.isEmpty() ? nullptr : static_cast<QObject*>(&valve));
    }

    void whatTheyAnswerCanBeConnectedInQtsStringForm()
    {
        SmallValve from;
        SmallValve to;
        QSignalSpy spy(&from, SIGNAL(output(double)));
        QString signal;
        QString slot;
        const QObject* const provider = from.getProvider("output( double )", signal);
        const QObject* const receiver = to.getReceiver("input(double)", slot);
        QVERIFY(
            QObject::connect(provider, qPrintable("2" + signal), receiver, qPrintable("1" + slot)));
    }

    void grabbedMethodsStandInMetaObjectOrder()
    {
        const SmallValve valve;
        QCOMPARE(valve.grabMethods("", QMetaMethod::Signal, true),
                 QStringList({"output(double)", "output(QString)", "pulse()", "pulse(int)",
                              "own(double)"}));
        QCOMPARE(valve.grabMethods("", QMetaMethod::Slot, true),
                 QStringList({"input(QString)", "input(double)", "open(bool,int)", "open(bool)",
                              "open()", "input(int)"}));
    }

    void grabbedNameKeepsItsOverloadsOnly()
    {
        const SmallValve valve;
        QCOMPARE(valve.grabMethods("pulse", QMetaMethod::Signal, true),
                 QStringList({"pulse()", "pulse(int)"}));
        QCOMPARE(valve.grabMethods("input", QMetaMethod::Slot, true),
                 QStringList({"input(QString)", "input(double)", "input(int)"}));
        QCOMPARE(valve.grabMethods("pulse", QMetaMethod::Slot, true), QStringList());
        QCOMPARE(valve.grabMethods("puls", QMetaMethod::Signal, true), QStringList());
        QCOMPARE(valve.grabMethods("pulse(int)", QMetaMethod::Signal, true), QStringList());
    }

    void grabbedListIsCompleteWithAndWithoutTheFlag()
    {
        const SmallValve valve;
        for (const auto type : {QMetaMethod::Signal, QMetaMethod::Slot}) {
            QCOMPARE(valve.grabMethods("", type, false), valve.grabMethods("", type, true));
        }
    }

    void bareDeviceOffersNothing()
    {
        const BaseDevice device;
        QCOMPARE(device.grabMethods("", QMetaMethod::Signal, true), QStringList());
        QCOMPARE(device.grabMethods("", QMetaMethod::Slot, true), QStringList());
        QCOMPARE(device.grabMethods("methodsChanged", QMetaMethod::Signal, true), QStringList());
    }
};

NORVO_GUILESS_TEST(tst_BaseDeviceMethods)

#include "tst_BaseDeviceMethods.moc"
