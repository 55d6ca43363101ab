// SPDX-License-Identifier: GPL-3.0-or-later

// What the readouts ask of the painting: looks change with the state only, and however many values
// come in one turn of the event loop, each part is painted once.

#include "EventCounter.h"
#include "ProgressReadout.h"
#include "Stand.h"

#include "devices/OutputDigitalDevice.h"
#include "TestMain.h"

#include <QtTest>

#include <vector>

class tst_ReadoutRepaints : public QObject
{
    Q_OBJECT

private slots:
    void lookIsSetWhenTheStateChangesOnly();
    void enabledStateIsSetWhenItChangesOnly();
    void alternatingReadoutPaintsOncePerTurn();
    void alternatingProgressReadoutPaintsOncePerTurn();
    void movingBarPaintsOncePerTurn();

private:
    using Counters = std::vector<std::unique_ptr<EventCounter>>;

    static Counters countersOf(QWidget& widget)
    {
        Counters counters;
        counters.push_back(std::make_unique<EventCounter>(&widget));
        const auto parts = widget.findChildren<QWidget*>();
        for (QWidget* part : parts) {
            counters.push_back(std::make_unique<EventCounter>(part));
        }
        return counters;
    }

    /// The most paint events that one part got since the last call.
    static int mostPaints(const Counters& counters)
    {
        int most = 0;
        for (const auto& counter : counters) {
            most = std::max(most, counter->take(QEvent::Paint));
        }
        return most;
    }

    template <class Device>
    static void feedAndCount(Stand<Device>& stand, const QVector<double>& valuesOfATurn)
    {
        stand.widget->resize(300, 200);
        stand.widget->show();
        QVERIFY(QTest::qWaitForWindowExposed(stand.widget.get()));
        const Counters counters = countersOf(*stand.widget);
        stand.device.input(valuesOfATurn.first());
        QTRY_VERIFY(mostPaints(counters) == 0); // the window has settled
        for (int turn = 0; turn < 20; ++turn) {
            for (double value : valuesOfATurn) {
                stand.device.input(value);
            }
            QCOMPARE(mostPaints(counters), 0);
            QCoreApplication::processEvents();
            QCOMPARE(mostPaints(counters), 1);
        }
    }
};

void tst_ReadoutRepaints::lookIsSetWhenTheStateChangesOnly()
{
    ProgressReadout progress;
    Stand<OutputDigitalDevice> plain({{"timeout", "0"}});
    progress.widget->show();
    plain.widget->show();
    const std::vector<std::pair<BaseGuiDevice*, QList<QWidget*>>> readouts{
        {&progress.device, {progress.value(), progress.bar()}},
        {&plain.device, {plain.widget->getLayout()->itemAtPosition(1, 0)->widget()}}};
    for (const auto& [device, parts] : readouts) {
        for (QWidget* part : parts) {
            EventCounter counter(part);
            const auto feed = [device = device](double value) {
                QVERIFY(QMetaObject::invokeMethod(device, "input", Q_ARG(double, value)));
            };
            feed(1);
            counter.take(QEvent::StyleChange);
            for (int i = 0; i < 100; ++i) {
                feed(i);
            }
            QCOMPARE(counter.take(QEvent::StyleChange), 0);
            for (int i = 0; i < 100; ++i) {
                feed(-1 - i);
            }
            QCOMPARE(counter.take(QEvent::StyleChange), 1);
            feed(1);
            QCOMPARE(counter.take(QEvent::StyleChange), 1);
        }
    }
}

void tst_ReadoutRepaints::enabledStateIsSetWhenItChangesOnly()
{
    ProgressReadout readout;
    for (QWidget* part : QList<QWidget*>{readout.caption(), readout.bar(), readout.minLabel()}) {
        EventCounter counter(part);
        readout.digital().timeout();
        counter.take(QEvent::EnabledChange);
        for (int i = 0; i < 100; ++i) {
            readout.device.input(i);
        }
        QCOMPARE(counter.take(QEvent::EnabledChange), 1);
    }
}

void tst_ReadoutRepaints::alternatingReadoutPaintsOncePerTurn()
{
    Stand<OutputDigitalDevice> readout({{"timeout", "0"}});
    feedAndCount(readout, {50, 150, 51, -1, 52, 200});
}

void tst_ReadoutRepaints::alternatingProgressReadoutPaintsOncePerTurn()
{
    ProgressReadout readout;
    feedAndCount(readout, {50, 150, 10, -1, 90, 200});
}

void tst_ReadoutRepaints::movingBarPaintsOncePerTurn()
{
    ProgressReadout readout;
    feedAndCount(readout, {0, 25, 50, 75, 100});
    QCOMPARE(readout.bar()->value(), 1000);
}

NORVO_TEST(tst_ReadoutRepaints)
#include "tst_ReadoutRepaints.moc"
