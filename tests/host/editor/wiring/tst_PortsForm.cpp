// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/EditedPanel.h"
#include "TestMain.h"

#include "host/editor/wiring/ports/PortRow.h"
#include "host/editor/wiring/PortsForm.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

using norvo::PortRow;
using norvo::PortsForm;

namespace {

const QByteArray kPanel = "devices:\n"
                          "  wave: {device: generator, params: {interval: 20}}\n"
                          "  hot:\n"
                          "    device: calc\n"
                          "    inputs: {t: \"\", limit: \"30\"}\n"
                          "    outputs: {double: t * 2} # both\n"
                          "  lamp: {device: label}\n"
                          "connections:\n"
                          "  - wave.output -> hot.t\n"
                          "  - hot.double(QString) -> lamp.input\n";

struct FormPanel : EditedPanel
{
    explicit FormPanel(const QByteArray& text = kPanel)
        : EditedPanel(text), form(new PortsForm(*session, &window))
    {
        form->setGeometry(480, 0, 320, 480);
        form->show();
        session->select({"hot"});
    }
    ~FormPanel() override { delete form; }

    PortRow* row(const QString& name) const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents(); // What is new is shown.
        return form->findChild<PortRow*>(name);
    }
    QLineEdit* field(const QString& row, const QString& name) const
    {
        return this->row(row)->findChild<QLineEdit*>(name);
    }
    void type(const QString& row, const QString& name, const QString& text) const
    {
        QLineEdit* const found = field(row, name);
        found->selectAll();
        QTest::keyClicks(found, text);
        QTest::keyClick(found, Qt::Key_Return);
    }
    void tapKey(const QString& row) const
    {
        QTest::mouseClick(this->row(row)->findChild<QPushButton*>("key"), Qt::LeftButton);
    }
    QString fault(const QString& row) const
    {
        return this->row(row)->findChild<QLabel*>("fault")->text();
    }
    bool holds(const QByteArray& text) const { return session->document().text().contains(text); }

    PortsForm* form;
};

} // namespace

class tst_PortsForm : public QObject
{
    Q_OBJECT

private slots:
    void rowsAreThePortsOfTheSelectedDevice();
    void aDefinitionIsChangedInItsPlace();
    void aFaultStandsAtItsField();
    void aNewNameIsTakenByTheConnections();
    void removeTakesTheConnectionsAlong();
    void portsAreAddedOneAfterTheOther();
    void theValueStandsBesideAnOutput();
    void undoIsFollowed();
};

void tst_PortsForm::rowsAreThePortsOfTheSelectedDevice()
{
    FormPanel panel;
    QCOMPARE(panel.form->findChildren<PortRow*>().size(), 5);
    QCOMPARE(panel.field("double", "definition")->text(), QString("t * 2"));
    QVERIFY(panel.row("limit") && !panel.row("limit")->isOutput());
    QVERIFY(!PortsForm::isFor(*panel.session, "lamp"));
    panel.session->select({"lamp"});
    QVERIFY(!panel.row("double"));
}

void tst_PortsForm::aDefinitionIsChangedInItsPlace()
{
    FormPanel panel;
    panel.type("double", "definition", "t * 3");
    QCOMPARE(panel.session->document().text(), QByteArray(kPanel).replace("t * 2", "t * 3"));
    QCOMPARE(panel.session->undoName(), QString("Define hot.double"));
}

void tst_PortsForm::aFaultStandsAtItsField()
{
    FormPanel panel;
    panel.type("double", "definition", "t * (");
    QVERIFY(!panel.fault("double").isEmpty());
    QVERIFY(panel.row("double")->findChild<QLabel*>("fault")->isVisible());
    QCOMPARE(panel.session->document().text(), kPanel);
    QCOMPARE(panel.field("double", "definition")->text(), QString("t * ("));
    panel.type("double", "definition", "t * 4");
    QCOMPARE(panel.fault("double"), QString());
    QVERIFY(panel.holds("t * 4"));
}

void tst_PortsForm::aNewNameIsTakenByTheConnections()
{
    FormPanel panel;
    panel.type("double", "name", "twice");
    QVERIFY2(panel.holds("outputs: {twice: t * 2} # both"), panel.session->document().text());
    QVERIFY(panel.holds("  - hot.twice(QString) -> lamp.input\n"));
    QVERIFY(panel.row("twice") && !panel.row("double"));
}

void tst_PortsForm::removeTakesTheConnectionsAlong()
{
    FormPanel panel;
    panel.tapKey("double");
    QVERIFY(!panel.holds("double"));
    QVERIFY(panel.holds("wave.output -> hot.t"));
    QVERIFY(!panel.row("double"));
}

void tst_PortsForm::portsAreAddedOneAfterTheOther()
{
    FormPanel panel;
    panel.form->window()->activateWindow();
    panel.type("newOutput", "name", "no good");
    QVERIFY(!panel.fault("newOutput").isEmpty());
    QTest::keyClicks(panel.field("newOutput", "definition"), "t > limit");
    panel.type("newOutput", "name", "tooHot");
    QVERIFY2(panel.holds("tooHot: t > limit"), panel.session->document().text());
    QVERIFY(panel.row("tooHot"));
    QCOMPARE(panel.field("newOutput", "name")->text(), QString());
    QTRY_VERIFY(panel.field("newOutput", "name")->hasFocus());
    QTest::keyClicks(panel.field("newInput", "name"), "x");
    panel.tapKey("newInput");
    QVERIFY(panel.row("x") && !panel.row("x")->isOutput());
}

void tst_PortsForm::theValueStandsBesideAnOutput()
{
    FormPanel panel;
    const auto value = [&panel] {
        return panel.row("double")->findChild<QLabel*>("value")->text();
    };
    QTRY_VERIFY_WITH_TIMEOUT(!value().isEmpty() && value() != "-", 60000);
    const QString before = value();
    QTRY_VERIFY_WITH_TIMEOUT(value() != before, 60000);
}

void tst_PortsForm::undoIsFollowed()
{
    FormPanel panel;
    panel.type("double", "definition", "t * 3");
    panel.session->undo();
    QCOMPARE(panel.field("double", "definition")->text(), QString("t * 2"));
}

NORVO_TEST(tst_PortsForm)
#include "tst_PortsForm.moc"
