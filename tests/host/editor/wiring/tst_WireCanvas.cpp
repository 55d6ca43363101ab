// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/WiredPanel.h"
#include "TestMain.h"

#include "host/editor/wiring/DeviceShelf.h"
#include "host/editor/wiring/WireCanvas.h"
#include "host/panel/edit/ParamEdit.h"
#include "host/panel/run/Panel.h"
#include "host/window/look/TouchSize.h"

#include <QAction>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QtTest>

#include <memory>

using norvo::DeviceShelf;
using norvo::WireCanvas;
using norvo::WireLine;

namespace {

const QByteArray kPanel =
    "devices:\n"
    "  go: {device: button, params: {text: Go, widget: {row: 0, column: 0}}}\n"
    "  lamp: {device: indicator, params: {widget: {row: 0, column: 2}}}\n"
    "  goal: {device: input, params: {widget: {row: 1, column: 0}}}\n"
    "  field: {device: output_digital, params: {widget: {row: 1, column: 2}}}\n"
    "  wave: {device: generator, params: {interval: 20}}\n"
    "connections:\n"
    "  - wave.output(double) -> field.input(double)\n";

const QByteArray kPages =
    "devices:\n"
    "  go: {device: button, params: {text: Go, widget: {area: First, row: 0, column: 0}}}\n"
    "  lamp: {device: indicator, params: {widget: {area: Second, row: 0, column: 0}}}\n"
    "connections:\n"
    "  - go.toggled -> lamp.input\n";

} // namespace

class tst_WireCanvas : public QObject
{
    Q_OBJECT

private slots:
    void aTapShowsTheKeysOfADevice();
    void threeTapsConnect();
    void ofSeveralPairsOneIsPicked();
    void whatDoesNotFitSaysWhyOnTap();
    void anInputCanBeTakenFirst();
    void aDeviceOfTheShelfIsConnectedToo();
    void theKeyboardAloneConnects();
    void deleteRemovesTheLineThatWasTapped();
    void aLineOfATemplateIsFixed();
    void aLineToAnotherPageLeadsThere();
    void escapeGoesBackStepByStep();
    void valuesStandOnTheirLines();
    void aStubHasItsValueToo();
    void anEmptyDeviceIsNamed();
    void theChosenLineIsTold();
    void nothingIsHeardOncePutAway();
    void aCircleIsTold();
};

void tst_WireCanvas::aTapShowsTheKeysOfADevice()
{
    WiredPanel panel(kPanel);
    QVERIFY(panel.canvas->isVisible());
    panel.tapDevice("go");
    QCOMPARE(panel.session->selection(), QStringList("go"));
    const QPushButton* const output = panel.key("go.toggled");
    const QPushButton* const input = panel.key("go.setToggled");
    QVERIFY(output && input);
    QVERIFY(input->geometry().right() < output->geometry().left());
    const int target =
        norvo::TouchSize::pixels(norvo::PanelLook::Touch::Fingers, *panel.canvas->screen());
    for (const QPushButton* key : panel.canvas->findChildren<QPushButton*>()) {
        QVERIFY2(key->height() >= target && key->width() >= target, qPrintable(key->text()));
        QVERIFY2(panel.canvas->rect().contains(key->geometry()), qPrintable(key->text()));
        for (const QPushButton* other : panel.canvas->findChildren<QPushButton*>()) {
            QVERIFY(other == key || !other->geometry().intersects(key->geometry()));
        }
    }
    panel.tapDevice("lamp");
    QVERIFY(!panel.key("go.toggled"));
    QVERIFY(panel.key("lamp.input"));
}

void tst_WireCanvas::threeTapsConnect()
{
    WiredPanel panel(kPanel);
    panel.tapDevice("go");
    panel.tapKey("go.toggled");
    panel.tapDevice("lamp");
    QCOMPARE(panel.connections().last(), QString("go.toggled -> lamp.input"));
    QCOMPARE(panel.session->undoName(), QString("Connect go to lamp"));
    QCOMPARE(panel.canvas->selectedConnection(), 1);
    QVERIFY2(panel.problems.isEmpty(), qPrintable(panel.problems.join("; ")));
    panel.session->undo();
    QCOMPARE(panel.session->document().text(), kPanel);
}

void tst_WireCanvas::ofSeveralPairsOneIsPicked()
{
    WiredPanel panel(kPanel);
    panel.tapDevice("goal");
    panel.tapKey("goal.output");
    panel.tapDevice("field");
    QVERIFY(panel.list());
    QVERIFY(panel.list()->item(1)->text().contains("goal.output(QString) -> field.input"));
    QTest::mouseClick(panel.list()->viewport(), Qt::LeftButton, {},
                      panel.list()->visualItemRect(panel.list()->item(1)).center());
    panel.settle();
    QCOMPARE(panel.connections().last(), QString("goal.output(QString) -> field.input"));
}

void tst_WireCanvas::whatDoesNotFitSaysWhyOnTap()
{
    WiredPanel panel(kPanel);
    panel.tapDevice("goal");
    panel.tapKey("goal.output");
    panel.tapDevice("lamp");
    QVERIFY(panel.hasSaid("goal.output carries number or text, lamp.input takes yes/no"));
    QCOMPARE(panel.connections().size(), 1);
}

void tst_WireCanvas::anInputCanBeTakenFirst()
{
    WiredPanel panel(kPanel);
    panel.tapDevice("lamp");
    panel.tapKey("lamp.input");
    panel.tapDevice("go");
    QCOMPARE(panel.connections().last(), QString("go.toggled -> lamp.input"));
}

void tst_WireCanvas::aDeviceOfTheShelfIsConnectedToo()
{
    WiredPanel panel(kPanel);
    QCOMPARE(panel.canvas->shelf().devices(), QStringList("wave"));
    QVERIFY(panel.canvas->shelf().isVisible());
    QVERIFY(panel.canvas->geometry().bottom() < panel.canvas->shelf().geometry().top());
    panel.tapDevice("wave");
    QVERIFY(panel.key("wave.output"));
    panel.tapKey("wave.output");
    panel.tapDevice("goal"); // Which has one input that fits.
    QCOMPARE(panel.connections().last(), QString("wave.output -> goal.input"));
}

void tst_WireCanvas::theKeyboardAloneConnects()
{
    WiredPanel panel(kPanel);
    panel.canvas->setFocus();
    QTest::keyClick(panel.canvas, Qt::Key_Tab);
    QCOMPARE(panel.session->selection(), QStringList("go"));
    QTest::keyClick(panel.canvas, Qt::Key_Return);
    QWidget* focus = QApplication::focusWidget();
    for (int i = 0; i < 20 && focus->objectName() != "go.toggled"; ++i) {
        QTest::keyClick(focus, i % 2 ? Qt::Key_Tab : Qt::Key_Down);
        focus = QApplication::focusWidget();
    }
    QCOMPARE(focus->objectName(), QString("go.toggled"));
    QTest::keyClick(focus, Qt::Key_Return);
    panel.settle();
    QVERIFY(panel.canvas->hasFocus());
    QTest::keyClick(panel.canvas, Qt::Key_Tab);
    QTest::keyClick(panel.canvas, Qt::Key_Return);
    panel.settle();
    QCOMPARE(panel.connections().last(), QString("go.toggled -> lamp.input"));
}

void tst_WireCanvas::deleteRemovesTheLineThatWasTapped()
{
    WiredPanel panel(kPanel);
    const WireLine line = panel.canvas->scene().lines().first();
    panel.tap(line.points[16].toPoint());
    QCOMPARE(panel.canvas->selectedConnection(), 0);
    QTest::keyClick(panel.canvas, Qt::Key_Delete);
    QCOMPARE(panel.connections(), QStringList());
    QVERIFY(!panel.canvas->actions().first()->isEnabled());
    QCOMPARE(panel.session->undoName(), QString("Disconnect wave from field"));
}

void tst_WireCanvas::aLineOfATemplateIsFixed()
{
    WiredPanel panel("templates:\n"
                     "  pair:\n"
                     "    devices:\n"
                     "      go: {device: button}\n"
                     "      lamp: {device: indicator}\n"
                     "    connections:\n"
                     "      - go.toggled -> lamp.input\n"
                     "devices:\n"
                     "  a: {use: pair}\n");
    QTest::keyClick(panel.canvas, Qt::Key_Down);
    QCOMPARE(panel.canvas->selectedConnection(), 0);
    panel.canvas->actions().first()->trigger();
    QVERIFY2(panel.hasSaid("It is made"), qPrintable(panel.problems.join("; ")));
    QCOMPARE(panel.connections().size(), 1);
}

void tst_WireCanvas::aLineToAnotherPageLeadsThere()
{
    WiredPanel panel(kPages);
    const WireLine line = panel.canvas->scene().lines().first();
    QCOMPARE(line.away, QString("lamp"));
    QVERIFY(line.tag.contains("Second"));
    panel.tap(line.tagRect.center().toPoint());
    QVERIFY(panel.canvas->scene().isOnPage("lamp"));
    QCOMPARE(panel.session->selection(), QStringList("lamp"));
    QCOMPARE(panel.canvas->scene().lines().first().away, QString("go"));
}

void tst_WireCanvas::escapeGoesBackStepByStep()
{
    WiredPanel panel(kPanel);
    panel.tapDevice("goal");
    panel.tapKey("goal.output");
    panel.tapDevice("go"); // Several inputs fit.
    QVERIFY(panel.key("go.toggle") && !panel.key("go.toggled"));
    QTest::keyClick(panel.canvas, Qt::Key_Escape);
    panel.settle();
    QVERIFY(!panel.key("go.toggle"));
    QTest::keyClick(panel.canvas, Qt::Key_Escape);
    panel.tapDevice("lamp"); // Nothing is begun any more.
    QCOMPARE(panel.connections().size(), 1);
    QVERIFY(panel.key("lamp.input"));
}

void tst_WireCanvas::valuesStandOnTheirLines()
{
    WiredPanel panel(kPanel);
    QTRY_VERIFY_WITH_TIMEOUT(panel.canvas->shownValue(0).toDouble() != 0, 60000);
    const QString first = panel.canvas->shownValue(0);
    QTRY_VERIFY_WITH_TIMEOUT(panel.canvas->shownValue(0) != first, 60000);
}

void tst_WireCanvas::aStubHasItsValueToo()
{
    WiredPanel panel(kPages);
    QVERIFY(!panel.canvas->shownValue(0).isEmpty());
    QTest::mouseClick(panel.panel().widget("go")->findChild<QPushButton*>(), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(panel.canvas->shownValue(0), QString("yes"), 60000);
}

void tst_WireCanvas::anEmptyDeviceIsNamed()
{
    WiredPanel panel("devices:\n  empty: {device: label, params: {Value: \"\"}}\n");
    const QRect place = panel.canvas->scene().deviceRect("empty");
    const QImage bare = panel.pages().grab().toImage();
    panel.canvas->hide();
    const QImage without = panel.pages().grab().toImage();
    const QPoint corner = panel.canvas->mapTo(&panel.pages(), place.topLeft());
    QVERIFY(bare.copy({corner, QSize(40, 14)}) != without.copy({corner, QSize(40, 14)}));
    QVERIFY(bare.pixel(corner + QPoint(place.width() / 2, 0)) !=
            without.pixel(corner + QPoint(place.width() / 2, 0)));
}

void tst_WireCanvas::theChosenLineIsTold()
{
    WiredPanel panel(kPages);
    QSignalSpy told(panel.canvas, &WireCanvas::connectionChosen);
    panel.canvas->chooseConnection(0);
    QCOMPARE(panel.canvas->selectedConnection(), 0);
    QCOMPARE(told.count(), 0);
    QTest::keyClick(panel.canvas, Qt::Key_Escape);
    QCOMPARE(told.takeFirst().first().toInt(), -1);
    QTest::keyClick(panel.canvas, Qt::Key_Down);
    QCOMPARE(told.takeFirst().first().toInt(), 0);
    panel.session->change("Other", [](norvo::YamlEdit& edit) {
        return norvo::ParamEdit::setParam(edit, "go", "text", "On");
    });
    QCOMPARE(panel.canvas->selectedConnection(), 0); // It is still there.
}

void tst_WireCanvas::nothingIsHeardOncePutAway()
{
    WiredPanel panel(kPanel);
    const auto receivers = [&panel] {
        struct Counting : QObject
        {
            static int of(const QObject& sender)
            {
                return (sender.*(&Counting::receivers))(SIGNAL(output(double)));
            }
        };
        return Counting::of(*panel.panel().device("wave"));
    };
    QCOMPARE(receivers(), 2);
    panel.canvas->hide();
    QCOMPARE(receivers(), 1);
    panel.canvas->show();
    QCOMPARE(receivers(), 2);
    delete panel.canvas;
    panel.canvas = nullptr;
    QCOMPARE(receivers(), 1);
    QVERIFY(!panel.pages().findChild<DeviceShelf*>());
}

void tst_WireCanvas::aCircleIsTold()
{
    WiredPanel panel("devices:\n"
                     "  a: {device: button}\n"
                     "  b: {device: indicator}\n"
                     "connections:\n"
                     "  - a.toggled -> b.input\n");
    panel.tapDevice("b");
    panel.tapKey("b.output");
    panel.tapDevice("a");
    panel.tapKey("a.setToggled");
    if (panel.list()) {
        QTest::keyClick(panel.list(), Qt::Key_Return);
    }
    panel.settle();
    QCOMPARE(panel.connections().size(), 2);
    QVERIFY2(panel.hasSaid("a -> b -> a") || panel.hasSaid("b -> a -> b"),
             qPrintable(panel.problems.join("; ")));
}

NORVO_TEST(tst_WireCanvas)
#include "tst_WireCanvas.moc"
