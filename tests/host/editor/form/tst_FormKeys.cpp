// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "TestMain.h"

#include "host/editor/form/DeviceForm.h"

#include <QtTest>

using norvo::DeviceForm;
using norvo::EditSession;

namespace {

const QByteArray kPanel = "devices:\n"
                          "  go: {device: button, params: {widget: {row: 0, column: 0}}}\n"
                          "  lamp: {device: indicator}\n"
                          "  field: {device: input}\n"
                          "connections:\n"
                          "  - go.toggled -> lamp.input\n";

} // namespace

/// What a form shows beside the parameters: the id, the place, the keys of a device.
class tst_FormKeys : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theIdIsRenamedWithItsConnections();
    void anIdThatIsTakenStaysInItsField();
    void thePlaceIsThatOnThePanel();
    void aPlaceThatIsTakenIsRefused();
    void keepAndConfirmAreWritten();
    void keysThatMeanNothingAreNotShown();

private:
    template <class T>
    T* seen(const QString& name) const
    {
        for (T* const one : m_form->findChildren<T*>(name)) {
            if (one->isVisible()) {
                return one;
            }
        }
        return nullptr;
    }
    void open(const QString& id, const QString& section);
    EditSession& session() const { return *m_panel->session; }
    QByteArray text() const { return session().document().text(); }

    std::unique_ptr<EditedPanel> m_panel;
    std::unique_ptr<DeviceForm> m_form;
};

void tst_FormKeys::init()
{
    m_panel = std::make_unique<EditedPanel>(kPanel);
    m_form = std::make_unique<DeviceForm>(session());
    m_form->resize(320, 440);
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
}

void tst_FormKeys::cleanup()
{
    m_form.reset();
    m_panel.reset();
}

void tst_FormKeys::open(const QString& id, const QString& section)
{
    session().select({id});
    QVERIFY(seen<QPushButton>(section));
    QTest::mouseClick(seen<QPushButton>(section), Qt::LeftButton);
}

void tst_FormKeys::theIdIsRenamedWithItsConnections()
{
    session().select({"go"});
    auto* const id = seen<QLineEdit>("deviceId");
    auto* const caption = seen<QLineEdit>("text");
    id->setFocus();
    id->selectAll();
    QTest::keyClicks(id, "start\r");
    QVERIFY2(text().contains("start.toggled -> lamp.input"), text().constData());
    QVERIFY(m_panel->panel().device("start"));
    QCOMPARE(session().selection(), QStringList("start"));
    QCOMPARE(seen<QLineEdit>("text"), caption); // The form stays.
    QVERIFY(id->hasFocus());
    QTest::keyClicks(caption, "Start\r");
    QVERIFY2(text().contains("text: Start"), text().constData());
}

void tst_FormKeys::anIdThatIsTakenStaysInItsField()
{
    session().select({"go"});
    auto* const id = seen<QLineEdit>("deviceId");
    id->selectAll();
    QTest::keyClicks(id, "lamp\r");
    QCOMPARE(text(), kPanel);
    QCOMPARE(id->text(), QString("lamp"));
    QVERIFY(seen<QLabel>("deviceProblems"));
    QVERIFY(seen<QLabel>("deviceProblems")->text().contains("lamp"));
    id->selectAll();
    QTest::keyClicks(id, "go\r");
    QVERIFY(!seen<QLabel>("deviceProblems"));
}

void tst_FormKeys::thePlaceIsThatOnThePanel()
{
    open("field", "place");
    QCOMPARE(m_form->findChild<QLineEdit*>("widget/row")->placeholderText(), QString("2"));
    auto* const column = m_form->findChild<QLineEdit*>("widget/column");
    QTest::keyClicks(column, "1\r");
    QCOMPARE(m_panel->cells().value("field").column, 1);
    QCOMPARE(m_panel->cells().value("field").row, 2);
    QVERIFY2(text().contains("column: 1"), text().constData());
    QCOMPARE(session().undoName(), QString("Move field"));
}

void tst_FormKeys::aPlaceThatIsTakenIsRefused()
{
    open("field", "place");
    auto* const row = m_form->findChild<QLineEdit*>("widget/row");
    QTest::keyClicks(row, "0\r");
    QCOMPARE(text(), kPanel);
    QCOMPARE(row->text(), QString("0"));
    auto* const message = m_form->findChild<QLabel*>("widget/row message");
    QVERIFY(!message->isHidden() && !message->text().isEmpty());
    row->selectAll();
    QTest::keyClicks(row, "far\r");
    QVERIFY2(message->text().contains("far"), qPrintable(message->text()));
}

void tst_FormKeys::keepAndConfirmAreWritten()
{
    open("field", "keys");
    auto* const keep = m_form->findChild<QComboBox*>("keep");
    keep->setFocus();
    QTest::keyClick(keep, Qt::Key_Down);
    QVERIFY2(text().contains("keep: send"), text().constData());
    auto* const confirm = m_form->findChild<QLineEdit*>("confirm");
    QTest::keyClicks(confirm, "Really?\r");
    QVERIFY2(text().contains("Really?"), text().constData());
    QCOMPARE(session().device("field")->access.question, QString("Really?"));
    auto* const reset = m_form->findChild<QPushButton*>("keep reset");
    QVERIFY(!reset->isHidden());
    QTest::mouseClick(reset, Qt::LeftButton);
    QVERIFY2(!text().contains("keep"), text().constData());
}

void tst_FormKeys::keysThatMeanNothingAreNotShown()
{
    session().select({"lamp"});
    QVERIFY(seen<QPushButton>("place"));
    QVERIFY(!seen<QPushButton>("keys"));
}

NORVO_TEST(tst_FormKeys)
#include "tst_FormKeys.moc"
