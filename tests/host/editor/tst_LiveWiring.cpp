// SPDX-License-Identifier: GPL-3.0-or-later

#include "EditedPanel.h"
#include "TestMain.h"

#include "host/panel/edit/ConnectionEdit.h"

#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QPushButton>
#include <QPointer>
#include <QSignalSpy>
#include <QtTest>

using norvo::YamlEdit;

namespace {

const QByteArray kPanel = "devices:\n"
                          "  go: {device: button, params: {text: Go}}\n"
                          "  heat: {device: checkbox, keep: false}\n"
                          "  digits: {device: output_digital}\n"
                          "  lamp: {device: indicator}\n"
                          "  copy: {device: label}\n";

void connectLive(EditedPanel& panel, const QString& from, const QString& to)
{
    QCOMPARE(
        panel.session->change(
            "Connect", [&](YamlEdit& edit) { return norvo::ConnectionEdit::add(edit, from, to); }),
        QString());
}

} // namespace

/// A control that is given a connection while it runs.
class tst_LiveWiring : public QObject
{
    Q_OBJECT

private slots:
    void isShownOnceAndSends();
    void keepsItsState();
    void keepsItsValueAndSendsNothing();
    void ofADisplayTheWidgetStays();
};

void tst_LiveWiring::isShownOnceAndSends()
{
    EditedPanel panel(kPanel);
    const BaseDevice* const device = panel.panel().device("go");
    connectLive(panel, "go.toggled", "lamp.input");
    QCOMPARE(panel.panel().device("go"), device);
    const auto buttons = panel.panel().widget("go")->findChildren<QPushButton*>();
    QCOMPARE(buttons.size(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(buttons.first()->isVisible(), 60000);
    QSignalSpy lit(panel.panel().device("go"), SIGNAL(toggled(bool)));
    QTest::mouseClick(buttons.first(), Qt::LeftButton);
    QCOMPARE(lit.count(), 1);
}

void tst_LiveWiring::keepsItsState()
{
    EditedPanel panel(kPanel);
    const auto button = [&panel] { return panel.panel().widget("go")->findChild<QPushButton*>(); };
    QTest::mouseClick(button(), Qt::LeftButton);
    QVERIFY(button()->isChecked());
    connectLive(panel, "go.toggled", "lamp.input");
    QVERIFY(button()->isChecked());
}

void tst_LiveWiring::keepsItsValueAndSendsNothing()
{
    EditedPanel panel(kPanel);
    const auto box = [&panel] { return panel.panel().widget("heat")->findChild<QCheckBox*>(); };
    QTest::mouseClick(box(), Qt::LeftButton, {}, {5, box()->height() / 2});
    QVERIFY(box()->isChecked());
    QSignalSpy sent(panel.panel().device("heat"), SIGNAL(output(bool)));
    connectLive(panel, "heat.output(bool)", "lamp.input");
    QVERIFY(box()->isChecked());
    QCOMPARE(sent.count(), 0);
    QTest::mouseClick(box(), Qt::LeftButton, {}, {5, box()->height() / 2});
    QCOMPARE(sent.count(), 1);
    QCOMPARE(sent.first().first().toBool(), false);
}

void tst_LiveWiring::ofADisplayTheWidgetStays()
{
    EditedPanel panel(kPanel);
    const QPointer<BaseWidget> widget = panel.panel().widget("digits");
    connectLive(panel, "digits.output(double)", "copy.input");
    QVERIFY(widget);
    QCOMPARE(panel.panel().widget("digits"), widget.data());
}

NORVO_TEST(tst_LiveWiring)
#include "tst_LiveWiring.moc"
