// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/EditedPanel.h"
#include "TestMain.h"

#include "host/editor/wiring/ConnectionSheet.h"
#include "host/editor/wiring/ConnectionTable.h"
#include "host/editor/wiring/ports/PortColumn.h"
#include "host/window/look/TouchSize.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QTableWidget>
#include <QtTest>

using norvo::ConnectionSheet;
using norvo::ConnectionTable;

namespace {

const QByteArray kPanel = "templates:\n"
                          "  pair:\n"
                          "    devices:\n"
                          "      key: {device: button}\n"
                          "      light: {device: indicator}\n"
                          "    connections:\n"
                          "      - key.toggled -> light.input\n"
                          "devices:\n"
                          "  a: {use: pair}\n"
                          "  go: {device: button}\n"
                          "  lamp: {device: indicator}\n"
                          "  other: {device: indicator}\n"
                          "  goal: {device: input}\n"
                          "  field: {device: output_digital}\n"
                          "connections:\n"
                          "  - go.toggled -> lamp.input # kept\n"
                          "  - goal.output(double) -> field.input\n";

/// A panel beside the table of its connections.
struct TablePanel : EditedPanel
{
    explicit TablePanel(const QByteArray& text = kPanel)
        : EditedPanel(text), table(new ConnectionTable(*session, &window))
    {
        table->setGeometry(480, 0, 320, 480);
        table->show();
        rows = table->findChild<QTableWidget*>("connections");
    }
    ~TablePanel() override { delete table; }

    void tapKey(const QString& name) const
    {
        QTest::mouseClick(table->findChild<QPushButton*>(name), Qt::LeftButton);
    }
    void tapRow(int row) const
    {
        QTest::mouseClick(rows->viewport(), Qt::LeftButton, {},
                          rows->visualItemRect(rows->item(row, 0)).center());
    }
    /// The row of the connection that the text names.
    int rowOf(const QString& text) const
    {
        for (int row = 0; row < rows->rowCount(); ++row) {
            if (rows->item(row, 0)->text().contains(text)) {
                return row;
            }
        }
        return -1;
    }
    ConnectionSheet* sheet() const { return window.findChild<ConnectionSheet*>(); }
    /// Narrows a list of the sheet by typing, and taps the first row that is left.
    void pick(const QString& column, const QString& port) const
    {
        auto* const side = sheet()->findChild<QWidget*>(column);
        auto* const filter = side->findChild<QLineEdit*>();
        filter->clear();
        QTest::keyClicks(filter, port);
        auto* const list = side->findChild<QListWidget*>();
        for (int row = 0; row < list->count(); ++row) {
            if (!list->isRowHidden(row)) {
                list->scrollToItem(list->item(row));
                QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                                  list->visualItemRect(list->item(row)).center());
                return;
            }
        }
        QFAIL(qPrintable(port));
    }
    QString reason() const
    {
        for (const QLabel* label : sheet()->findChildren<QLabel*>()) {
            if (label->isVisible() && label->text().contains("takes")) {
                return label->text();
            }
        }
        return {};
    }
    bool says(const QString& text) const
    {
        const auto labels = table->findChildren<QLabel*>();
        return std::any_of(labels.cbegin(), labels.cend(), [&text](const QLabel* label) {
            return label->isVisible() && label->text().contains(text);
        });
    }
    bool holds(const QByteArray& text) const { return session->document().text().contains(text); }

    ConnectionTable* table;
    QTableWidget* rows;
};

} // namespace

class tst_ConnectionTable : public QObject
{
    Q_OBJECT

private slots:
    void rowsAreTheConnections();
    void aRowSelectsBothDevices();
    void typingNarrowsTheRows();
    void removeLeavesTheRest();
    void whatATemplateHoldsIsFixed();
    void aConnectionIsAddedByTwoTaps();
    void aCircleIsToldOnceItIsClosed();
    void whatDoesNotFitSaysWhy();
    void anEndIsChangedInItsPlace();
    void theKindOfValueIsChanged();
    void valuesHaveAnAge();
};

void tst_ConnectionTable::rowsAreTheConnections()
{
    TablePanel panel;
    QCOMPARE(panel.rows->rowCount(), 3);
    QVERIFY(panel.rowOf("goal.output\n\u203a field.input") >= 0);
    const int target =
        norvo::TouchSize::pixels(norvo::PanelLook::Touch::Fingers, *panel.table->screen());
    QVERIFY(panel.rows->rowHeight(0) >= target);
    for (const QPushButton* key : panel.table->findChildren<QPushButton*>()) {
        QVERIFY2(key->height() >= target, qPrintable(key->text()));
    }
}

void tst_ConnectionTable::aRowSelectsBothDevices()
{
    TablePanel panel;
    panel.tapRow(panel.rowOf("goal.output"));
    QCOMPARE(panel.session->selection(), QStringList({"goal", "field"}));
    QVERIFY(panel.says("goal.output(double) -> field.input"));
}

void tst_ConnectionTable::typingNarrowsTheRows()
{
    TablePanel panel;
    QTest::keyClicks(panel.table->findChild<QLineEdit*>(), "Lamp");
    for (int row = 0; row < panel.rows->rowCount(); ++row) {
        QCOMPARE(panel.rows->isRowHidden(row), row != panel.rowOf("lamp.input"));
    }
}

void tst_ConnectionTable::removeLeavesTheRest()
{
    TablePanel panel;
    panel.tapRow(panel.rowOf("goal.output"));
    panel.tapKey("removeChosenConnection");
    QCOMPARE(panel.rows->rowCount(), 2);
    QVERIFY(!panel.holds("goal.output"));
    QVERIFY(panel.holds("  - go.toggled -> lamp.input # kept\n"));
    panel.session->undo();
    QCOMPARE(panel.session->document().text(), kPanel);
    QCOMPARE(panel.rows->rowCount(), 3);
}

void tst_ConnectionTable::whatATemplateHoldsIsFixed()
{
    TablePanel panel;
    panel.tapRow(panel.rowOf("a-key.toggled"));
    QVERIFY(!panel.table->findChild<QPushButton*>("removeChosenConnection")->isEnabled());
    QVERIFY(!panel.table->findChild<QPushButton*>("changeConnection")->isEnabled());
    QVERIFY(panel.says("It is made"));
}

void tst_ConnectionTable::aConnectionIsAddedByTwoTaps()
{
    TablePanel panel;
    panel.tapKey("addConnection");
    QVERIFY(panel.sheet());
    QVERIFY(!panel.sheet()->findChild<QPushButton*>("connect")->isEnabled());
    panel.pick("outputs", "go.toggled");
    panel.pick("inputs", "other.input");
    QTest::mouseClick(panel.sheet()->findChild<QPushButton*>("connect"), Qt::LeftButton);
    QVERIFY(panel.holds("  - go.toggled -> other.input\n"));
    QCOMPARE(panel.rows->rowCount(), 4);
}

void tst_ConnectionTable::aCircleIsToldOnceItIsClosed()
{
    TablePanel panel("devices:\n"
                     "  a: {device: input}\n"
                     "  b: {device: input}\n"
                     "  c: {device: input}\n"
                     "connections:\n"
                     "  - a.output(double) -> b.input\n");
    const auto connectPorts = [&](const QString& from, const QString& to) {
        panel.tapKey("addConnection");
        const QSignalSpy problem(panel.sheet(), &ConnectionSheet::problem);
        panel.pick("outputs", from);
        panel.pick("inputs", to);
        QTest::mouseClick(panel.sheet()->findChild<QPushButton*>("connect"), Qt::LeftButton);
        const QString told = problem.value(0).value(0).toString();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return told;
    };
    QCOMPARE(connectPorts("b.output", "c.input"), QString());
    QVERIFY(connectPorts("c.output", "a.input").contains("closes the circle"));
    QCOMPARE(panel.rows->rowCount(), 3);
}

void tst_ConnectionTable::whatDoesNotFitSaysWhy()
{
    TablePanel panel;
    panel.tapKey("addConnection");
    panel.pick("outputs", "goal.output");
    panel.pick("inputs", "other.input");
    QCOMPARE(panel.reason(),
             QString("goal.output carries number or text, other.input takes yes/no"));
    QVERIFY(!panel.sheet()->findChild<QPushButton*>("connect")->isEnabled());
    const auto* const list =
        panel.sheet()->findChild<QWidget*>("inputs")->findChild<QListWidget*>();
    QVERIFY2(!list->item(0)->text().contains("takes"), qPrintable(list->item(0)->text()));
}

void tst_ConnectionTable::anEndIsChangedInItsPlace()
{
    TablePanel panel;
    panel.tapRow(panel.rowOf("lamp.input"));
    panel.tapKey("changeConnection");
    panel.pick("inputs", "other.input");
    QTest::mouseClick(panel.sheet()->findChild<QPushButton*>("connect"), Qt::LeftButton);
    QCOMPARE(panel.session->document().text(),
             QByteArray(kPanel).replace("lamp.input # kept", "other.input # kept"));
}

void tst_ConnectionTable::theKindOfValueIsChanged()
{
    TablePanel panel;
    panel.tapRow(panel.rowOf("goal.output"));
    panel.tapKey("changeConnection");
    auto* const choices = panel.sheet()->findChild<QComboBox*>("choices");
    QVERIFY(choices->isVisible());
    QTest::keyClick(choices, Qt::Key_Down);
    QTest::mouseClick(panel.sheet()->findChild<QPushButton*>("connect"), Qt::LeftButton);
    QVERIFY2(panel.holds("  - goal.output(QString) -> field.input\n"),
             panel.session->document().text().constData());
}

void tst_ConnectionTable::valuesHaveAnAge()
{
    TablePanel panel;
    const int row = panel.rowOf("lamp.input");
    QCOMPARE(panel.rows->item(row, 1)->text(), QString("-\nnever"));
    QTest::mouseClick(panel.panel().widget("go")->findChild<QPushButton*>(), Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(panel.rows->item(row, 1)->text().startsWith("yes\n") ||
                                 panel.rows->item(row, 1)->text().startsWith("no\n"),
                             60000);
}

NORVO_TEST(tst_ConnectionTable)
#include "tst_ConnectionTable.moc"
