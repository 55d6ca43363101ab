// SPDX-License-Identifier: GPL-3.0-or-later

#include "../canvas/CanvasTest.h"
#include "TestMain.h"

#include "host/editor/templates/TemplateSet.h"
#include "host/editor/templates/TemplateSheet.h"

#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>

namespace {

const QByteArray kPanel = "devices:\n"
                          "  trend: {device: label, params: {widget: {row: 0, column: 0}}}\n"
                          "  lamp: {device: indicator, params: {widget: {row: 0, column: 1}}}\n"
                          "  go: {device: button, params: {widget: {row: 3, column: 2}}}\n"
                          "connections:\n"
                          "  - go.toggled -> lamp.input\n";

const QString kTrend = ":/norvo/templates/readout-with-trend.yaml";

} // namespace

/// A panel whose page takes templates.
class tst_PutTemplate : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void aTapPutsATemplateAsOneStep();
    void keysPutATemplate();
    void aTemplateIsDropped();
    void theGhostCoversAllOfIt();
    void takenCellsAreRefused();
    void theSelectedAreSavedAndPutAgain();
    void aNameThatIsTakenKeepsTheSheet();
    void whatComesFromAnotherFileIsNotSaved();

private:
    static norvo::TemplateSheet* saveSelected(CanvasTest& test);

    std::unique_ptr<QTemporaryDir> m_data;
};

void tst_PutTemplate::init()
{
    m_data = std::make_unique<QTemporaryDir>();
    qputenv("XDG_DATA_HOME", m_data->path().toUtf8());
}

norvo::TemplateSheet* tst_PutTemplate::saveSelected(CanvasTest& test)
{
    test.key(Qt::Key_T, Qt::ControlModifier);
    return test.panel.window.findChild<norvo::TemplateSheet*>();
}

void tst_PutTemplate::aTapPutsATemplateAsOneStep()
{
    CanvasTest test(kPanel);
    test.panel.session->templates().read();
    test.panel.session->setToPlace(kTrend);
    test.tap(test.middle(1, 1));
    QCOMPARE(test.problems.count(), 0);
    QCOMPARE(test.selection(), QStringList({"readout", "trend2"}));
    QCOMPARE(toText(test.cells("readout")), QString("1 1 1 1"));
    QCOMPARE(toText(test.cells("trend2")), QString("2 1 1 1"));
    QVERIFY(test.text().contains("  - readout.output(double) -> trend2.input(double)\n"));
    QVERIFY(test.panel.session->toPlace().isEmpty());
    QCOMPARE(test.panel.session->undoName(), QString("Put Readout with trend"));
    test.panel.session->undo();
    QCOMPARE(test.text(), kPanel);
}

void tst_PutTemplate::keysPutATemplate()
{
    CanvasTest test(kPanel);
    test.panel.session->templates().read();
    test.panel.session->setToPlace(kTrend);
    for (const int key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return}) {
        test.key(key);
    }
    QCOMPARE(toText(test.cells("readout")), QString("1 0 1 1"));
}

void tst_PutTemplate::aTemplateIsDropped()
{
    CanvasTest test(kPanel);
    test.panel.session->templates().read();
    QMimeData data;
    data.setData(norvo::CanvasHand::kTypeMime, kTrend.toUtf8());
    const QPoint place = test.middle(1, 0);
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(test.cover(), &enter);
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(test.cover(), &drop);
    CanvasTest::settle();
    QCOMPARE(toText(test.cells("readout")), QString("1 0 1 1"));
}

void tst_PutTemplate::theGhostCoversAllOfIt()
{
    EditedPanel panel(kPanel);
    panel.session->templates().read();
    norvo::CanvasModel model(*panel.session, 40);
    panel.session->setToPlace(kTrend);
    norvo::Cells cell;
    cell.row = 1;
    cell.column = 0;
    model.pointAt(cell);
    QVERIFY(model.view().ghost);
    QCOMPARE(model.view().ghost->refusal, QString());
    QCOMPARE(model.view().ghost->cells.size(), 2);
    QCOMPARE(toText(norvo::CellMap::block(model.view().ghost->cells)), QString("1 0 2 1"));
}

/// Though the tapped cell is free.
void tst_PutTemplate::takenCellsAreRefused()
{
    CanvasTest test(kPanel);
    test.panel.session->templates().read();
    test.panel.session->setToPlace(kTrend);
    test.tap(test.middle(2, 2));
    QCOMPARE(test.problems.count(), 1);
    QVERIFY(test.problems.first().first().toString().contains("go"));
    QCOMPARE(test.text(), kPanel);
    QCOMPARE(test.panel.session->toPlace(), kTrend);
}

void tst_PutTemplate::theSelectedAreSavedAndPutAgain()
{
    CanvasTest test(kPanel);
    test.panel.session->select({"lamp", "go"});
    norvo::TemplateSheet* const sheet = saveSelected(test);
    QVERIFY(sheet);
    QTest::keyClicks(sheet->findChild<QLineEdit*>("templateName"), "Go and lamp");
    QTest::mouseClick(sheet->findChild<QPushButton*>("save"), Qt::LeftButton);
    CanvasTest::settle();
    QCOMPARE(test.text(), kPanel);
    const norvo::PanelTemplate saved = test.panel.session->templates().all().last();
    QCOMPARE(saved.title, QString("Go and lamp"));
    test.panel.session->setToPlace(saved.file);
    test.tap(test.middle(4, 0));
    QCOMPARE(test.problems.count(), 0);
    QCOMPARE(toText(test.cells("lamp2")), QString("4 0 1 1"));
    QCOMPARE(toText(test.cells("go2")), QString("7 1 1 1"));
    QVERIFY(test.text().contains("  - go2.toggled -> lamp2.input\n"));
}

void tst_PutTemplate::aNameThatIsTakenKeepsTheSheet()
{
    CanvasTest test(kPanel);
    QCOMPARE(test.panel.session->templates().save("Lamp", kPanel), QString());
    test.panel.session->select({"lamp"});
    norvo::TemplateSheet* const sheet = saveSelected(test);
    auto* const fault = sheet->findChild<QLabel*>("templateFault");
    QVERIFY(!fault->isVisible());
    auto* const name = sheet->findChild<QLineEdit*>("templateName");
    QTest::keyClicks(name, "Lamp");
    QTest::keyClick(name, Qt::Key_Return);
    QVERIFY(sheet->isVisible());
    QVERIFY(fault->isVisible());
    QTest::keyClicks(name, " two");
    QTest::keyClick(name, Qt::Key_Return);
    QVERIFY(!sheet->isVisible());
    QCOMPARE(test.panel.session->templates().all().last().title, QString("Lamp two"));
}

void tst_PutTemplate::whatComesFromAnotherFileIsNotSaved()
{
    CanvasTest test("templates:\n"
                    "  one: {devices: {lamp: {device: indicator}}}\n"
                    "devices:\n"
                    "  a: {use: one}\n");
    test.panel.session->select({"a-lamp"});
    QCOMPARE(test.selection(), QStringList("a-lamp"));
    QVERIFY(!saveSelected(test));
    QCOMPARE(test.problems.count(), 1);
    test.key(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(test.problems.count(), 2);
}

NORVO_TEST(tst_PutTemplate)
#include "tst_PutTemplate.moc"
