// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "ModalDialog.h"
#include "TestMain.h"

#include "host/editor/form/DeviceForm.h"
#include "host/panel/edit/ParamEdit.h"

#include "norvo/BaseDevice.h"

#include <QTemporaryDir>
#include <QtTest>

using norvo::DeviceForm;
using norvo::EditSession;

namespace {

const QByteArray kPanel =
    "devices:\n"
    "  go: {device: button}\n"
    "  bar: {device: output_bar}\n"
    "  box: {device: checkbox}\n"
    "  curve: {device: graph_settings}\n"
    "  list: {device: dropdownlist}\n"
    "  shown: {device: label}\n"
    "  trend: {device: output_graph}\n"
    "  view: {device: picture, params: {widget/filename: \":/icons/norvogui_expand\"}}\n"
    "  lined: {device: label, params: {Value: \"one\\ntwo\"}}\n"
    "  document:\n"
    "    device: qml_widget\n"
    "    params:\n"
    "      sourceType: parameter\n"
    "      sourceCode: |\n"
    "        import QtQuick 2.0\n"
    "        Item {}\n"
    "  child: {device: process, params: {command: cat}}\n";

} // namespace

/// Each kind of parameter filled in as a hand would.
class tst_ParamKinds : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aText();
    void linesOfAText();
    void aDocument();
    void aNumberByKeys();
    void keysStandStill();
    void aNumberByWheelAndArrows();
    void aNumberKeepsToItsRange();
    void aTextInTheStandOfANumber();
    void yesOrNo();
    void aChoice();
    void theWayToAChoiceIsOneStep();
    void aList();
    void aColourByName();
    void aColourFromTheSheet();
    void aFileFromTheSheet();
    void aQmlFile();
    void aCommand();
    void aTimeFormatSaysWhatItGives();
    void aFingerOpensTheKeypad();

private:
    template <class T>
    T* seen(const QString& name) const
    {
        for (T* const one : m_form->findChildren<T*>(name)) {
            if (one->isVisible()) {
                return one;
            }
        }
        qFatal("%s is not seen", qPrintable(name));
    }
    void select(const QString& id);
    void type(const QString& param, const QString& text) const;
    void tap(const QString& key) const
    {
        QTest::mouseClick(seen<QPushButton>(key), Qt::LeftButton);
    }
    /// The running device has the value, and so says the text.
    void verify(const QString& id, const QString& param, const QString& value,
                const QByteArray& text) const;

    QTemporaryDir m_folder;
    const QString m_startFolder = QDir::currentPath();
    std::unique_ptr<EditedPanel> m_panel;
    std::unique_ptr<DeviceForm> m_form;
};

void tst_ParamKinds::init()
{
    QDir::setCurrent(m_folder.path());
    m_panel = std::make_unique<EditedPanel>(kPanel);
    m_form = std::make_unique<DeviceForm>(*m_panel->session);
    m_form->resize(400, 760);
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
}

void tst_ParamKinds::cleanup()
{
    m_form.reset();
    m_panel.reset();
    QDir::setCurrent(m_startFolder);
}

void tst_ParamKinds::select(const QString& id)
{
    m_panel->session->select({id});
    if (auto* const key = m_form->findChild<QPushButton*>("allParameters"); key->isVisible()) {
        QTest::mouseClick(key, Qt::LeftButton);
    }
}

void tst_ParamKinds::type(const QString& param, const QString& text) const
{
    auto* const field = seen<QLineEdit>(param);
    field->selectAll();
    QTest::keyClicks(field, text + '\r');
}

void tst_ParamKinds::verify(const QString& id, const QString& param, const QString& value,
                            const QByteArray& text) const
{
    QCOMPARE(m_panel->panel().device(id)->getParam(param).value(), value);
    const QByteArray now = m_panel->session->document().text();
    QVERIFY2(now.contains(text), now.constData());
}

void tst_ParamKinds::aText()
{
    select("go");
    type("text", "Start: now");
    verify("go", "text", "Start: now", "text: \"Start: now\"");
}

void tst_ParamKinds::linesOfAText()
{
    select("lined");
    auto* const lines = seen<QPlainTextEdit>("Value");
    lines->moveCursor(QTextCursor::End);
    QTest::keyClick(lines, Qt::Key_Return);
    QTest::keyClicks(lines, "three");
    QTest::keyClick(lines, Qt::Key_Return, Qt::ControlModifier);
    verify("lined", "Value", "one\ntwo\nthree", "one\\ntwo\\nthree");
}

void tst_ParamKinds::aDocument()
{
    select("document");
    auto* const lines = seen<QPlainTextEdit>("sourceCode");
    lines->selectAll();
    for (const char* const line : {"import QtQuick 2.0", "Rectangle {}"}) {
        QTest::keyClicks(lines, line);
        QTest::keyClick(lines, Qt::Key_Return);
    }
    QTest::keyClick(lines, Qt::Key_Return, Qt::ControlModifier);
    verify("document", "sourceCode", "import QtQuick 2.0\nRectangle {}\n",
           "        import QtQuick 2.0\n        Rectangle {}\n");
}

void tst_ParamKinds::aNumberByKeys()
{
    select("bar");
    type("widget/maxValue", "50");
    verify("bar", "widget/maxValue", "50", "maxValue: 50");
    tap("widget/maxValue more");
    verify("bar", "widget/maxValue", "51", "maxValue: 51");
    tap("widget/maxValue less");
    tap("widget/maxValue less");
    verify("bar", "widget/maxValue", "49", "maxValue: 49");
}

/// Under a hand that taps twice.
void tst_ParamKinds::keysStandStill()
{
    select("bar");
    const auto* const more = seen<QPushButton>("widget/maxValue more");
    QTest::qWait(1); // Until the form is laid out.
    const QRect before = more->geometry();
    tap("widget/maxValue more");
    QVERIFY(seen<QPushButton>("widget/maxValue reset"));
    QTest::qWait(1);
    QCOMPARE(more->geometry(), before);
}

void tst_ParamKinds::aNumberByWheelAndArrows()
{
    select("bar");
    auto* const field = seen<QLineEdit>("widget/maxValue");
    field->setFocus();
    const auto turn = [field] {
        QWheelEvent wheel(QPointF(3, 3), field->mapToGlobal({3, 3}), {}, {0, 120}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(field, &wheel);
    };
    field->setText("20");
    QTest::keyClick(field, Qt::Key_Up);
    verify("bar", "widget/maxValue", "21", "maxValue: 21");
    turn();
    verify("bar", "widget/maxValue", "22", "maxValue: 22");
    seen<QLineEdit>("deviceId")->setFocus();
    turn();
    verify("bar", "widget/maxValue", "22", "maxValue: 22");
}

void tst_ParamKinds::aNumberKeepsToItsRange()
{
    select("go");
    type("widget/fontSize", "500");
    tap("widget/fontSize more");
    verify("go", "widget/fontSize", "500", "fontSize: 500");
    type("widget/fontSize", "2");
    tap("widget/fontSize less");
    tap("widget/fontSize less");
    verify("go", "widget/fontSize", "1", "fontSize: 1");
}

void tst_ParamKinds::aTextInTheStandOfANumber()
{
    m_panel->session->addDevice("output_with_progress");
    const QString id = m_panel->session->selection().value(0);
    select(id);
    QVERIFY(seen<QLabel>("minValue hint")->text().contains("\"no\""));
    type("minValue", "3");
    type("minValue", "no");
    verify(id, "minValue", "no", "minValue: no");
    QVERIFY(!m_form->findChild<QLabel*>("minValue message")->isVisible());
}

void tst_ParamKinds::yesOrNo()
{
    select("curve");
    auto* const box = seen<QCheckBox>("fill");
    QTest::mouseClick(box, Qt::LeftButton, {}, {10, box->height() / 2});
    verify("curve", "fill", "true", "fill: true");
    QTest::keyClick(box, Qt::Key_Space);
    verify("curve", "fill", "false", "fill: false");
}

void tst_ParamKinds::aChoice()
{
    select("go");
    auto* const mode = seen<QComboBox>("mode");
    QCOMPARE(mode->currentText(), QString("toggle"));
    mode->setFocus();
    QTest::keyClick(mode, Qt::Key_Down);
    verify("go", "mode", "click", "mode: click");
}

/// An option that arrows only pass is no step of its own.
void tst_ParamKinds::theWayToAChoiceIsOneStep()
{
    select("go");
    const QByteArray before = m_panel->session->document().text();
    auto* const mode = seen<QComboBox>("mode");
    mode->setFocus();
    for (const int key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Down}) {
        QTest::keyClick(mode, Qt::Key(key));
    }
    verify("go", "mode", "click", "mode: click");
    seen<QLineEdit>("text")->setFocus();
    seen<QComboBox>("mode")->setFocus();
    QTest::keyClick(seen<QComboBox>("mode"), Qt::Key_Up); // Another entry.
    m_panel->session->undo();
    QCOMPARE(seen<QComboBox>("mode")->currentText(), QString("click"));
    m_panel->session->undo();
    QCOMPARE(m_panel->session->document().text(), before);
    QVERIFY(!m_panel->session->canUndo());
}

void tst_ParamKinds::aList()
{
    select("list");
    type("options", "red|green");
    verify("list", "options", "red|green", "options: red|green");
}

void tst_ParamKinds::aColourByName()
{
    select("curve");
    type("color", "#ff8800");
    verify("curve", "color", "#ff8800", "color: \"#ff8800\"");
    type("color", "no colour");
    QVERIFY(seen<QLabel>("color message")->text().contains("no colour"));
}

void tst_ParamKinds::aColourFromTheSheet()
{
    select("curve");
    tap("color colours");
    auto* const key = m_form->findChild<QPushButton*>("steelblue");
    QVERIFY(key && key->isVisible());
    QTest::mouseClick(key, Qt::LeftButton);
    verify("curve", "color", "steelblue", "color: steelblue");
    QTRY_VERIFY_WITH_TIMEOUT(!m_form->findChild<QPushButton*>("steelblue"), 60000);
}

void tst_ParamKinds::aFileFromTheSheet()
{
    QVERIFY(QDir().mkpath("pictures"));
    QPixmap picture(20, 10);
    picture.fill(Qt::red);
    QVERIFY(picture.save("pictures/tank.png"));
    QFile other("notes.txt");
    QVERIFY(other.open(QIODevice::WriteOnly));
    select("view");
    tap("widget/filename files");
    auto* const files = m_form->findChild<QListWidget*>("files");
    QVERIFY(files->findItems("notes.txt", Qt::MatchExactly).isEmpty()); // It is no picture.
    files->setCurrentItem(files->findItems("pictures/", Qt::MatchExactly).value(0));
    QTest::keyClick(files, Qt::Key_Return);
    files->setCurrentItem(files->findItems("tank.png", Qt::MatchExactly).value(0));
    QCOMPARE(m_form->findChild<QLabel*>("preview")->pixmap(Qt::ReturnByValue).size(),
             picture.size());
    tap("use");
    verify("view", "widget/filename", "pictures/tank.png", "filename: \"pictures/tank.png\"");
}

void tst_ParamKinds::aQmlFile()
{
    QFile document("face.qml");
    QVERIFY(document.open(QIODevice::WriteOnly));
    document.write("import QtQuick 2.0\nItem {}\n");
    document.close();
    select("document");
    auto* const type = seen<QComboBox>("sourceType");
    QVERIFY(!seen<QLineEdit>("sourceData")->isEnabled());
    tst_ParamKinds::type("sourceData", "face.qml"); // Without effect: it is disabled.
    m_panel->session->change("By hand", [](norvo::YamlEdit& edit) {
        return norvo::ParamEdit::setParam(edit, "document", "sourceData", "face.qml");
    });
    type->setFocus();
    QTest::keyClick(type, Qt::Key_Home);
    verify("document", "sourceType", "file", "sourceType: file");
    document.copy("other.qml");
    tap("sourceData files");
    auto* const files = m_form->findChild<QListWidget*>("files");
    files->setCurrentItem(files->findItems("other.qml", Qt::MatchExactly).value(0));
    QTest::keyClick(files, Qt::Key_Return);
    verify("document", "sourceData", "other.qml", "sourceData: other.qml");
}

void tst_ParamKinds::aCommand()
{
    select("child");
    type("command", "cat -u");
    verify("child", "command", "cat -u", "command: cat -u");
}

void tst_ParamKinds::aTimeFormatSaysWhatItGives()
{
    select("trend");
    auto* const field = seen<QLineEdit>("widget/timeFormat");
    field->selectAll();
    QTest::keyClicks(field, "yyyy");
    QCOMPARE(seen<QLabel>("widget/timeFormat hint")->text(),
             "now: " + QString::number(QDate::currentDate().year()));
    QTest::keyClick(field, Qt::Key_Return);
    verify("trend", "widget/timeFormat", "yyyy", "timeFormat: yyyy");
}

void tst_ParamKinds::aFingerOpensTheKeypad()
{
    select("go");
    auto* const field = seen<QLineEdit>("widget/fontSize");
    QMouseEvent lift(QEvent::MouseButtonRelease, {3, 3}, {3, 3}, field->mapToGlobal({3, 3}),
                     Qt::LeftButton, Qt::NoButton, Qt::NoModifier, Qt::MouseEventSynthesizedByQt);
    ModalDialog keypad([](QWidget& dialog) {
        ::tap(dialog, "key4");
        ::tap(dialog, "key2");
        ::tap(dialog, "ok");
    });
    QApplication::sendEvent(field, &lift);
    QTRY_COMPARE_WITH_TIMEOUT(keypad.count(), 1, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(field->text(), QString("42"), 60000);
    verify("go", "widget/fontSize", "42", "fontSize: 42");
}

NORVO_TEST(tst_ParamKinds)
#include "tst_ParamKinds.moc"
