// SPDX-License-Identifier: GPL-3.0-or-later

#include "ListenedPanel.h"
#include "TestMain.h"
#include "host/services/audit/OperatorWatch.h"

#include "norvo/BaseDevice.h"

#include <QtTest>

using norvo::Control;
using norvo::OperatorWatch;

namespace {

/// Passes on what it is given, by a hand or by a wire.
class Passing : public BaseDevice
{
    Q_OBJECT

public:
    static DeviceTypeInfo typeInfo() { return {}; }

    void postInitialisation() override { emit output(-1); }
    void touch(double value) { emit output(value); }

signals:
    void output(double value);
    void output(const QString& text);
    void pressed();

public slots:
    void input(double value) { emit output(value); }
};

class Kept : public Passing
{
    Q_OBJECT
};

class Knowledge : public norvo::TypeKnowledge
{
public:
    Control control(const QString& type) const override
    {
        return type == "display" ? Control::None : Control::Asks;
    }
    std::optional<norvo::KeptMethods> keptMethods(const QString& type) const override
    {
        return type == "kept" ? std::optional<norvo::KeptMethods>(
                                    {"output(double)", "input(double)", "input(double)"})
                              : std::nullopt;
    }
};

struct OperatedPanel : ListenedPanel
{
    OperatedPanel(const QVector<norvo::DeviceSetting>& devices, const QStringList& arrows)
    {
        manager.registerDeviceType<Passing>("control");
        manager.registerDeviceType<Passing>("display");
        manager.registerDeviceType<Kept>("kept");
        QObject::connect(
            &watch, &OperatorWatch::given,
            [this](const QString& device, const QString& output, const QVariant& value) {
                given.append(device + '.' + output + ' ' + value.toString());
            });
        watch.follow(panel);
        start(describe::panel(devices, arrows), watch);
    }

    Passing& at(const QString& id) const { return device<Passing>(id); }

    const Knowledge knowledge;
    OperatorWatch watch{knowledge};
    QStringList given;
};

} // namespace

class tst_OperatorWatch : public QObject
{
    Q_OBJECT

private slots:
    void whatAHandDoesIsHeard();
    void whatAWireGivesIsNot();
    void firstOutputsAreNobodys();
    void displaysAreNotHeard();
    void ofAKeptValueOnlyThatIsHeard();
    void handIsHeardAgainAfterAWire();
    void queuedWireIsNoHandEither();
};

void tst_OperatorWatch::whatAHandDoesIsHeard()
{
    OperatedPanel panel({describe::device("c", "control")}, {});
    emit panel.at("c").output("text");
    emit panel.at("c").pressed();
    QCOMPARE(panel.given, (QStringList{"c.output(QString) text", "c.pressed() "}));
}

void tst_OperatorWatch::whatAWireGivesIsNot()
{
    OperatedPanel panel({describe::device("a", "kept"), describe::device("b", "kept")},
                        {"a.output(double) -> b.input"});
    panel.at("a").touch(2);
    QCOMPARE(panel.given, QStringList("a.output(double) 2"));
}

void tst_OperatorWatch::firstOutputsAreNobodys()
{
    OperatedPanel panel({describe::device("a", "kept"), describe::device("b", "kept")},
                        {"a.output(double) -> b.input"});
    QCoreApplication::processEvents();
    QCOMPARE(panel.given, QStringList());
}

void tst_OperatorWatch::displaysAreNotHeard()
{
    OperatedPanel panel({describe::device("d", "display")}, {});
    emit panel.at("d").output("text");
    QCOMPARE(panel.given, QStringList());
}

void tst_OperatorWatch::ofAKeptValueOnlyThatIsHeard()
{
    OperatedPanel panel({describe::device("k", "kept")}, {});
    emit panel.at("k").output("text");
    emit panel.at("k").pressed();
    QCOMPARE(panel.given, QStringList());
}

void tst_OperatorWatch::handIsHeardAgainAfterAWire()
{
    OperatedPanel panel({describe::device("a", "display"), describe::device("b", "kept")},
                        {"a.output(double) -> b.input"});
    panel.at("a").touch(2);
    panel.at("b").touch(3);
    QCOMPARE(panel.given, QStringList("b.output(double) 3"));
}

void tst_OperatorWatch::queuedWireIsNoHandEither()
{
    OperatedPanel panel({describe::device("a", "display"), describe::device("b", "display"),
                         describe::device("k", "kept")},
                        {"a.output(double) -> k.input", "b.output(double) -> a.input"});
    QCoreApplication::processEvents();
    panel.at("b").touch(1);
    QCoreApplication::processEvents();
    QCOMPARE(panel.given, QStringList());
    panel.at("k").touch(4);
    QCOMPARE(panel.given, QStringList("k.output(double) 4"));
}

NORVO_TEST(tst_OperatorWatch)
#include "tst_OperatorWatch.moc"
