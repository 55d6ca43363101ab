// SPDX-License-Identifier: GPL-3.0-or-later

#include "ListenedPanel.h"
#include "TestLink.h"
#include "TestMain.h"
#include "host/services/status/SourceWatch.h"

#include "norvo/BaseDevice.h"

#include <QtTest>

using norvo::Source;
using norvo::SourceWatch;

namespace {

class Program : public BaseDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {}; }

signals:
    void running(bool on);
    void output(double value);
};

class Faulty : public BaseDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {}; }
    bool initialise() override { return !m_isBroken || error("no such port"); }
    void breakDown() { m_isBroken = true; }

signals:
    void fault(QString text);
    void output(double value);

private:
    bool m_isBroken = false;
};

class Broken : public Faulty
{
    Q_OBJECT

public:
    Broken() { breakDown(); }
};

class Through : public BaseDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {}; }

signals:
    void output(double value);

public slots:
    void input(double value) { emit output(value); }
    void state(bool /*on*/) {}
};

class WatchedPanel : public ListenedPanel
{
public:
    WatchedPanel()
    {
        manager.registerDeviceType<Link>("link");
        manager.registerDeviceType<Program>("program");
        manager.registerDeviceType<Faulty>("faulty");
        manager.registerDeviceType<Broken>("broken");
        manager.registerDeviceType<Through>("through");
        QObject::connect(&watch, &SourceWatch::staleChanged, [this](const QString& id, bool on) {
            stale.append((on ? "+" : "-") + id);
        });
        QObject::connect(&watch, &SourceWatch::changed, [this] { ++changes; });
    }

    void run(const QVector<norvo::DeviceSetting>& devices, const QStringList& arrows)
    {
        start(describe::panel(devices, arrows), watch);
        changes = 0;
    }

    Source source(int index = 0) const { return watch.sources()[index]; }
    QStringList takeStale()
    {
        std::sort(stale.begin(), stale.end());
        return std::exchange(stale, {});
    }

    SourceWatch watch;
    QStringList stale;
    int changes = 0;
};

} // namespace

class tst_SourceWatch : public QObject
{
    Q_OBJECT

private slots:
    void onlyDevicesThatTellTheirStateAreSources();
    void stateIsThatOfTheLastConnected();
    void runningTellsWhereConnectedIsMissing();
    void faultAloneIsALossUntilTheNextValue();
    void faultOfAConnectedSourceIsAMessageOnly();
    void deviceThatDidNotStartIsLost();
    void valuesAreCountedOncePerOutputHoweverManyWires();
    void whatIsWiredToALostSourceIsStaleAtOnce();
    void stalenessGoesThroughOtherDevicesAndCycles();
    void anotherSourceOnTheWayEndsIt();
    void displayOfTheStateItselfIsNotStale();
    void displayOfTwoSourcesIsStaleUntilBothAreBack();
    void whatASourceSaysDuringTheStartCounts();
};

void tst_SourceWatch::onlyDevicesThatTellTheirStateAreSources()
{
    WatchedPanel panel;
    panel.run({describe::device("t", "through"), describe::device("b", "link"),
               describe::device("a", "faulty")},
              {});
    QStringList ids;
    for (const Source& source : panel.watch.sources()) {
        ids.append(source.id);
        QCOMPARE(source.state, Source::State::Unknown);
    }
    QCOMPARE(ids, (QStringList{"b", "a"}));
}

void tst_SourceWatch::stateIsThatOfTheLastConnected()
{
    WatchedPanel panel;
    panel.run({describe::device("l", "link")}, {});
    auto& link = panel.device<Link>("l");
    link.setConnected(true);
    QCOMPARE(panel.source().state, Source::State::Well);
    const QDateTime since = panel.source().since;
    QVERIFY(since.isValid());
    QTest::qWait(5);
    link.setConnected(true);
    QCOMPARE(panel.source().since, since);
    QCOMPARE(panel.changes, 1);
    link.setConnected(false);
    QCOMPARE(panel.source().state, Source::State::Lost);
    QVERIFY(panel.source().since > since);
    QCOMPARE(panel.changes, 2);
}

void tst_SourceWatch::runningTellsWhereConnectedIsMissing()
{
    WatchedPanel panel;
    panel.run({describe::device("p", "program")}, {});
    emit panel.device<Program>("p").running(true);
    QCOMPARE(panel.source().state, Source::State::Well);
    emit panel.device<Program>("p").running(false);
    QCOMPARE(panel.source().state, Source::State::Lost);
}

void tst_SourceWatch::faultAloneIsALossUntilTheNextValue()
{
    WatchedPanel panel;
    panel.run({describe::device("f", "faulty"), describe::device("t", "through")},
              {"f.output -> t.input"});
    emit panel.device<Faulty>("f").fault("no answer");
    QCOMPARE(panel.source().state, Source::State::Lost);
    QCOMPARE(panel.source().message, QString("no answer"));
    emit panel.device<Faulty>("f").output(1);
    QCOMPARE(panel.source().state, Source::State::Well);
    QCOMPARE(panel.source().message, QString("no answer"));
}

void tst_SourceWatch::faultOfAConnectedSourceIsAMessageOnly()
{
    WatchedPanel panel;
    panel.run({describe::device("l", "link")}, {});
    QTest::ignoreMessage(QtWarningMsg, "l: bad checksum");
    panel.device<Link>("l").setConnected(true);
    panel.device<Link>("l").reportFault("bad checksum");
    QCOMPARE(panel.source().state, Source::State::Well);
    QCOMPARE(panel.source().message, QString("bad checksum"));
    QCOMPARE(panel.changes, 2);
}

void tst_SourceWatch::deviceThatDidNotStartIsLost()
{
    WatchedPanel panel;
    QTest::ignoreMessage(QtWarningMsg, "b: no such port");
    panel.run({describe::device("b", "broken"), describe::device("t", "through")},
              {"b.output -> t.input"});
    QCOMPARE(panel.source().state, Source::State::Lost);
    QCOMPARE(panel.source().message, QString("no such port"));
    QCOMPARE(panel.takeStale(), QStringList("+t"));
}

void tst_SourceWatch::valuesAreCountedOncePerOutputHoweverManyWires()
{
    WatchedPanel panel;
    panel.run({describe::device("l", "link"), describe::device("t", "through"),
               describe::device("u", "through")},
              {"l.output -> t.input", "l.output -> u.input", "l.connected -> u.state"});
    panel.device<Link>("l").setConnected(true);
    emit panel.device<Link>("l").output(1);
    emit panel.device<Link>("l").output(2);
    QCOMPARE(panel.source().values, 2ULL);
    QCOMPARE(panel.changes, 1);
}

void tst_SourceWatch::whatIsWiredToALostSourceIsStaleAtOnce()
{
    WatchedPanel panel;
    panel.run({describe::device("l", "link"), describe::device("t", "through")},
              {"l.output -> t.input"});
    QVERIFY(panel.takeStale().isEmpty());
    panel.device<Link>("l").setConnected(true);
    QVERIFY(panel.takeStale().isEmpty());
    panel.device<Link>("l").setConnected(false);
    QCOMPARE(panel.takeStale(), QStringList("+t"));
    QVERIFY(panel.watch.isStale("t"));
    panel.device<Link>("l").setConnected(true);
    QCOMPARE(panel.takeStale(), QStringList("-t"));
    QVERIFY(!panel.watch.isStale("t"));
}

void tst_SourceWatch::stalenessGoesThroughOtherDevicesAndCycles()
{
    WatchedPanel panel;
    panel.run({describe::device("l", "link"), describe::device("t", "through"),
               describe::device("u", "through"), describe::device("v", "through")},
              {"l.output -> t.input", "t.output -> u.input", "u.output -> t.input"});
    panel.device<Link>("l").setConnected(true);
    panel.device<Link>("l").setConnected(false);
    QCOMPARE(panel.takeStale(), (QStringList{"+t", "+u"}));
}

void tst_SourceWatch::anotherSourceOnTheWayEndsIt()
{
    WatchedPanel panel;
    panel.run({describe::device("l", "link"), describe::device("m", "link"),
               describe::device("t", "through")},
              {"l.output -> m.input", "m.output -> t.input"});
    panel.device<Link>("l").setConnected(true);
    panel.device<Link>("l").setConnected(false);
    QVERIFY(panel.takeStale().isEmpty());
}

void tst_SourceWatch::displayOfTheStateItselfIsNotStale()
{
    WatchedPanel panel;
    panel.run({describe::device("l", "link"), describe::device("t", "through")},
              {"l.connected -> t.state"});
    panel.device<Link>("l").setConnected(true);
    panel.device<Link>("l").setConnected(false);
    QVERIFY(panel.takeStale().isEmpty());
}

void tst_SourceWatch::displayOfTwoSourcesIsStaleUntilBothAreBack()
{
    WatchedPanel panel;
    panel.run({describe::device("l", "link"), describe::device("m", "link"),
               describe::device("t", "through")},
              {"l.output -> t.input", "m.output -> t.input"});
    auto& first = panel.device<Link>("l");
    auto& second = panel.device<Link>("m");
    first.setConnected(false);
    second.setConnected(false);
    QCOMPARE(panel.takeStale(), QStringList("+t"));
    first.setConnected(true);
    QVERIFY(panel.takeStale().isEmpty());
    second.setConnected(true);
    QCOMPARE(panel.takeStale(), QStringList("-t"));
}

void tst_SourceWatch::whatASourceSaysDuringTheStartCounts()
{
    class Early : public Link
    {
    public:
        void postInitialisation() override { setConnected(false); }
    };
    WatchedPanel panel;
    panel.manager.registerDeviceType<Early>("early");
    panel.run({describe::device("l", "early"), describe::device("t", "through")},
              {"l.output -> t.input"});
    QCOMPARE(panel.source().state, Source::State::Lost);
    QCOMPARE(panel.takeStale(), QStringList("+t"));
}

NORVO_TEST(tst_SourceWatch)
#include "tst_SourceWatch.moc"
