// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/access/GuardedControl.h"
#include "host/window/accessible/Accessibility.h"

#include "host/panel/TestPanel.h"
#include "host/panel/file/PanelFile.h"
#include "host/program/PluginSet.h"
#include "host/window/PanelWindow.h"

#include "TestMain.h"
#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"
#include "norvo/DoubleVec.h"

#include <QAccessible>
#include <QPushButton>
#include <QtTest>

#include <memory>

using namespace norvo;

namespace {

/// A device of each type of the library that shows itself, and the ones that say more.
const char* const kPanel = R"(
devices:
  push: {device: button, params: {text: Start pump, mode: click}}
  latch: {device: button, params: {text: Run}}
  tick: {device: checkbox, params: {widget/label: Cooling}}
  choice: {device: dropdownlist, params: {options: "slow|fast", widget/label: Pace}}
  slide: {device: slider}
  spin: {device: input, params: {name: Speed, units: rpm, max: 100, decimals: 0}}
  line: {device: input, params: {name: Batch, type: string}}
  text: {device: label, params: {Value: Idle}}
  lamp: {device: indicator, params: {widget/caption: 'Pump\nruns'}}
  log: {device: multiline}
  image: {device: picture, params: {widget/filename: pump.svg}}
  level: {device: output_digital, params: {name: Level, widget/units: m, widget/precision: 1}}
  memory: {device: output_with_progress, params: {name: Memory, precision: 1}}
  bar: {device: output_bar}
  tank: {device: output_lumeno, params: {widget/name: Tank, widget/units: "%"}}
  trend: {device: output_graph, params: {name: History}}
  scope: {device: output_vector, params: {name: Ripple}}
  face: {device: qml_widget, params: {sourceType: parameter, sourceCode: "import QtQuick 2.0\nItem {}"}}
)";

} // namespace

class tst_Accessibility : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void deviceIsNamedAndOfItsKind_data();
    void deviceIsNamedAndOfItsKind();
    void noDeviceIsLeftOut();
    void valueIsWhatIsShown_data();
    void valueIsWhatIsShown();
    void lampWithoutAValueHasNone();
    void curveTellsItsNewestPoint();
    void toggledButtonAndTickedBoxTellTheirState();
    void readoutWithoutACurrentValueSaysSo();
    void switchedOffDeviceSaysSo();
    void innerControlIsNamedAfterItsDevice_data();
    void innerControlIsNamedAfterItsDevice();
    void galleryIsNamedThroughout();

private:
    QAccessibleInterface& of(const QString& id) const
    {
        return *QAccessible::queryAccessibleInterface(m_panel->widget(id));
    }
    QString value(const QString& id) const { return of(id).text(QAccessible::Value); }

    PluginSet m_plugins;
    QTemporaryDir m_folder;
    std::unique_ptr<PanelWindow> m_window;
    std::unique_ptr<TestPanel> m_panel;
};

void tst_Accessibility::initTestCase()
{
    Accessibility::install(&GuardedControl::make);
    m_plugins.load(NORVO_BUILD_DIR "/plugins");
    QVERIFY(
        QFile::copy(NORVO_SOURCE_DIR "/examples/gallery/pump.svg", m_folder.filePath("pump.svg")));
    QDir::setCurrent(m_folder.path());
    QFile file(m_folder.filePath("panel.yaml"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(kPanel);
    file.close();
    Diagnostics diagnostics("panel.yaml");
    m_window = std::make_unique<PanelWindow>("All");
    m_panel = std::make_unique<TestPanel>(m_plugins.manager(),
                                          PanelFile::read("panel.yaml", diagnostics));
    m_panel->start(m_window->page());
    QVERIFY2(diagnostics.isEmpty(), qPrintable(diagnostics.summary()));
    QVERIFY(m_panel->diagnostics().isEmpty());
    m_window->show();
}

void tst_Accessibility::deviceIsNamedAndOfItsKind_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QAccessible::Role>("role");
    QTest::newRow("push") << "Start pump" << QAccessible::Button;
    QTest::newRow("tick") << "Cooling" << QAccessible::CheckBox;
    QTest::newRow("choice") << "Pace" << QAccessible::ComboBox;
    QTest::newRow("slide") << "slide" << QAccessible::Slider;
    QTest::newRow("spin") << "Speed" << QAccessible::SpinBox;
    QTest::newRow("line") << "Batch" << QAccessible::EditableText;
    QTest::newRow("text") << "text" << QAccessible::StaticText;
    QTest::newRow("lamp") << "Pump runs" << QAccessible::Indicator;
    QTest::newRow("log") << "log" << QAccessible::Document;
    QTest::newRow("image") << "image" << QAccessible::Graphic;
    QTest::newRow("level") << "Level" << QAccessible::StaticText;
    QTest::newRow("memory") << "Memory" << QAccessible::ProgressBar;
    QTest::newRow("bar") << "bar" << QAccessible::ProgressBar;
    QTest::newRow("tank") << "Tank" << QAccessible::ProgressBar;
    QTest::newRow("trend") << "History" << QAccessible::Chart;
    QTest::newRow("scope") << "Ripple" << QAccessible::Chart;
    QTest::newRow("face") << "face" << QAccessible::Graphic;
}

void tst_Accessibility::deviceIsNamedAndOfItsKind()
{
    const QString id = QTest::currentDataTag();
    QTEST(of(id).text(QAccessible::Name), "name");
    QTEST(of(id).role(), "role");
}

void tst_Accessibility::noDeviceIsLeftOut()
{
    const auto widgets = m_window->findChildren<BaseWidget*>();
    QVERIFY(widgets.size() >= 18);
    for (BaseWidget* widget : widgets) {
        QAccessibleInterface* const device = QAccessible::queryAccessibleInterface(widget);
        QVERIFY2(!device->text(QAccessible::Name).isEmpty(), qPrintable(widget->getObjectName()));
        QVERIFY(device->role() != QAccessible::NoRole && device->role() != QAccessible::Client);
    }
}

void tst_Accessibility::valueIsWhatIsShown_data()
{
    QTest::addColumn<QVariant>("input");
    QTest::addColumn<QString>("value");
    QTest::newRow("tick") << QVariant(true) << "on";
    QTest::newRow("choice") << QVariant(1) << "fast";
    QTest::newRow("slide") << QVariant(7.0) << "7";
    QTest::newRow("spin") << QVariant(42.0) << "42 rpm";
    QTest::newRow("line") << QVariant("A7") << "A7";
    QTest::newRow("text") << QVariant("Running") << "Running";
    QTest::newRow("lamp") << QVariant(true) << "on";
    QTest::newRow("log") << QVariant("started") << "started";
    QTest::newRow("level") << QVariant(12.5) << "12.5 m";
    QTest::newRow("memory") << QVariant(0.5) << "0.5";
    QTest::newRow("bar") << QVariant(0.25) << "0.25";
    QTest::newRow("tank") << QVariant(30.0) << "30 %";
}

void tst_Accessibility::valueIsWhatIsShown()
{
    QFETCH(QVariant, input);
    BaseDevice* const device = m_panel->device(QTest::currentDataTag());
    const QGenericArgument argument(input.typeName(), input.constData());
    QVERIFY(QMetaObject::invokeMethod(device, "input", argument));
    QTEST(value(QTest::currentDataTag()), "value");
}

void tst_Accessibility::lampWithoutAValueHasNone()
{
    QVERIFY(QMetaObject::invokeMethod(m_panel->device("lamp"), "input", Q_ARG(bool, false)));
    QCOMPARE(value("lamp"), QString("off"));
    m_panel->stop();
    m_panel->start(m_window->page());
    QCOMPARE(value("lamp"), QString());
    QCOMPARE(value("tank"), QString());
}

void tst_Accessibility::curveTellsItsNewestPoint()
{
    QCOMPARE(value("scope"), QString());
    const DoubleVec points{1, 2, 3.5};
    QVERIFY(QMetaObject::invokeMethod(m_panel->device("scope"), "input",
                                      QArgument<DoubleVec>("DoubleVec", points)));
    QVERIFY2(value("scope").endsWith("3.5"), qPrintable(value("scope")));
}

void tst_Accessibility::toggledButtonAndTickedBoxTellTheirState()
{
    QVERIFY(!of("tick").state().checked);
    QVERIFY(QMetaObject::invokeMethod(m_panel->device("tick"), "input", Q_ARG(bool, true)));
    QVERIFY(of("tick").state().checkable && of("tick").state().checked);
    QCOMPARE(value("push"), QString());
    QCOMPARE(value("latch"), QString("off"));
    QTest::mouseClick(m_panel->widget("latch")->findChild<QPushButton*>(), Qt::LeftButton);
    QCOMPARE(value("latch"), QString("on"));
}

void tst_Accessibility::readoutWithoutACurrentValueSaysSo()
{
    QCOMPARE(of("level").text(QAccessible::Description), QString("no current value"));
    QVERIFY(QMetaObject::invokeMethod(m_panel->device("level"), "input", Q_ARG(double, 0.5)));
    QCOMPARE(of("level").text(QAccessible::Description), QString());
}

void tst_Accessibility::switchedOffDeviceSaysSo()
{
    QVERIFY(!of("slide").state().disabled);
    m_panel->widget("slide")->setEnabled(false);
    QVERIFY(of("slide").state().disabled);
    m_panel->widget("slide")->setEnabled(true);
}

void tst_Accessibility::innerControlIsNamedAfterItsDevice_data()
{
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("name");
    QTest::newRow("slide") << "QSlider"
                           << "slide";
    QTest::newRow("log") << "QTextEdit"
                         << "log";
    QTest::newRow("trend") << "QCustomPlot"
                           << "History";
    QTest::newRow("face") << "QQuickWidget"
                          << "face";
    QTest::newRow("image") << "QLabel"
                           << "image";
    QTest::newRow("push") << "QPushButton"
                          << "Start pump";
    QTest::newRow("tick") << "QCheckBox"
                          << "Cooling";
}

void tst_Accessibility::innerControlIsNamedAfterItsDevice()
{
    QFETCH(QString, className);
    int found = 0;
    for (QWidget* part : m_panel->widget(QTest::currentDataTag())->findChildren<QWidget*>()) {
        if (part->inherits(qPrintable(className))) {
            QTEST(QAccessible::queryAccessibleInterface(part)->text(QAccessible::Name), "name");
            ++found;
        }
    }
    QVERIFY(found > 0);
}

void tst_Accessibility::galleryIsNamedThroughout()
{
    QDir::setCurrent(NORVO_SOURCE_DIR "/examples/gallery");
    Diagnostics diagnostics("panel.yaml");
    PanelWindow window("Gallery");
    TestPanel panel(m_plugins.manager(), PanelFile::read("panel.yaml", diagnostics));
    panel.start(window.page());
    int devices = 0;
    for (BaseWidget* widget : window.findChildren<BaseWidget*>()) {
        QAccessibleInterface* const device = QAccessible::queryAccessibleInterface(widget);
        QVERIFY(!device->text(QAccessible::Name).isEmpty());
        QVERIFY2(device->role() != QAccessible::NoRole && device->role() != QAccessible::Client,
                 qPrintable(widget->getObjectName()));
        ++devices;
    }
    QVERIFY(devices > 20);
}

NORVO_TEST(tst_Accessibility)
#include "tst_Accessibility.moc"
