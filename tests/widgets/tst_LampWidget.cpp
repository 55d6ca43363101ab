// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "EventCounter.h"
#include "Stand.h"

#include "devices/IndicatorDevice.h"
#include "widgets/LampWidget.h"
#include "TestMain.h"

#include <QtTest>

namespace {

class CountingDevice : public IndicatorDevice
{
public:
    int outputReceivers() const { return receivers(SIGNAL(output(bool))); }
};

QString sheet(const QString& background, const QString& text)
{
    return QString("QLabel { background-color : %1; color : %2; border: 1px solid #222222; "
                   "border-radius: 5px; }")
        .arg(background, text);
}

} // namespace

class tst_LampWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSlot();
    void startsDarkAndFollowsTheDevice();
    void inputWhileNotRunningChangesNothing();
    void sheetIsSetOnlyWhenTheStateChanges();
    void foreignSheetIsReplacedWithTheNextValue();
    void everyValueUpdatesTheWidget();
    void secondInitialiseLeavesOneConnectionAndOneLamp();
    void lampThatTheHostRemovedIsNoticed();
};

void tst_LampWidget::declaresItsSlot()
{
    QCOMPARE(methodTable(LampWidget::staticMetaObject), QStringList("slot input(bool)"));
}

void tst_LampWidget::startsDarkAndFollowsTheDevice()
{
    Stand<IndicatorDevice> stand;
    const QString dark = stand.only<QLabel>()->styleSheet();
    QCOMPARE(dark, sheet("#2e4e18", "gray"));
    stand.device.input(true);
    QVERIFY(stand.only<QLabel>()->styleSheet() != dark);
    stand.device.input(false);
    QCOMPARE(stand.only<QLabel>()->styleSheet(), dark);
}

void tst_LampWidget::inputWhileNotRunningChangesNothing()
{
    Stand<IndicatorDevice> stand;
    stand.device.setRunning(false);
    stand.device.input(true);
    QCOMPARE(stand.only<QLabel>()->styleSheet(), sheet("#2e4e18", "gray"));
}

void tst_LampWidget::sheetIsSetOnlyWhenTheStateChanges()
{
    Stand<IndicatorDevice> stand;
    stand.widget->show();
    EventCounter events(stand.only<QLabel>());
    stand.device.input(false);
    QCOMPARE(events.take(QEvent::StyleChange), 0);
    stand.device.input(true);
    QVERIFY(events.take(QEvent::StyleChange) > 0);
    stand.device.input(true);
    QCOMPARE(events.take(QEvent::StyleChange), 0);
}

void tst_LampWidget::foreignSheetIsReplacedWithTheNextValue()
{
    Stand<IndicatorDevice> stand;
    stand.only<QLabel>()->setStyleSheet("QLabel { color : blue; }");
    stand.device.input(false);
    QCOMPARE(stand.only<QLabel>()->styleSheet(), sheet("#2e4e18", "gray"));
}

void tst_LampWidget::everyValueUpdatesTheWidget()
{
    Stand<IndicatorDevice> stand;
    stand.widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(stand.widget.get()));
    QCoreApplication::processEvents();
    EventCounter events(stand.widget.get());
    stand.device.input(false);
    stand.device.input(false);
    QCOMPARE(events.take(QEvent::Paint), 0);
    QCoreApplication::processEvents();
    QCOMPARE(events.take(QEvent::Paint), 1);
}

void tst_LampWidget::secondInitialiseLeavesOneConnectionAndOneLamp()
{
    Stand<CountingDevice> stand({{"widget/caption", "first"}});
    QCOMPARE(stand.device.outputReceivers(), 1);
    connect(&stand.device, SIGNAL(output(bool)), stand.widget.get(), SLOT(input(bool)));
    stand.device.setParam("widget/caption", "second");
    stand.device.setParam("widget/color", "red");
    stand.device.input(true);
    stand.widget->initialise();
    QCOMPARE(stand.device.outputReceivers(), 1);
    QVERIFY(stand.only<QLabel>());
    QCOMPARE(stand.only<QLabel>()->text(), QString("second"));
    QCOMPARE(stand.only<QLabel>()->styleSheet(), sheet("#420000", "gray"));
    QCOMPARE(stand.widget->getLayout()->count(), 1);
    stand.device.input(true);
    QCOMPARE(stand.only<QLabel>()->styleSheet(), sheet("red", "white"));
}

void tst_LampWidget::lampThatTheHostRemovedIsNoticed()
{
    Stand<IndicatorDevice> stand;
    delete stand.only<QLabel>();
    stand.device.input(true);
    stand.widget->initialise();
    QVERIFY(stand.only<QLabel>());
    stand.device.input(true);
    QCOMPARE(stand.only<QLabel>()->styleSheet(), sheet("green", "white"));
}

NORVO_TEST(tst_LampWidget)
#include "tst_LampWidget.moc"
