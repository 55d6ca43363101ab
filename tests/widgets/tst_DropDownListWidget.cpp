// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "GridPlaces.h"
#include "Recorder.h"
#include "Stand.h"

#include "devices/DropDownListDevice.h"
#include "widgets/DropDownListWidget.h"
#include "TestMain.h"

#include <QtTest>

namespace {

using ListStand = Stand<DropDownListDevice>;

/// An object that knows how many connections one of its signals has.
template <class Base>
class Counting : public Base
{
public:
    using Base::Base;
    int receiversOf(const char* signal) const { return Base::receivers(signal); }
};

QStringList itemsOf(const QComboBox& list)
{
    QStringList items;
    for (int i = 0; i < list.count(); ++i) {
        items.append(list.itemText(i));
    }
    return items;
}

} // namespace

class tst_DropDownListWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSignalsAndSlots();

    void listHoldsTheOptionsInOrder_data();
    void listHoldsTheOptionsInOrder();
    void listLooksAsItsParametersSay();
    void captionIsAboveTheList();
    void noCaptionWhenItIsEmpty();

    void initialChoiceIsSentOnlyWhenAskedFor_data();
    void initialChoiceIsSentOnlyWhenAskedFor();
    void heldChoiceIsShown_data();
    void heldChoiceIsShown();
    void rebuiltWidgetShowsTheLastChoice();
    void heldChoiceIsSentOnInit();
    void initialisedFlagIsClearWhileTheInitialChoiceLeaves();
    void secondInitialiseConnectsTheDeviceOnce();
    void choiceMayInitialiseAgain();
};

void tst_DropDownListWidget::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(DropDownListWidget::staticMetaObject),
             QStringList({"signal output(int)", "signal currentTextChanged(QString)",
                          "slot onIndexChanged(int)", "slot input(int)", "slot input(QString)"}));
}

void tst_DropDownListWidget::listHoldsTheOptionsInOrder_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<QStringList>("items");
    QTest::newRow("in order") << "c|a|b"
                              << "|" << QStringList{"c", "a", "b"};
    QTest::newRow("empty parts are skipped") << "a||b"
                                             << "|" << QStringList{"a", "b"};
    QTest::newRow("separator in any case") << "lowxhigh"
                                           << "X" << QStringList{"low", "high"};
    QTest::newRow("empty separator") << "ab"
                                     << "" << QStringList{"a", "b"};
}

void tst_DropDownListWidget::listHoldsTheOptionsInOrder()
{
    QFETCH(QString, options);
    QFETCH(QString, separator);
    QFETCH(QStringList, items);
    ListStand stand({{"options", options}, {"separator", separator}});
    QVERIFY(stand.only<QComboBox>());
    QCOMPARE(itemsOf(*stand.only<QComboBox>()), items);
    QCOMPARE(stand.only<QComboBox>()->currentIndex(), 0);
}

void tst_DropDownListWidget::listLooksAsItsParametersSay()
{
    ListStand stand({{"widget/size", "23"}});
    auto* const list = stand.only<QComboBox>();
    QCOMPARE(list->font().family(), QString("Arial"));
    QCOMPARE(list->font().pointSize(), 23);
    QCOMPARE(list->font().weight(), 50);
    QVERIFY(!list->font().italic());
    QVERIFY(!list->isEditable());
    QCOMPARE(stand.widget->focusProxy(), list);
    QCOMPARE(stand.widget->sizePolicy(), list->sizePolicy());
}

void tst_DropDownListWidget::captionIsAboveTheList()
{
    ListStand stand({{"widget/label", "Mode"}, {"widget/labelSize", "19"}});
    auto* const list = stand.only<QComboBox>();
    QLabel* caption = nullptr;
    const QList<QLabel*> labels =
        stand.widget->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(labels.size(), 1);
    caption = labels.first();
    QCOMPARE(caption->text(), QString("Mode"));
    QCOMPARE(caption->font().family(), QString("Arial"));
    QCOMPARE(caption->font().pointSize(), 19);
    QCOMPARE(caption->font().weight(), 50);
    QVERIFY(!caption->font().italic());
    const QGridLayout& grid = *stand.widget->getLayout();
    QCOMPARE(placeOf(caption, grid), QString("row 0, column 0, 1 x 1, alignment 0x0"));
    QCOMPARE(placeOf(list, grid), QString("row 1, column 0, 1 x 1, alignment 0x0"));
    QCOMPARE(list->accessibleName(), QString("Mode"));
}

void tst_DropDownListWidget::noCaptionWhenItIsEmpty()
{
    ListStand stand;
    QVERIFY(stand.widget->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly).isEmpty());
    QCOMPARE(placeOf(stand.only<QComboBox>(), *stand.widget->getLayout()),
             QString("row 0, column 0, 1 x 1, alignment 0x0"));
}

void tst_DropDownListWidget::initialChoiceIsSentOnlyWhenAskedFor_data()
{
    QTest::addColumn<QString>("emitOnInit");
    QTest::addColumn<QStringList>("sent");
    const QStringList first{"output(0)", "output(0)", "currentTextChanged(\"value1\")"};
    QTest::newRow("default") << "" << QStringList();
    QTest::newRow("false") << "false" << QStringList();
    QTest::newRow("true") << "true" << first;
    QTest::newRow("TRUE") << "TRUE" << first;
}

void tst_DropDownListWidget::initialChoiceIsSentOnlyWhenAskedFor()
{
    QFETCH(QString, emitOnInit);
    QFETCH(QStringList, sent);
    DropDownListDevice device;
    if (!emitOnInit.isEmpty()) {
        device.setParam("emitOnInit", emitOnInit);
    }
    device.setRunning(device.initialise());
    Recorder recorder(&device);
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    widget->initialise();
    QCOMPARE(recorder.take(), sent);
    QCOMPARE(device.getIndex().has_value(), !sent.isEmpty());
    QVERIFY(!device.getItem());
}

void tst_DropDownListWidget::heldChoiceIsShown_data()
{
    QTest::addColumn<QVariant>("index");
    QTest::addColumn<QVariant>("item");
    QTest::addColumn<int>("shown");
    QTest::newRow("index") << QVariant(2) << QVariant() << 2;
    QTest::newRow("item") << QVariant() << QVariant("b") << 1;
    QTest::newRow("item wins") << QVariant(2) << QVariant("b") << 1;
    QTest::newRow("index not in the list") << QVariant(9) << QVariant() << -1;
    QTest::newRow("item not in the list") << QVariant(2) << QVariant("z") << 2;
}

void tst_DropDownListWidget::heldChoiceIsShown()
{
    QFETCH(QVariant, index);
    QFETCH(QVariant, item);
    QFETCH(int, shown);
    DropDownListDevice device;
    device.setParam("options", "a|b|c");
    device.setRunning(device.initialise());
    if (index.isValid()) {
        device.input(index.toInt());
    }
    if (item.isValid()) {
        device.input(item.toString());
    }
    Recorder recorder(&device);
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    widget->initialise();
    QCOMPARE(widget->findChild<QComboBox*>()->currentIndex(), shown);
    QCOMPARE(recorder.take(), QStringList());
}

void tst_DropDownListWidget::rebuiltWidgetShowsTheLastChoice()
{
    ListStand stand;
    stand.widget->show();
    QTest::keyClick(stand.only<QComboBox>(), Qt::Key_Down);
    stand.widget.reset(stand.device.createWidget());
    QVERIFY(stand.device.initialise());
    stand.widget->initialise();
    QCOMPARE(stand.only<QComboBox>()->currentText(), QString("value2"));
}

void tst_DropDownListWidget::heldChoiceIsSentOnInit()
{
    DropDownListDevice device;
    device.setParam("emitOnInit", "true");
    device.setRunning(device.initialise());
    device.input(QString("value2"));
    Recorder recorder(&device);
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    widget->initialise();
    QCOMPARE(recorder.take(),
             QStringList({"output(1)", "output(1)", "currentTextChanged(\"value2\")"}));
}

void tst_DropDownListWidget::initialisedFlagIsClearWhileTheInitialChoiceLeaves()
{
    DropDownListDevice device;
    device.setParam("emitOnInit", "true");
    device.setRunning(device.initialise());
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    QVector<bool> heard;
    connect(&device, &DropDownListDevice::currentTextChanged, this,
            [&] { heard.append(widget->isInitialised()); });
    widget->initialise();
    QCOMPARE(heard, QVector<bool>{false});
    QVERIFY(widget->isInitialised());
}

void tst_DropDownListWidget::secondInitialiseConnectsTheDeviceOnce()
{
    Counting<DropDownListDevice> device;
    device.setRunning(device.initialise());
    Counting<DropDownListWidget> widget(&device, nullptr);
    widget.initialise();
    widget.initialise();
    QCOMPARE(widget.receiversOf(SIGNAL(output(int))), 1);
    QCOMPARE(widget.receiversOf(SIGNAL(currentTextChanged(QString))), 1);
    QCOMPARE(device.receiversOf(SIGNAL(output(int))), 1);
    QCOMPARE(device.receiversOf(SIGNAL(output(QString))), 1);

    widget.show();
    Recorder recorder(&device);
    QTest::keyClick(widget.findChildren<QComboBox*>().last(), Qt::Key_Down);
    QCOMPARE(recorder.take(),
             QStringList({"output(1)", "output(1)", "currentTextChanged(\"value2\")"}));
}

void tst_DropDownListWidget::choiceMayInitialiseAgain()
{
    ListStand stand;
    stand.widget->show();
    Recorder recorder(&stand.device);
    connect(&stand.device, QOverload<int>::of(&DropDownListDevice::output), this,
            [&] { stand.widget->initialise(); });
    QTest::keyClick(stand.only<QComboBox>(), Qt::Key_Down);
    QCOMPARE(recorder.take(),
             QStringList({"output(1)", "output(1)", "currentTextChanged(\"value2\")"}));
    QCOMPARE(stand.widget->findChildren<QComboBox*>().last()->currentText(), QString("value2"));
}

NORVO_TEST(tst_DropDownListWidget)
#include "tst_DropDownListWidget.moc"
