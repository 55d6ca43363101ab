// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "TestMain.h"

#include "host/editor/form/DeviceForm.h"

#include "norvo/BaseDevice.h"

#include <QtTest>

using norvo::DeviceForm;
using norvo::EditSession;

namespace {

const QByteArray kPanel = "devices:\n"
                          "  go: {device: button, params: {text: Go}} # the only one\n"
                          "  other: {device: button}\n"
                          "  lamp: {device: label, params: {Value: Lamp}}\n"
                          "  trend: {device: output_graph}\n"
                          "  field: {device: input, params: {name: Field}}\n"
                          "connections:\n"
                          "  - go.toggled -> lamp.inputWarning\n";

} // namespace

/// A panel with a form beside it.
class tst_DeviceForm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theSelectedDeviceIsShown();
    void whatIsTypedShowsOnceItPauses();
    void anEntryIsUndoneAtOnce();
    void twoEntriesAreTwoSteps();
    void aWrongValueSaysWhyAndChangesNothing();
    void aWarningStandsAtItsField();
    void escapeForgetsWhatWasRefused();
    void resetGivesTheDefaultAgain();
    void theFormStaysAsItIsAfterItsOwnStep();
    void whatHasNoEffectSaysWhy();
    void severalDevicesAreSetAtOnce();
    void aSearchFindsByNameAndMeaning();
    void whatIsRarelySetIsBehindAKey();
    void whatComesFromATemplateIsOnlyRead();
    void aNewSelectionTakesWhatWasTyped();

private:
    template <class T>
    T* part(const QString& name) const
    {
        return m_form->findChild<T*>(name);
    }
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
    QString live(const QString& id, const QString& param) const
    {
        return m_panel->panel().device(id)->getParam(param).value();
    }
    void start(const QByteArray& text);
    void openAll() const
    {
        if (auto* const key = seen<QPushButton>("allParameters")) {
            QTest::mouseClick(key, Qt::LeftButton);
        }
    }
    EditSession& session() const { return *m_panel->session; }
    QByteArray text() const { return session().document().text(); }

    std::unique_ptr<EditedPanel> m_panel;
    std::unique_ptr<DeviceForm> m_form;
};

void tst_DeviceForm::init()
{
    start(kPanel);
}

void tst_DeviceForm::start(const QByteArray& text)
{
    m_form.reset();
    m_panel = std::make_unique<EditedPanel>(text);
    m_form = std::make_unique<DeviceForm>(session());
    m_form->resize(320, 440);
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
}

void tst_DeviceForm::cleanup()
{
    m_form.reset();
    m_panel.reset();
}

void tst_DeviceForm::theSelectedDeviceIsShown()
{
    QVERIFY(!seen<QLineEdit>("deviceId"));
    session().select({"go"});
    QCOMPARE(seen<QLineEdit>("deviceId")->text(), QString("go"));
    QCOMPARE(part<QLabel>("formTitle")->text(), EditedPanel::types().words("button")->title);
    QCOMPARE(seen<QLineEdit>("text")->text(), QString("Go"));
    session().select({"other"});
    QCOMPARE(seen<QLineEdit>("text")->text(), QString());
    QCOMPARE(seen<QLineEdit>("text")->placeholderText(),
             EditedPanel::types().words("button")->param("text")->defaultValue);
    session().select({});
    QVERIFY(!seen<QLineEdit>("text"));
}

void tst_DeviceForm::whatIsTypedShowsOnceItPauses()
{
    session().select({"go"});
    auto* const field = seen<QLineEdit>("text");
    QTest::mouseClick(field, Qt::LeftButton);
    field->selectAll();
    QTest::keyClicks(field, "Start");
    QCOMPARE(text(), kPanel);
    QTRY_COMPARE_WITH_TIMEOUT(text(), QByteArray(kPanel).replace("text: Go", "text: Start"), 60000);
    QCOMPARE(live("go", "text"), QString("Start"));
}

void tst_DeviceForm::anEntryIsUndoneAtOnce()
{
    session().select({"go"});
    auto* const field = seen<QLineEdit>("text");
    QTest::keyClick(field, Qt::Key_End);
    QTest::keyClicks(field, "1");
    QTRY_COMPARE_WITH_TIMEOUT(live("go", "text"), QString("Go1"), 60000);
    QTest::keyClicks(field, "2");
    QTRY_COMPARE_WITH_TIMEOUT(live("go", "text"), QString("Go12"), 60000);
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(session().undoName(), QString("Set text of go"));
    session().undo();
    QCOMPARE(text(), kPanel);
    QCOMPARE(field->text(), QString("Go"));
    QVERIFY(!session().canUndo());
}

void tst_DeviceForm::twoEntriesAreTwoSteps()
{
    session().select({"go"});
    auto* const field = seen<QLineEdit>("text");
    QTest::keyClick(field, Qt::Key_End);
    QTest::keyClicks(field, "1\r");
    QTest::keyClicks(field, "2\r");
    QCOMPARE(live("go", "text"), QString("Go12"));
    session().undo();
    QCOMPARE(live("go", "text"), QString("Go1"));
    session().undo();
    QCOMPARE(text(), kPanel);
}

void tst_DeviceForm::aWrongValueSaysWhyAndChangesNothing()
{
    session().select({"go"});
    openAll();
    auto* const size = seen<QLineEdit>("widget/fontSize");
    const BaseDevice* const button = m_panel->panel().device("go");
    QTest::keyClicks(size, "large\r");
    QCOMPARE(text(), kPanel);
    QCOMPARE(m_panel->panel().device("go"), button);
    QCOMPARE(size->text(), QString("large"));
    QLabel* const message = seen<QLabel>("widget/fontSize message");
    QVERIFY(message);
    QVERIFY2(message->text().contains("large"), qPrintable(message->text()));
    QTest::keyClicks(seen<QLineEdit>("text"), "!\r"); // Another field is another matter.
    QCOMPARE(size->text(), QString("large"));
    QVERIFY(message->isVisible());
    size->selectAll();
    QTest::keyClicks(size, "20\r");
    QCOMPARE(live("go", "widget/fontSize"), QString("20"));
    QVERIFY(!message->isVisible());
}

void tst_DeviceForm::aWarningStandsAtItsField()
{
    session().select({"go"});
    openAll();
    auto* const size = seen<QLineEdit>("widget/fontSize");
    QTest::keyClicks(size, "900\r");
    QCOMPARE(live("go", "widget/fontSize"), QString("900"));
    QLabel* const message = seen<QLabel>("widget/fontSize message");
    QVERIFY(message);
    QVERIFY2(message->text().contains("1 to 500"), qPrintable(message->text()));
}

void tst_DeviceForm::escapeForgetsWhatWasRefused()
{
    session().select({"field"});
    openAll();
    auto* const decimals = seen<QLineEdit>("decimals");
    QTest::keyClicks(decimals, "many\r");
    QVERIFY(seen<QLabel>("decimals message"));
    QTest::keyClick(decimals, Qt::Key_Escape);
    QVERIFY(!seen<QLabel>("decimals message"));
    QCOMPARE(decimals->text(), QString());
}

void tst_DeviceForm::resetGivesTheDefaultAgain()
{
    session().select({"go"});
    QVERIFY(seen<QPushButton>("text reset"));
    QTest::mouseClick(seen<QPushButton>("text reset"), Qt::LeftButton);
    QVERIFY2(!text().contains("text: Go"), text().constData());
    const QString usual = EditedPanel::types().words("button")->param("text")->defaultValue;
    QCOMPARE(live("go", "text"), usual);
    QVERIFY(!seen<QPushButton>("text reset"));
    QCOMPARE(seen<QLineEdit>("text")->text(), QString());
}

void tst_DeviceForm::theFormStaysAsItIsAfterItsOwnStep()
{
    session().select({"trend"});
    openAll();
    auto* const timeout = seen<QLineEdit>("widget/timeout");
    auto* const bar = m_form->findChild<QScrollArea*>()->verticalScrollBar();
    timeout->setFocus();
    QTRY_VERIFY_WITH_TIMEOUT(bar->maximum() > 0, 60000);
    bar->setValue(bar->maximum() / 2);
    const int scrolled = bar->value();
    QTest::keyClicks(timeout, "235");
    QTest::keyClick(timeout, Qt::Key_Left);
    QTRY_COMPARE_WITH_TIMEOUT(live("trend", "widget/timeout"), QString("235"), 60000);
    QVERIFY(timeout->hasFocus());
    QCOMPARE(timeout->cursorPosition(), 2);
    QCOMPARE(bar->value(), scrolled);
    QCOMPARE(seen<QLineEdit>("widget/timeout"), timeout);
}

void tst_DeviceForm::whatHasNoEffectSaysWhy()
{
    session().select({"field"});
    openAll();
    QCheckBox* const keyboard = seen<QCheckBox>("use screen keyboard");
    QVERIFY(!keyboard->isEnabled());
    QCOMPARE(part<QLabel>("use screen keyboard hint")->text(),
             QString("has an effect only where type is string"));
    auto* const type = seen<QComboBox>("type");
    type->setFocus();
    QTest::keyClick(type, Qt::Key_Home); // string
    QCOMPARE(live("field", "type"), QString("string"));
    QVERIFY(keyboard->isEnabled());
}

void tst_DeviceForm::severalDevicesAreSetAtOnce()
{
    session().select({"go", "other", "lamp"});
    openAll();
    QVERIFY(!seen<QLineEdit>("text")); // The label has none.
    session().select({"go", "other"});
    auto* const field = seen<QLineEdit>("text");
    QCOMPARE(field->placeholderText(), QString("different values"));
    QTest::keyClicks(field, "Both\r");
    QCOMPARE(live("go", "text"), QString("Both"));
    QCOMPARE(live("other", "text"), QString("Both"));
    session().undo();
    QCOMPARE(text(), kPanel);
}

void tst_DeviceForm::aSearchFindsByNameAndMeaning()
{
    session().select({"trend"});
    auto* const search = seen<QLineEdit>("formSearch");
    QTest::keyClicks(search, "TIMEPERIOD");
    QVERIFY(seen<QLineEdit>("widget/timePeriod"));
    QVERIFY(!seen<QLineEdit>("name"));
    search->selectAll();
    QTest::keyClicks(search, "the caption");
    QVERIFY(seen<QLineEdit>("name"));
    QVERIFY(!seen<QLineEdit>("widget/timePeriod"));
    search->clear();
    QVERIFY(seen<QPushButton>("allParameters"));
}

void tst_DeviceForm::whatIsRarelySetIsBehindAKey()
{
    session().select({"trend"});
    QVERIFY(seen<QLineEdit>("widget/timePeriod")); // The example has it.
    QVERIFY(!seen<QLineEdit>("widget/timeout"));
    auto* const key = seen<QPushButton>("allParameters");
    key->setFocus();
    QTest::keyClick(key, Qt::Key_Space);
    QVERIFY(seen<QLineEdit>("widget/timeout"));
}

void tst_DeviceForm::whatComesFromATemplateIsOnlyRead()
{
    start("templates:\n"
          "  pump:\n"
          "    devices:\n"
          "      run: {device: button, params: {text: Run}}\n"
          "devices:\n"
          "  p1: {use: pump}\n");
    session().select({"p1-run"});
    QVERIFY(!part<QLabel>("whyFixed")->text().isEmpty());
    QVERIFY(seen<QLineEdit>("deviceId")->isReadOnly());
    QVERIFY(!seen<QLineEdit>("text")->isEnabled());
}

void tst_DeviceForm::aNewSelectionTakesWhatWasTyped()
{
    session().select({"go"});
    QTest::keyClick(seen<QLineEdit>("text"), Qt::Key_End);
    QTest::keyClicks(seen<QLineEdit>("text"), "ne");
    session().select({"other"});
    QCOMPARE(live("go", "text"), QString("Gone"));
    QCOMPARE(live("other", "text"),
             EditedPanel::types().words("button")->param("text")->defaultValue);
    QCOMPARE(seen<QLineEdit>("text")->text(), QString());
}

NORVO_TEST(tst_DeviceForm)
#include "tst_DeviceForm.moc"
