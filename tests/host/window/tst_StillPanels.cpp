// SPDX-License-Identifier: GPL-3.0-or-later

#include "WholePanels.h"
#include "host/window/look/Look.h"
#include "TestMain.h"

#include <QtWidgets>

#include <memory>
#include <utility>
#include <vector>

using namespace norvo;

namespace {

constexpr int kFirstMs = 2000; ///< In which the first values come.
constexpr int kMostWaits = 15;
constexpr int kStillMs = 60000;
constexpr int kLookMs = 500; ///< From one look at the panels to the next.

/// All that is seen of a panel, with its place in the window.
QMap<QString, QRect> geometries(const QWidget& window)
{
    QMap<QString, QRect> found;
    const auto add = [&](const QString& name, const QWidget& part) {
        if (part.isVisible()) {
            found.insert(name, {part.mapTo(&window, QPoint()), part.size()});
        }
    };
    for (const auto* const widget : window.findChildren<BaseWidget*>()) {
        const QString name = widget->getObjectName();
        add(name, *widget);
        int number = 0;
        for (const auto* const part : widget->findChildren<QWidget*>()) {
            add(QString("%1, %2 %3").arg(name, part->metaObject()->className()).arg(++number),
                *part);
        }
    }
    return found;
}

QStringList texts(const QWidget& window)
{
    QStringList found;
    for (const auto* const label : window.findChildren<QLabel*>()) {
        found.append(label->text());
    }
    return found;
}

void wearLook()
{
    PanelLook look;
    look.theme = PanelLook::Theme::Light;
    if (qgetenv("NORVO_TEST_LOOK") == "dark") {
        look.theme = PanelLook::Theme::Dark;
        look.touch = PanelLook::Touch::Gloves;
    }
    Look::apply(*qApp, look);
}

/// A panel of which somebody looks at the geometries now and then.
struct Watched
{
    Watched(const QString& file, const PanelDescription& panel, const QSize& size)
        : name(QString("%1 at %2").arg(file).arg(size.width())), shown(panel, size)
    {
        for (const DeviceSetting& device : panel.devices) {
            if (device.type.text == "system") {
                const BaseDevice* const machine = shown.panel.device(device.id.text);
                readings = std::make_unique<QSignalSpy>(machine, SIGNAL(uptime(QString)));
            }
        }
    }

    /// Whether the machine's values have come, whose rates are known from the second reading on,
    /// and all is where it was at the call before.
    bool begin()
    {
        const auto before = std::exchange(places, geometries(shown.window));
        firstTexts = texts(shown.window);
        return readings->count() > 1 && places == before;
    }

    /// Once for each part, with its place and the one where it stood.
    void look()
    {
        const auto now = geometries(shown.window);
        for (auto part = places.cbegin(); part != places.cend(); ++part) {
            if (now.value(part.key(), *part) != *part && !moved.contains(part.key())) {
                moved.insert(part.key(), now.value(part.key()));
            }
        }
        ++looks;
    }

    QString name;
    ShownPanel shown;
    std::unique_ptr<QSignalSpy> readings; ///< Of the machine.
    QMap<QString, QRect> places;
    QStringList firstTexts;
    QMap<QString, QRect> moved; ///< Where they were then.
    int looks = 0;
};

/// A busy machine may take long until all have come.
void waitForFirstValues(const std::vector<std::unique_ptr<Watched>>& panels)
{
    bool isStill = false;
    for (int i = 0; i < kMostWaits && !isStill; ++i) {
        QTest::qWait(kFirstMs);
        isStill = true;
        for (const auto& panel : panels) {
            isStill = panel->begin() && isStill;
        }
    }
}

} // namespace

/// Nothing on a panel moves once its first values have come, whatever the values do: an operator's
/// finger is on its way. All panels at all sizes stand beside each other, so that it takes a minute
/// once. NORVO_TEST_LOOK=dark: in the dark, for gloves.
class tst_StillPanels : public QObject
{
    Q_OBJECT

private slots:
    void nothingMovesOnABusyMachine_data();
    void nothingMovesOnABusyMachine();
    void nothingMovesForAMinute();
};

void tst_StillPanels::nothingMovesOnABusyMachine_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("small") << QSize(800, 480);
    QTest::newRow("medium") << QSize(1280, 800);
    QTest::newRow("large") << QSize(1920, 1080);
}

/// The workstation, from no traffic and no load at all to a network and cores that are full.
void tst_StillPanels::nothingMovesOnABusyMachine()
{
    QFETCH(QSize, size);
    wearLook();
    const ShownPanel shown(exampleOf("workstation"), size);
    const auto put = [&shown](const char* id, double value) {
        QVERIFY(QMetaObject::invokeMethod(shown.panel.device(id), "input", Q_ARG(double, value)));
    };
    QVERIFY(
        QMetaObject::invokeMethod(shown.panel.device("machine"), "setPaused", Q_ARG(bool, true)));
    for (const char* const id : {"load", "received", "sent", "cpu", "memory"}) {
        put(id, 0);
    }
    QTest::qWait(kFirstMs);
    const auto before = geometries(shown.window);
    put("load", 64);
    put("received", 125e6); // One gigabit a second.
    put("sent", 125e6);
    put("cpu", 100);
    put("memory", 100);
    QTest::qWait(kFirstMs);
    QCOMPARE(geometries(shown.window), before);
}

void tst_StillPanels::nothingMovesForAMinute()
{
    wearLook();
    std::vector<std::unique_ptr<Watched>> panels;
    for (const QString name : {"gallery", "workstation", "all types"}) {
        const PanelDescription panel = name == "all types" ? allTypes() : exampleOf(name);
        for (const QSize& size : {QSize(800, 480), QSize(1280, 800), QSize(1920, 1080)}) {
            panels.push_back(std::make_unique<Watched>(name, panel, size));
            QVERIFY(panels.back()->readings);
        }
    }
    waitForFirstValues(panels);
    for (const auto& panel : panels) {
        QVERIFY(panel->places.size() >= 8);
    }
    for (int ms = 0; ms < kStillMs; ms += kLookMs) {
        QTest::qWait(kLookMs);
        for (const auto& panel : panels) {
            panel->look();
        }
    }
    for (const auto& panel : panels) {
        QCOMPARE(panel->looks, kStillMs / kLookMs);
        QVERIFY2(texts(panel->shown.window) != panel->firstTexts, qPrintable(panel->name));
        for (auto part = panel->moved.cbegin(); part != panel->moved.cend(); ++part) {
            qWarning() << panel->name << part.key() << panel->places[part.key()] << *part;
        }
    }
    for (const auto& panel : panels) {
        QVERIFY2(panel->moved.isEmpty(), qPrintable(panel->name));
    }
}

NORVO_TEST(tst_StillPanels)
#include "tst_StillPanels.moc"
