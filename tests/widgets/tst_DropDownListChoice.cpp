// SPDX-License-Identifier: GPL-3.0-or-later

#include "Recorder.h"
#include "Stand.h"
#include "Wheel.h"

#include "devices/DropDownListDevice.h"
#include "widgets/DropDownListWidget.h"
#include "TestMain.h"

#include <QtTest>

namespace {

/// A list of three whose outputs were wired before its widget came, as on a panel.
struct WiredList
{
    WiredList()
    {
        device.setParam("options", "a|b|c");
        device.setRunning(device.initialise());
        recorder = std::make_unique<Recorder>(&device);
        widget.reset(device.createWidget());
        widget->initialise();
        list = widget->findChild<QComboBox*>();
        widget->resize(200, 60);
        widget->show();
    }

    DropDownListDevice device;
    std::unique_ptr<Recorder> recorder;
    std::unique_ptr<BaseWidget> widget;
    QComboBox* list = nullptr;
};

QStringList chosen(int index, const QString& text)
{
    const QString number = QString("output(%1)").arg(index);
    return {number, number, "currentTextChanged(\"" + text + "\")"};
}

} // namespace

class tst_DropDownListChoice : public QObject
{
    Q_OBJECT

private slots:
    void mouseChoosesFromTheOpenList();
    void choosingTheSameIsSilent();
    void keysChooseThroughTheFocusProxy();
    void wheelChooses();

    void indexFromTheWiringMovesTheListInSilence();
    void numberFromTheWiringMovesTheListInSilence();
    void itemFromTheWiringMovesTheListInSilence();
    void indexNotInTheListClearsTheChoice();
    void itemNotInTheListChangesNothing();
    void operatorsChoiceAfterOneFromTheWiring();
    void operatorBackToTheHeldIndexSendsTheTextOnly();
    void textThatLeavesIsTheOneShown();
};

void tst_DropDownListChoice::mouseChoosesFromTheOpenList()
{
    WiredList wired;
    QTest::mouseClick(wired.list, Qt::LeftButton);
    QAbstractItemView* const view = wired.list->view();
    QTRY_VERIFY(view->isVisible());
    const QRect row = view->visualRect(wired.list->model()->index(2, 0));
    QMouseEvent move(QEvent::MouseMove, row.center(), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(view->viewport(), &move); // a hand that did not move chooses nothing
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, row.center());
    QTRY_COMPARE(wired.list->currentText(), QString("c"));
    QCOMPARE(wired.recorder->take(), chosen(2, "c"));
    QCOMPARE(wired.device.getIndex(), std::optional<int>(2));
    QVERIFY(!wired.device.getItem());
}

void tst_DropDownListChoice::choosingTheSameIsSilent()
{
    WiredList wired;
    QTest::keyClick(wired.list, Qt::Key_Home);
    QCOMPARE(wired.recorder->take(), QStringList());
}

void tst_DropDownListChoice::keysChooseThroughTheFocusProxy()
{
    WiredList wired;
    QApplication::setActiveWindow(wired.widget.get());
    wired.widget->setFocus();
    QTRY_COMPARE(QApplication::focusWidget(), wired.list);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QCOMPARE(wired.recorder->take(), chosen(1, "b"));
    QTest::keyClick(QApplication::focusWidget(), 'c');
    QCOMPARE(wired.recorder->take(), chosen(2, "c"));
}

void tst_DropDownListChoice::wheelChooses()
{
    WiredList wired;
    turnWheel(*wired.list, -1);
    QCOMPARE(wired.recorder->take(), chosen(1, "b"));
    turnWheel(*wired.list, 1);
    QCOMPARE(wired.recorder->take(), chosen(0, "a"));
}

void tst_DropDownListChoice::indexFromTheWiringMovesTheListInSilence()
{
    WiredList wired;
    QSignalSpy changes(wired.list, QOverload<int>::of(&QComboBox::currentIndexChanged));
    wired.device.input(1);
    QCOMPARE(wired.list->currentText(), QString("b"));
    QCOMPARE(wired.recorder->take(), QStringList({"output(1)", "output(1)"}));
    QCOMPARE(changes.size(), 0);
}

void tst_DropDownListChoice::numberFromTheWiringMovesTheListInSilence()
{
    WiredList wired;
    wired.device.input(1.5);
    QCOMPARE(wired.list->currentText(), QString("c"));
    QCOMPARE(wired.recorder->take(), QStringList({"output(2)", "output(2)"}));
}

void tst_DropDownListChoice::itemFromTheWiringMovesTheListInSilence()
{
    WiredList wired;
    wired.device.input(QString("c"));
    QCOMPARE(wired.list->currentIndex(), 2);
    QCOMPARE(wired.recorder->take(), QStringList("output(\"c\")"));
    QVERIFY(!wired.device.getIndex());
}

void tst_DropDownListChoice::indexNotInTheListClearsTheChoice()
{
    WiredList wired;
    wired.device.input(1000);
    QCOMPARE(wired.list->currentIndex(), -1);
    QCOMPARE(wired.list->currentText(), QString());
    QCOMPARE(wired.recorder->take(), QStringList({"output(1000)", "output(1000)"}));
    QCOMPARE(wired.device.getIndex(), std::optional<int>(1000));
}

void tst_DropDownListChoice::itemNotInTheListChangesNothing()
{
    WiredList wired;
    wired.device.input(QString("C"));
    QCOMPARE(wired.list->currentIndex(), 0);
    QCOMPARE(wired.recorder->take(), QStringList("output(\"C\")"));
    QCOMPARE(wired.device.getItem(), std::optional<QString>("C"));
}

void tst_DropDownListChoice::operatorsChoiceAfterOneFromTheWiring()
{
    WiredList wired;
    wired.device.input(1);
    wired.recorder->take();
    QTest::keyClick(wired.list, Qt::Key_Down);
    QCOMPARE(wired.recorder->take(), chosen(2, "c"));
}

// The device holds an index still that the list has left for a text from the wiring.
void tst_DropDownListChoice::operatorBackToTheHeldIndexSendsTheTextOnly()
{
    WiredList wired;
    wired.device.input(1);
    wired.device.input(QString("c"));
    wired.recorder->take();
    QTest::keyClick(wired.list, Qt::Key_Up);
    QCOMPARE(wired.list->currentText(), QString("b"));
    QCOMPARE(wired.recorder->take(), QStringList("currentTextChanged(\"b\")"));
}

void tst_DropDownListChoice::textThatLeavesIsTheOneShown()
{
    WiredList wired;
    QMetaObject::invokeMethod(wired.widget.get(), "onIndexChanged", Q_ARG(int, 2));
    QCOMPARE(wired.recorder->take(),
             QStringList({"output(2)", "output(2)", "currentTextChanged(\"c\")"}));
    connect(&wired.device, QOverload<int>::of(&DropDownListDevice::output), &wired.device,
            [&] { wired.device.input(QString("a")); }); // a receiver that corrects the choice
    wired.list->setCurrentIndex(1);
    QCOMPARE(wired.recorder->take().last(), QString("currentTextChanged(\"a\")"));
}

NORVO_TEST(tst_DropDownListChoice)
#include "tst_DropDownListChoice.moc"
