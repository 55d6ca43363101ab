// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "host/services/signals/SignalTap.h"

#include "norvo/BaseDevice.h"
#include "norvo/PortsDevice.h"

#include <QtTest>

using norvo::SignalArguments;
using norvo::SignalTap;

namespace {

class Sender : public BaseDevice
{
    Q_OBJECT

signals:
    void output(double value);
    void output(const QString& value, int index);
    void output(const QVariant& value);
    void pulse();
};

class Owner : public QObject
{
public:
    SignalTap* hear(BaseDevice& device, const QString& output)
    {
        return SignalTap::open(
            device, output,
            [this](const SignalArguments& arguments) {
                QVariantList list;
                for (int i = 0; i < arguments.count(); ++i) {
                    list.append(arguments.at(i));
                }
                heard.append(QVariant(list));
            },
            *this);
    }

    QVariantList heard;
};

} // namespace

class tst_SignalTap : public QObject
{
    Q_OBJECT

private slots:
    void argumentsAreThoseOfTheSignal();
    void bareNameIsTheFirstOverload();
    void unknownSignalHasNoTap();
    void argumentBeyondTheLastIsInvalid();
    void nothingIsHeardOnceTheOwnerIsGone();
    void senderMayGoFirst();
};

void tst_SignalTap::argumentsAreThoseOfTheSignal()
{
    Sender sender;
    Owner owner;
    QVERIFY(owner.hear(sender, "output(double)"));
    QVERIFY(owner.hear(sender, "output(QString,int)"));
    QVERIFY(owner.hear(sender, "output(QVariant)"));
    QVERIFY(owner.hear(sender, "pulse()"));
    emit sender.output(2.5);
    emit sender.output("a", 3);
    emit sender.output(QVariant(true));
    emit sender.pulse();
    QCOMPARE(owner.heard, (QVariantList{QVariantList{2.5}, QVariantList{"a", 3}, QVariantList{true},
                                        QVariantList{}}));
}

void tst_SignalTap::bareNameIsTheFirstOverload()
{
    Sender sender;
    Owner owner;
    QVERIFY(owner.hear(sender, "output"));
    emit sender.output("a", 3);
    QVERIFY(owner.heard.isEmpty());
    emit sender.output(1.0);
    QCOMPARE(owner.heard.size(), 1);
}

void tst_SignalTap::unknownSignalHasNoTap()
{
    Sender sender;
    Owner owner;
    QVERIFY(!owner.hear(sender, "nothing"));
    QVERIFY(!owner.hear(sender, "output(bool)"));
    QVERIFY(owner.children().isEmpty());
}

void tst_SignalTap::argumentBeyondTheLastIsInvalid()
{
    Sender sender;
    QObject owner;
    QVariant before(1);
    QVariant behind(1);
    SignalTap::open(
        sender, "output(double)",
        [&](const SignalArguments& arguments) {
            before = arguments.at(-1);
            behind = arguments.at(1);
        },
        owner);
    emit sender.output(1.0);
    QVERIFY(!before.isValid() && !behind.isValid());
}

void tst_SignalTap::nothingIsHeardOnceTheOwnerIsGone()
{
    Sender sender;
    int heard = 0;
    {
        QObject owner;
        SignalTap::open(
            sender, "pulse()", [&](const SignalArguments&) { ++heard; }, owner);
        emit sender.pulse();
    }
    emit sender.pulse();
    QCOMPARE(heard, 1);
}

void tst_SignalTap::senderMayGoFirst()
{
    Owner owner;
    {
        Sender sender;
        owner.hear(sender, "pulse()");
        emit sender.pulse();
    }
    QCOMPARE(owner.heard.size(), 1);
}

NORVO_GUILESS_TEST(tst_SignalTap)
#include "tst_SignalTap.moc"
