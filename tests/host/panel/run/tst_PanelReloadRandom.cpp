// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/Descriptions.h"
#include "host/panel/TestPanel.h"

#include "CountedDevice.h"
#include "PanelState.h"
#include "Seed.h"
#include "norvo/DeviceManager.h"
#include "TestMain.h"

#include <QTabWidget>
#include <QtTest>

#include <algorithm>
#include <random>

namespace {

constexpr int kSteps = 200;
constexpr int kDevices = 9;
constexpr QSize kPage(900, 1200);

/// A description that changes at random, so that nothing goes round in it.
class Walk
{
public:
    explicit Walk(unsigned seed) : m_random(seed) {}

    int below(int limit) { return int(m_random() % unsigned(limit)); }

    void step()
    {
        switch (below(8)) {
        case 0:
        case 1:
            add();
            break;
        case 2:
            remove();
            break;
        case 3:
            change("text", QString::number(below(3)));
            break;
        case 4:
            change("widget/row", QString::number(below(6)));
            change("widget/column", QString::number(below(3)));
            break;
        case 5:
            change("widget/area", QStringList({"", "One", "Two"}).at(below(3)));
            break;
        case 6:
            wire();
            break;
        default:
            std::shuffle(m_devices.begin(), m_devices.end(), m_random);
            std::shuffle(m_arrows.begin(), m_arrows.end(), m_random);
        }
    }

    norvo::PanelDescription description() const
    {
        QVector<norvo::DeviceSetting> devices;
        for (const auto& device : m_devices) {
            devices.append(describe::device(device.first, "counted", device.second));
        }
        return describe::panel(devices, m_arrows);
    }

    QStringList ids() const
    {
        QStringList ids;
        for (const auto& device : m_devices) {
            ids.append(device.first);
        }
        return ids;
    }

private:
    void add()
    {
        const QString id = QString("d%1").arg(below(kDevices));
        if (!ids().contains(id)) {
            m_devices.insert(below(m_devices.size() + 1), {id, {}});
        }
    }

    void remove()
    {
        if (m_devices.isEmpty()) {
            return;
        }
        const QString id = m_devices.takeAt(below(m_devices.size())).first;
        const auto isGone = [&id](const QString& arrow) { return arrow.contains(id + '.'); };
        m_arrows.erase(std::remove_if(m_arrows.begin(), m_arrows.end(), isGone), m_arrows.end());
    }

    void change(const QString& param, const QString& value)
    {
        if (m_devices.isEmpty()) {
            return;
        }
        auto& params = m_devices[below(m_devices.size())].second;
        if (value.isEmpty() || below(4) == 0) {
            params.remove(param);
        } else {
            params.insert(param, value);
        }
    }

    void wire()
    {
        if (!m_arrows.isEmpty() && below(3) == 0) {
            m_arrows.removeAt(below(m_arrows.size()));
            return;
        }
        QStringList ends = ids();
        if (ends.size() >= 2) {
            std::shuffle(ends.begin(), ends.end(), m_random);
            const auto [from, to] = std::minmax(ends[0], ends[1]);
            m_arrows.insert(below(m_arrows.size() + 1), from + ".output -> " + to + ".input");
        }
    }

    std::mt19937 m_random;
    QList<QPair<QString, QMap<QString, QString>>> m_devices;
    QStringList m_arrows;
};

QStringList takeSteps()
{
    const QStringList steps = qApp->property("lifecycle").toStringList();
    qApp->setProperty("lifecycle", QStringList());
    return steps;
}

/// Who hears a value of the device, in order, through all wires.
QStringList heard(TestPanel& panel, const QString& id)
{
    takeSteps();
    emit static_cast<CountedDevice*>(panel.device(id))->output(1);
    return takeSteps();
}

/// Who hears what, in a line for each device.
QStringList allHeard(TestPanel& panel)
{
    QStringList lines;
    for (const norvo::Node* const node : panel.nodes()) {
        lines += node->id() + " is heard by " + heard(panel, node->id()).join("; ");
    }
    return lines;
}

} // namespace

/// However a panel came to what it is, it is what a start makes.
class tst_PanelReloadRandom : public QObject
{
    Q_OBJECT

private slots:
    void changedPanelIsAsAFreshOne_data();
    void changedPanelIsAsAFreshOne();
};

void tst_PanelReloadRandom::changedPanelIsAsAFreshOne_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned i = 0; i < 4; ++i) {
        QTest::addRow("walk %u", i + 1) << norvo::testSeed() * 100 + i;
    }
}

void tst_PanelReloadRandom::changedPanelIsAsAFreshOne()
{
    QFETCH(unsigned, seed);
    DeviceManager manager;
    manager.registerDeviceType<CountedDevice>("counted");
    Walk walk(seed);
    QWidget livePage;
    TestPanel live(manager, walk.description());
    live.start(&livePage);
    livePage.show();
    for (int i = 0; i < kSteps; ++i) {
        walk.step();
        live.change(walk.description());
        QWidget freshPage;
        TestPanel fresh(manager, walk.description());
        fresh.start(&freshPage);
        freshPage.show();
        if (auto* const tabs = livePage.findChild<QTabWidget*>()) {
            freshPage.findChild<QTabWidget*>()->setCurrentIndex(tabs->currentIndex());
        }
        const PanelState expected = PanelState::of(fresh, fresh.shownOn(), kPage);
        const PanelState actual = PanelState::of(live, live.shownOn(), kPage);
        const QString difference = PanelState::difference(actual, expected);
        QVERIFY2(difference.isEmpty(), qPrintable(QString("step %1\n%2").arg(i).arg(difference)));
        QCOMPARE(PanelState::comparable(actual, expected), actual.devices());
        QCOMPARE(allHeard(live), allHeard(fresh));
    }
    takeSteps();
}

NORVO_TEST(tst_PanelReloadRandom)
#include "tst_PanelReloadRandom.moc"
