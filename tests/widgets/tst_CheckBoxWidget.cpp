// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "GridPlaces.h"
#include "Recorder.h"
#include "Stand.h"

#include "devices/CheckBoxDevice.h"
#include "widgets/CheckBoxWidget.h"
#include "TestMain.h"

#include <QtTest>

namespace {

const QStringList kYesTwice{"output(true)", "output(true)", "output(1)", "output(1)"};
const QStringList kNoTwice{"output(false)", "output(false)", "output(0)", "output(0)"};

/// A check box whose outputs were wired before its widget came, as on a panel.
struct WiredBox
{
    explicit WiredBox(const QString& label = "Pump")
    {
        device.setParam("widget/label", label);
        device.setRunning(device.initialise());
        recorder = std::make_unique<Recorder>(&device);
        widget.reset(device.createWidget());
        widget->initialise();
        box = widget->findChild<QCheckBox*>();
        widget->resize(200, 60);
        widget->show();
    }

    CheckBoxDevice device;
    std::unique_ptr<Recorder> recorder;
    std::unique_ptr<BaseWidget> widget;
    QCheckBox* box = nullptr;
};

QPoint tick(const QCheckBox& box)
{
    QStyleOptionButton option;
    option.initFrom(&box);
    return box.style()->subElementRect(QStyle::SE_CheckBoxIndicator, &option, &box).center();
}

} // namespace

class tst_CheckBoxWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSignalsAndSlots();

    void boxLooksAsItsParametersSay();
    void indicatorIsAsLargeAsTheParameter();
    void indicatorLargerThanAScreenIsBounded_data();
    void indicatorLargerThanAScreenIsBounded();
    void boxStartsUncheckedAndSilent();

    void operatorsClickPassesOnce();
    void spaceKeyTogglesThroughTheFocusProxy();
    void inputThatChangesTheBoxPassesTwice();
    void inputThatChangesNothingPassesOnce();
    void numberMovesTheBox();
    void partlyCheckedCountsAsChecked();
    void inputBeforeInitialiseStillPassesTheDevice();
};

void tst_CheckBoxWidget::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(CheckBoxWidget::staticMetaObject),
             QStringList({"signal output(bool)", "slot onStateChanged(int)", "slot input(bool)"}));
}

void tst_CheckBoxWidget::boxLooksAsItsParametersSay()
{
    Stand<CheckBoxDevice> stand({{"widget/label", "Pump"}, {"widget/size", "24"}});
    auto* const box = stand.only<QCheckBox>();
    QVERIFY(box);
    QCOMPARE(box->text(), QString("Pump"));
    QCOMPARE(box->font().family(), QString("Arial"));
    QCOMPARE(box->font().pointSize(), 24);
    QCOMPARE(box->font().weight(), 50);
    QVERIFY(!box->font().italic());
    QCOMPARE(box->styleSheet(), QString("QCheckBox::indicator {width: 24px; height: 24px;}"));
    QCOMPARE(placeOf(box, *stand.widget->getLayout()),
             QString("row 0, column 0, 1 x 1, alignment 0x0"));
    QCOMPARE(stand.widget->focusProxy(), box);
    QCOMPARE(stand.widget->sizePolicy(), QWidget().sizePolicy());
    QCOMPARE(QAccessible::queryAccessibleInterface(box)->text(QAccessible::Name), QString("Pump"));
}

void tst_CheckBoxWidget::indicatorIsAsLargeAsTheParameter()
{
    Stand<CheckBoxDevice> stand({{"widget/size", "24"}});
    auto* const box = stand.only<QCheckBox>();
    box->ensurePolished();
    QCOMPARE(box->style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, box), 24);
    QCOMPARE(box->style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, box), 24);
    Stand<CheckBoxDevice> usual;
    usual.only<QCheckBox>()->ensurePolished();
    QCOMPARE(usual.only<QCheckBox>()->font().pointSize(), 16);
    QCOMPARE(usual.only<QCheckBox>()->style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr,
                                                           usual.only<QCheckBox>()),
             16);
}

void tst_CheckBoxWidget::indicatorLargerThanAScreenIsBounded_data()
{
    QTest::addColumn<QString>("size");
    QTest::addColumn<int>("pixels");
    QTest::newRow("large") << "2000" << 2000;
    QTest::newRow("largest") << "4096" << 4096;
    QTest::newRow("larger") << "4097" << 4096;
    QTest::newRow("huge") << "1000000000" << 4096;
}

void tst_CheckBoxWidget::indicatorLargerThanAScreenIsBounded()
{
    QFETCH(QString, size);
    QFETCH(int, pixels);
    Stand<CheckBoxDevice> stand({{"widget/label", "Pump"}, {"widget/size", size}});
    auto* const box = stand.only<QCheckBox>();
    QCOMPARE(box->styleSheet(),
             QString("QCheckBox::indicator {width: %1px; height: %1px;}").arg(pixels));
    QCOMPARE(box->font().pointSize(), size.toInt());
    box->ensurePolished();
    const QSize room = box->sizeHint();
    QVERIFY2(qint64(room.width()) * room.height() < 500'000'000,
             qPrintable(QString("%1 x %2").arg(room.width()).arg(room.height())));
}

void tst_CheckBoxWidget::boxStartsUncheckedAndSilent()
{
    WiredBox wired;
    wired.device.postInitialisation();
    QVERIFY(!wired.box->isChecked());
    QCOMPARE(wired.recorder->take(), QStringList());
}

void tst_CheckBoxWidget::operatorsClickPassesOnce()
{
    WiredBox wired;
    QTest::mouseClick(wired.box, Qt::LeftButton, Qt::NoModifier, tick(*wired.box));
    QVERIFY(wired.box->isChecked());
    QCOMPARE(wired.recorder->take(), QStringList({"output(true)", "output(1)"}));
    QTest::mouseClick(wired.box, Qt::LeftButton, Qt::NoModifier, tick(*wired.box));
    QVERIFY(!wired.box->isChecked());
    QCOMPARE(wired.recorder->take(), QStringList({"output(false)", "output(0)"}));
}

void tst_CheckBoxWidget::spaceKeyTogglesThroughTheFocusProxy()
{
    WiredBox wired;
    QApplication::setActiveWindow(wired.widget.get());
    wired.widget->setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), wired.box);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QCOMPARE(wired.recorder->take(), QStringList({"output(true)", "output(1)"}));
}

void tst_CheckBoxWidget::inputThatChangesTheBoxPassesTwice()
{
    WiredBox wired;
    wired.device.input(true);
    QVERIFY(wired.box->isChecked());
    QCOMPARE(wired.recorder->take(), kYesTwice);
    wired.device.input(false);
    QVERIFY(!wired.box->isChecked());
    QCOMPARE(wired.recorder->take(), kNoTwice);
}

void tst_CheckBoxWidget::inputThatChangesNothingPassesOnce()
{
    WiredBox wired;
    wired.device.input(true);
    wired.recorder->take();
    wired.device.input(true);
    QCOMPARE(wired.recorder->take(), QStringList({"output(true)", "output(1)"}));
}

void tst_CheckBoxWidget::numberMovesTheBox()
{
    WiredBox wired;
    wired.device.input(0.5);
    QVERIFY(wired.box->isChecked());
    QCOMPARE(wired.recorder->take(), kYesTwice);
    wired.device.input(1e-9);
    QVERIFY(!wired.box->isChecked());
    QCOMPARE(wired.recorder->take(), kNoTwice);
}

void tst_CheckBoxWidget::partlyCheckedCountsAsChecked()
{
    Stand<CheckBoxDevice> stand;
    Recorder recorder(stand.widget.get(), BaseWidget::staticMetaObject);
    stand.only<QCheckBox>()->setCheckState(Qt::PartiallyChecked);
    QCOMPARE(recorder.take().first(), QString("output(true)"));
    auto* const widget = qobject_cast<CheckBoxWidget*>(stand.widget.get());
    widget->onStateChanged(Qt::Unchecked);
    QCOMPARE(recorder.take().first(), QString("output(false)"));
}

void tst_CheckBoxWidget::inputBeforeInitialiseStillPassesTheDevice()
{
    CheckBoxDevice device;
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    Recorder recorder(&device);
    device.input(true);
    QCOMPARE(recorder.take(), QStringList({"output(true)", "output(1)"}));
    qobject_cast<CheckBoxWidget*>(widget.get())->input(true);
    QVERIFY(widget->findChildren<QWidget*>().isEmpty());
}

NORVO_TEST(tst_CheckBoxWidget)
#include "tst_CheckBoxWidget.moc"
