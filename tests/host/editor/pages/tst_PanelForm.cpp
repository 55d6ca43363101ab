// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "TestMain.h"

#include "host/editor/pages/PanelForm.h"
#include "host/panel/file/look/LookReader.h"
#include "host/window/look/TouchSize.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

using norvo::EditSession;
using norvo::PanelForm;
using norvo::PanelLook;

namespace {

const QByteArray kPanel = "# Bench 3\n"
                          "title: Bench # as on the door\n"
                          "devices:\n"
                          "  go: {device: button}\n";

} // namespace

/// A panel with the form of its own keys beside it.
class tst_PanelForm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everyKeyThatIsATextHasItsField();
    void absentKeysShowTheirDefaultPale();
    void aKeyIsSetTakenOutAndUndone_data();
    void aKeyIsSetTakenOutAndUndone();
    void theTitleKeepsItsPlaceAndComment();
    void anEmptyTitleIsTakenOut();
    void theLookOfThePanelFollows();
    void languagesAreThoseThatThereAre();
    void whatIsRefusedIsSaidAtItsField_data();
    void whatIsRefusedIsSaidAtItsField();
    void anEntryIsOneStep();
    void undoShowsInTheFields();
    void theKeyboardAloneIsEnough();
    void theKeyThatResetsIsLargeAndNamed();

private:
    template <class T>
    T* seen(const QString& name) const
    {
        T* const one = m_form->findChild<T*>(name);
        return one && one->isVisible() ? one : nullptr;
    }
    QString message(const QString& key) const
    {
        auto* const label = seen<QLabel>(key + " message");
        return label ? label->text() : QString();
    }
    EditSession& session() const { return *m_panel->session; }
    const PanelLook& look() const { return m_panel->description().look; }
    QByteArray text() const { return session().document().text(); }
    void start(const QByteArray& text);
    void enter(const QString& key, const QString& value) const;

    std::unique_ptr<EditedPanel> m_panel;
    std::unique_ptr<PanelForm> m_form;
};

void tst_PanelForm::init()
{
    start(kPanel);
}

void tst_PanelForm::cleanup()
{
    m_form.reset();
    m_panel.reset();
}

void tst_PanelForm::start(const QByteArray& text)
{
    m_form.reset();
    m_panel = std::make_unique<EditedPanel>(text);
    m_form = std::make_unique<PanelForm>(session());
    m_form->resize(320, 900);
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
}

/// As by hand: an option by the keys of a list, a text by typing and Enter.
void tst_PanelForm::enter(const QString& key, const QString& value) const
{
    if (auto* const box = seen<QComboBox>(key)) {
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Home);
        for (int i = 0; i < box->count() && box->currentText() != value; ++i) {
            QTest::keyClick(box, Qt::Key_Down);
        }
        QCOMPARE(box->currentText(), value);
    } else {
        auto* const line = seen<QLineEdit>(key);
        QVERIFY2(line, qPrintable(key));
        line->setFocus();
        line->selectAll();
        QTest::keyClicks(line, value);
        QTest::keyClick(line, Qt::Key_Return);
    }
}

void tst_PanelForm::everyKeyThatIsATextHasItsField()
{
    const QStringList lists{"pages", "rows", "columns"};
    for (const QString& key : norvo::lookKeys() + QStringList{"title"}) {
        const auto* const field = seen<QWidget>(key);
        QCOMPARE(!field, lists.contains(key));
        if (field) {
            QVERIFY2(!field->accessibleName().isEmpty(), qPrintable(key));
            QVERIFY2(!field->accessibleDescription().isEmpty(), qPrintable(key)); // The meaning.
        }
        const auto* const box = seen<QComboBox>(key);
        QCOMPARE(bool(box), key == "language" || !norvo::lookNames(key).isEmpty());
        if (box && key != "language") {
            QCOMPARE(box->count(), norvo::lookNames(key).size());
        }
    }
}

void tst_PanelForm::absentKeysShowTheirDefaultPale()
{
    QCOMPARE(seen<QComboBox>("theme")->currentText(), QString("system"));
    QCOMPARE(seen<QComboBox>("touch")->currentText(), QString("fingers"));
    QCOMPARE(seen<QComboBox>("fit")->currentText(), QString("grow"));
    const auto colour = [this] {
        return seen<QComboBox>("theme")->palette().color(QPalette::ButtonText);
    };
    const QColor pale = colour();
    QVERIFY(!seen<QPushButton>("theme reset"));
    enter("theme", "dark");
    QVERIFY(colour() != pale);
    QVERIFY(seen<QPushButton>("theme reset"));
    start("devices: {go: {device: button}}\n");
    QCOMPARE(seen<QLineEdit>("title")->text(), QString());
    QCOMPARE(seen<QLineEdit>("title")->placeholderText(), QString("panel.yaml"));
}

void tst_PanelForm::aKeyIsSetTakenOutAndUndone_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("theme") << "theme"
                           << "dark" << QByteArray("theme: dark\n");
    QTest::newRow("touch") << "touch"
                           << "gloves" << QByteArray("touch: gloves\n");
    QTest::newRow("design") << "design"
                            << "1024x600" << QByteArray("design: 1024x600\n");
    QTest::newRow("language") << "language"
                              << "de" << QByteArray("language: de\n");
}

void tst_PanelForm::aKeyIsSetTakenOutAndUndone()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QByteArray, line);
    enter(key, value);
    const QByteArray set = QByteArray(kPanel).replace("devices:", line + "devices:");
    QCOMPARE(text(), set);
    QCOMPARE(session().undoName(), QString("Set %1 of the panel").arg(key));
    QTest::mouseClick(seen<QPushButton>(key + " reset"), Qt::LeftButton);
    QCOMPARE(text(), kPanel);
    QCOMPARE(session().undoName(), QString("Reset %1 of the panel").arg(key));
    QVERIFY(!seen<QPushButton>(key + " reset"));
    session().undo();
    QCOMPARE(text(), set);
    while (session().canUndo()) {
        session().undo();
    }
    QCOMPARE(text(), kPanel);
}

void tst_PanelForm::theTitleKeepsItsPlaceAndComment()
{
    enter("title", "Bench: west");
    QCOMPARE(text(), QByteArray(kPanel).replace("title: Bench", "title: \"Bench: west\""));
    QCOMPARE(m_panel->description().title.text, QString("Bench: west"));
    session().undo();
    QCOMPARE(text(), kPanel);
    QCOMPARE(seen<QLineEdit>("title")->text(), QString("Bench"));
}

void tst_PanelForm::anEmptyTitleIsTakenOut()
{
    auto* const title = seen<QLineEdit>("title");
    title->selectAll();
    QTest::keyClick(title, Qt::Key_Delete);
    QTest::keyClick(title, Qt::Key_Return);
    QVERIFY2(!text().contains("title"), text().constData());
    QCOMPARE(title->placeholderText(), QString("panel.yaml"));
    session().undo();
    QCOMPARE(text(), kPanel);
}

void tst_PanelForm::theLookOfThePanelFollows()
{
    enter("touch", "gloves");
    QCOMPARE(look().touch, PanelLook::Touch::Gloves);
    enter("theme", "dark");
    QCOMPARE(look().theme, PanelLook::Theme::Dark);
    enter("design", "1024x600");
    enter("fit", "scale");
    QCOMPARE(look().fit, PanelLook::Fit::Scale);
    QCOMPARE(look().design, QSize(1024, 600));
    enter("language", "ru");
    QCOMPARE(look().language, QString("ru"));
    QTest::mouseClick(seen<QPushButton>("touch reset"), Qt::LeftButton);
    QCOMPARE(look().touch, PanelLook::Touch::Fingers);
}

void tst_PanelForm::languagesAreThoseThatThereAre()
{
    const auto names = [this] {
        const auto& box = *seen<QComboBox>("language");
        QStringList all;
        for (int i = 0; i < box.count(); ++i) {
            all.append(box.itemText(i));
        }
        return all;
    };
    QCOMPARE(names(), QStringList({"de", "en", "ru", ""})); // The last is the system's.
    enter("language", "de");
    QCOMPARE(names(), QStringList({"de", "en", "ru"}));
    start("language: pt_BR\n" + kPanel); // Of the keyboard, and of Qt's own texts.
    QCOMPARE(seen<QComboBox>("language")->currentText(), QString("pt_BR"));
    QVERIFY(names().contains("pt_BR"));
}

void tst_PanelForm::whatIsRefusedIsSaidAtItsField_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("said");
    QTest::newRow("size") << "design"
                          << "large"
                          << "such as 1024x600";
    QTest::newRow("two keys") << "fit"
                              << "scale"
                              << "design: 1024x600";
}

void tst_PanelForm::whatIsRefusedIsSaidAtItsField()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, said);
    QSignalSpy problems(m_form.get(), &PanelForm::problem);
    enter(key, value);
    QCOMPARE(text(), kPanel);
    QVERIFY2(message(key).contains(said), qPrintable(message(key)));
    QCOMPARE(message("title"), QString());
    QCOMPARE(problems.size(), 0);
    QVERIFY(!session().canUndo());
    QWidget* const field = seen<QWidget>(key);
    QTest::keyClick(field, Qt::Key_Escape);
    QCOMPARE(message(key), QString());
    if (auto* const line = qobject_cast<QLineEdit*>(field)) {
        QCOMPARE(line->text(), QString());
    } else {
        QCOMPARE(seen<QComboBox>(key)->currentText(), norvo::lookDefault(key));
    }
}

void tst_PanelForm::anEntryIsOneStep()
{
    auto* const title = seen<QLineEdit>("title");
    QTest::keyClick(title, Qt::Key_End);
    QTest::keyClicks(title, "1");
    QTRY_COMPARE_WITH_TIMEOUT(m_panel->description().title.text, QString("Bench1"), 60000);
    QTest::keyClicks(title, "2\r");
    QCOMPARE(m_panel->description().title.text, QString("Bench12"));
    session().undo();
    QCOMPARE(text(), kPanel);
    QVERIFY(!session().canUndo());
}

void tst_PanelForm::undoShowsInTheFields()
{
    enter("theme", "dark");
    session().undo();
    QCOMPARE(seen<QComboBox>("theme")->currentText(), QString("system"));
    session().redo();
    QCOMPARE(seen<QComboBox>("theme")->currentText(), QString("dark"));
}

void tst_PanelForm::theKeyboardAloneIsEnough()
{
    seen<QLineEdit>("title")->setFocus();
    QTest::keyClick(m_form->focusWidget(), Qt::Key_Tab); // The key that resets it.
    QCOMPARE(m_form->focusWidget(), seen<QPushButton>("title reset"));
    QTest::keyClick(m_form->focusWidget(), Qt::Key_Tab);
    QCOMPARE(m_form->focusWidget(), seen<QComboBox>("theme"));
    QTest::keyClick(m_form->focusWidget(), Qt::Key_Home);
    QCOMPARE(look().theme, PanelLook::Theme::Dark);
    QTest::keyClick(m_form->focusWidget(), Qt::Key_Tab);
    QCOMPARE(m_form->focusWidget(), seen<QPushButton>("theme reset"));
    QTest::keyClick(m_form->focusWidget(), Qt::Key_Space);
    QCOMPARE(text(), kPanel);
}

void tst_PanelForm::theKeyThatResetsIsLargeAndNamed()
{
    enter("theme", "dark");
    const int least = norvo::TouchSize::pixels(PanelLook::Touch::Fingers, *m_form->screen());
    const auto* const reset = seen<QPushButton>("theme reset");
    QVERIFY(reset->height() >= least && reset->width() >= least);
    QVERIFY2(reset->accessibleName().contains("theme"), qPrintable(reset->accessibleName()));
}

NORVO_TEST(tst_PanelForm)
#include "tst_PanelForm.moc"
