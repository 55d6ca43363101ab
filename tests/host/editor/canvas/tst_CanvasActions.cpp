// SPDX-License-Identifier: GPL-3.0-or-later

#include "CanvasTest.h"
#include "TestMain.h"

#include "host/editor/canvas/LineKeys.h"

#include <QAbstractButton>

namespace {

const QByteArray kPanel =
    "devices:\n"
    "  go: {device: button, params: {text: Go, widget: {row: 0, column: 0}}}\n"
    "  lamp: {device: label, params: {widget: {row: 0, column: 1}}}\n"
    "connections:\n"
    "  - go.toggled -> lamp.inputWarning\n";

const QByteArray kUnplaced = "devices:\n"
                             "  a: {device: label}\n"
                             "  b: {device: label}\n"
                             "  c: {device: label}\n";

} // namespace

class tst_CanvasActions : public QObject
{
    Q_OBJECT

private slots:
    void copiesGoThroughTheClipboard();
    void cutAndDeleteTakeDevicesAway();
    void duplicatesStandBesideTheirModels();
    void duplicatesKeepTheConnectionAmongThem();
    void pasteGoesToThePageThatIsSeen();
    void pasteOfOtherTextSaysSo();
    void rowsAndColumnsAreInsertedAndRemoved();
    void aTapOnANumberOffersKeys();
    void aTapPutsANewDevice();
    void keysPutANewDevice();
    void aTypeIsDropped();
    void devicesWithoutCellsStayWhenAnotherMoves();
    void actionsAreOfferedWhereTheyCanBeDone();

private:
    static QAction* action(const CanvasTest& test, const QString& text)
    {
        for (QAction* const one : test.canvas->actions()) {
            if (one->text() == text) {
                return one;
            }
        }
        qFatal("no action %s", qPrintable(text));
    }
};

void tst_CanvasActions::copiesGoThroughTheClipboard()
{
    CanvasTest test(kPanel);
    test.key(Qt::Key_A, Qt::ControlModifier);
    test.key(Qt::Key_C, Qt::ControlModifier);
    QVERIFY(QGuiApplication::clipboard()->text().contains("go.toggled -> lamp.inputWarning"));
    test.tap(test.middle(1, 0));
    test.key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(test.selection().size(), 2);
    QStringList places;
    for (const QString& id : test.selection()) {
        places.append(toText(test.cells(id)));
    }
    places.sort();
    QCOMPARE(places, QStringList({"1 0 1 1", "1 1 1 1"}));
    QCOMPARE(test.panel.description().connections.size(), 2);
    test.panel.session->undo();
    QCOMPARE(test.text(), kPanel);
}

void tst_CanvasActions::cutAndDeleteTakeDevicesAway()
{
    CanvasTest test(kPanel);
    test.tap(test.middle("lamp"));
    test.key(Qt::Key_X, Qt::ControlModifier);
    QVERIFY(!test.panel.session->device("lamp"));
    QCOMPARE(test.panel.session->undoName(), QString("Cut lamp"));
    test.key(Qt::Key_V, Qt::ControlModifier);
    QVERIFY(test.panel.session->device("lamp"));
    test.key(Qt::Key_Delete);
    QVERIFY(!test.panel.session->device("lamp"));
    QCOMPARE(test.panel.session->undoName(), QString("Delete lamp"));
}

void tst_CanvasActions::duplicatesStandBesideTheirModels()
{
    CanvasTest test(kPanel);
    test.tap(test.middle("go"));
    test.key(Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(test.selection().size(), 1);
    QVERIFY(test.selection().first() != "go");
    QCOMPARE(toText(test.cells(test.selection().first())), QString("1 0 1 1"));
    QCOMPARE(toText(test.cells("go")), QString("0 0 1 1"));
}

void tst_CanvasActions::duplicatesKeepTheConnectionAmongThem()
{
    CanvasTest test(kPanel);
    test.key(Qt::Key_A, Qt::ControlModifier);
    test.key(Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(test.selection(), QStringList({"go2", "lamp2"}));
    QVERIFY(test.text().contains("  - go2.toggled -> lamp2.inputWarning\n"));
    QCOMPARE(toText(test.cells("lamp2")), QString("1 1 1 1"));
    QCOMPARE(test.panel.session->undoName(), QString("Duplicate 2 devices"));
    test.panel.session->undo();
    QCOMPARE(test.text(), kPanel);
}

void tst_CanvasActions::pasteGoesToThePageThatIsSeen()
{
    CanvasTest test(
        "devices:\n"
        "  go: {device: button, params: {widget: {row: 0, column: 0, area: Run}}}\n"
        "  stop: {device: button, params: {widget: {row: 0, column: 0, area: Stop}}}\n");
    test.tap(test.middle("go"));
    test.key(Qt::Key_C, Qt::ControlModifier);
    test.panel.session->select({});
    test.panel.pages().key("Stop")->click();
    CanvasTest::settle();
    test.key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(test.selection(), QStringList("go2"));
    QCOMPARE(test.cells("go2").area, QString("Stop"));
    QCOMPARE(test.panel.session->undoName(), QString("Paste"));
}

void tst_CanvasActions::pasteOfOtherTextSaysSo()
{
    CanvasTest test(kPanel);
    QGuiApplication::clipboard()->setText("Dear all,");
    test.key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(test.problems.count(), 1);
    QGuiApplication::clipboard()->setText("devices:\n  a: {device: label, parms: {}}\n");
    test.key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(test.problems.count(), 2);
    QVERIFY2(test.problems[1][0].toString().contains("parms"),
             qPrintable(test.problems[1][0].toString()));
    QCOMPARE(test.text(), kPanel);
}

void tst_CanvasActions::rowsAndColumnsAreInsertedAndRemoved()
{
    CanvasTest test(kPanel);
    test.tap(test.middle("lamp"));
    test.key(Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(toText(test.cells("lamp")), QString("1 1 1 1"));
    test.key(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(toText(test.cells("lamp")), QString("1 2 1 1"));
    QCOMPARE(toText(test.cells("go")), QString("1 0 1 1"));
    test.tap(test.middle(0, 1));
    action(test, "Remove row")->trigger();
    CanvasTest::settle();
    QCOMPARE(toText(test.cells("lamp")), QString("0 2 1 1"));
    test.tap(test.middle(1, 1));
    action(test, "Remove column")->trigger();
    QCOMPARE(toText(test.cells("lamp")), QString("0 1 1 1"));
    test.tap(test.middle("go"));
    action(test, "Remove row")->trigger(); // It holds devices.
    QCOMPARE(test.problems.count(), 1);
}

void tst_CanvasActions::aTapOnANumberOffersKeys()
{
    CanvasTest test(kPanel);
    test.tap({4, test.middle("go").y()});
    auto* const keys = test.panel.window.findChild<norvo::LineKeys*>();
    QVERIFY(keys);
    QVERIFY(test.cover()->rect().contains(keys->geometry()));
    QTest::mouseClick(keys->findChild<QPushButton*>(), Qt::LeftButton);
    CanvasTest::settle();
    QCOMPARE(toText(test.cells("go")), QString("1 0 1 1"));
    QVERIFY(!test.panel.window.findChild<norvo::LineKeys*>());
}

void tst_CanvasActions::aTapPutsANewDevice()
{
    CanvasTest test(kPanel);
    test.panel.session->setToPlace("label");
    test.tap(test.middle("go"));
    QCOMPARE(test.problems.count(), 1);
    test.tap(test.middle(1, 1));
    QCOMPARE(test.selection(), QStringList("label"));
    QCOMPARE(toText(test.cells("label")), QString("1 1 1 1"));
    QVERIFY(test.panel.session->toPlace().isEmpty());
}

void tst_CanvasActions::keysPutANewDevice()
{
    CanvasTest test(kPanel);
    test.panel.session->setToPlace("label");
    for (const int key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Right, Qt::Key_Return}) {
        test.key(key);
    }
    QCOMPARE(toText(test.cells("label")), QString("1 1 1 1"));
    test.panel.session->setToPlace("label");
    test.key(Qt::Key_Escape);
    QVERIFY(test.panel.session->toPlace().isEmpty());
}

void tst_CanvasActions::aTypeIsDropped()
{
    CanvasTest test(kPanel);
    QMimeData data;
    data.setData(norvo::CanvasHand::kTypeMime, "label");
    const QPoint place = test.middle(1, 0);
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(test.cover(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(test.cover(), &drop);
    QCOMPARE(toText(test.cells("label")), QString("1 0 1 1"));
}

void tst_CanvasActions::devicesWithoutCellsStayWhenAnotherMoves()
{
    CanvasTest test(kUnplaced);
    test.drag(test.middle("a"), test.middle(0, 1));
    QCOMPARE(toText(test.cells("a")), QString("0 1 1 1"));
    QCOMPARE(toText(test.cells("b")), QString("1 0 1 1"));
    QCOMPARE(toText(test.cells("c")), QString("2 0 1 1"));
    test.tap(test.middle("b"));
    test.key(Qt::Key_Delete);
    QCOMPARE(toText(test.cells("c")), QString("2 0 1 1"));
}

void tst_CanvasActions::actionsAreOfferedWhereTheyCanBeDone()
{
    CanvasTest test(kPanel);
    QVERIFY(!action(test, "Delete")->isEnabled());
    QVERIFY(!action(test, "Insert row above")->isEnabled());
    test.tap(test.middle("go"));
    QVERIFY(action(test, "Delete")->isEnabled());
    QVERIFY(action(test, "Insert row above")->isEnabled());
    QVERIFY(!action(test, "Move to page")->isEnabled()); // There is one only.
    test.tap(test.middle(1, 1));
    QVERIFY(!action(test, "Delete")->isEnabled());
    QVERIFY(action(test, "Insert row above")->isEnabled());
}

NORVO_TEST(tst_CanvasActions)
#include "tst_CanvasActions.moc"
