// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "ModalDialog.h"
#include "TestMain.h"

#include "host/editor/form/DeviceForm.h"
#include "host/editor/palette/TypePalette.h"
#include "host/window/look/TouchSize.h"

#include <QAbstractButton>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QtTest>

using norvo::DeviceForm;
using norvo::TypePalette;

namespace {

const QByteArray kPanel = "devices:\n"
                          "  go: {device: button, params: {text: Go}}\n"
                          "  lined: {device: label, params: {Value: \"one\\ntwo\"}}\n";

QAbstractButton* keyOf(QWidget& line)
{
    return line.findChild<QAbstractButton*>("keyboard");
}

void click(QWidget* widget)
{
    QTest::mouseClick(widget, Qt::LeftButton);
}

/// Empties the keyboard on the screen, types and confirms, all by clicks.
void typeByClicks(QWidget& dialog, const QStringList& texts)
{
    auto* const display = dialog.findChild<QLineEdit*>("display");
    auto* const back = dialog.findChild<QAbstractButton*>("keyBackspace");
    for (int i = 0; i < 100 && !display->text().isEmpty(); ++i) {
        click(back);
    }
    for (const QString& text : texts) {
        const auto keys = dialog.findChildren<QAbstractButton*>();
        for (QAbstractButton* const key : keys) {
            if (key->text() == text) {
                click(key);
                break;
            }
        }
    }
    click(dialog.findChild<QAbstractButton*>("ok"));
}

} // namespace

/// Entries filled in by a hand that has a mouse and nothing else.
class tst_EntryByMouse : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theKeyIsSeenAtTheLineThatHasTheFocus();
    void theKeyIsLargeEnoughAndCoversNoText();
    void aText();
    void aNumber();
    void theIdOfADevice();
    void linesOfAText();
    void aSearchForAType();
    void cancelChangesNothing();
    void theFormStaysWhereItWas();
    void whatCannotBeChangedHasNoKey();

private:
    QLineEdit* line(const QString& name) const
    {
        for (QLineEdit* const one : m_form->findChildren<QLineEdit*>(name)) {
            if (one->isVisible()) {
                return one;
            }
        }
        qFatal("%s is not seen", qPrintable(name));
    }
    void ask(QWidget* key, const std::function<void(QWidget&)>& act) const
    {
        ModalDialog dialog(act);
        click(key);
        QTRY_COMPARE_WITH_TIMEOUT(dialog.count(), 1, 60000);
    }
    QByteArray text() const { return m_panel->session->document().text(); }

    std::unique_ptr<EditedPanel> m_panel;
    std::unique_ptr<DeviceForm> m_form;
};

void tst_EntryByMouse::init()
{
    m_panel = std::make_unique<EditedPanel>(kPanel);
    m_form = std::make_unique<DeviceForm>(*m_panel->session);
    m_form->resize(320, 440);
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    m_panel->session->select({"go"});
    QCoreApplication::processEvents();
}

void tst_EntryByMouse::cleanup()
{
    m_form.reset();
    m_panel.reset();
}

void tst_EntryByMouse::theKeyIsSeenAtTheLineThatHasTheFocus()
{
    QLineEdit* const caption = line("text");
    QVERIFY(!keyOf(*caption)->isVisible());
    const QMargins margins = caption->textMargins();
    click(caption);
    QVERIFY(keyOf(*caption)->isVisible());
    click(line("deviceId"));
    QVERIFY(!keyOf(*caption)->isVisible());
    QVERIFY(keyOf(*line("deviceId"))->isVisible());
    QCOMPARE(caption->textMargins(), margins);
}

void tst_EntryByMouse::theKeyIsLargeEnoughAndCoversNoText()
{
    const int target = norvo::TouchSize::pixels(norvo::PanelLook::Touch::Fingers,
                                                *QGuiApplication::primaryScreen());
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        m_form->setLayoutDirection(direction);
        QLineEdit* const caption = line("text");
        click(caption);
        const QRect key = keyOf(*caption)->geometry();
        QVERIFY(key.width() >= target && key.height() >= target);
        QVERIFY(caption->rect().contains(key));
        QVERIFY(!keyOf(*caption)->accessibleName().isEmpty());
        caption->setText(QString(40, 'W'));
        caption->end(false);
        const QRect cursor = caption->inputMethodQuery(Qt::ImCursorRectangle).toRect();
        QVERIFY(!key.contains(cursor.center()));
    }
}

void tst_EntryByMouse::aText()
{
    QLineEdit* const caption = line("text");
    click(caption);
    ask(keyOf(*caption), [](QWidget& dialog) {
        QCOMPARE(dialog.findChild<QLineEdit*>("display")->text(), QString("Go"));
        typeByClicks(dialog, {"t", "o", "2"});
    });
    QVERIFY2(text().contains("text: to2"), text().constData());
    QVERIFY(caption->hasFocus());
    QVERIFY(keyOf(*caption)->isVisible());
}

void tst_EntryByMouse::aNumber()
{
    QLineEdit* const size = line("widget/fontSize");
    click(size);
    ask(keyOf(*size), [](QWidget& dialog) {
        tap(dialog, "key4");
        tap(dialog, "key2");
        tap(dialog, "ok");
    });
    QVERIFY2(text().contains("fontSize: 42"), text().constData());
    QVERIFY(size->hasFocus());
}

void tst_EntryByMouse::theIdOfADevice()
{
    click(line("deviceId"));
    ask(keyOf(*line("deviceId")), [](QWidget& dialog) { typeByClicks(dialog, {"r", "u", "n"}); });
    QVERIFY2(text().contains("  run: {device: button"), text().constData());
    QCOMPARE(m_panel->session->selection(), QStringList("run"));
}

void tst_EntryByMouse::linesOfAText()
{
    m_panel->session->select({"lined"});
    QCoreApplication::processEvents();
    auto* const lines = m_form->findChild<QPlainTextEdit*>("Value");
    auto* const key = m_form->findChild<QAbstractButton*>("Value keyboard");
    QTest::mouseClick(lines->viewport(), Qt::LeftButton, {}, {5, 8});
    ask(key, [](QWidget& dialog) { typeByClicks(dialog, {"a"}); });
    QCOMPARE(m_panel->session->device("lined")->params.first().value.text, QString("a\ntwo"));
    click(m_form->findChild<QAbstractButton*>("Value line"));
    ask(key, [](QWidget& dialog) { typeByClicks(dialog, {"b"}); });
    QCOMPARE(m_panel->session->device("lined")->params.first().value.text, QString("a\nb\ntwo"));
    ask(key, [](QWidget& dialog) { typeByClicks(dialog, {}); });
    QCOMPARE(m_panel->session->device("lined")->params.first().value.text, QString("a\ntwo"));
}

void tst_EntryByMouse::aSearchForAType()
{
    TypePalette palette(*m_panel->session);
    palette.resize(320, 440);
    palette.show();
    palette.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&palette));
    auto* const search = palette.findChild<QLineEdit*>("typeSearch");
    click(search);
    ask(keyOf(*search), [](QWidget& dialog) { typeByClicks(dialog, {"l", "o", "g"}); });
    QCOMPARE(search->text(), QString("log"));
}

void tst_EntryByMouse::cancelChangesNothing()
{
    click(line("text"));
    ask(keyOf(*line("text")), [](QWidget& dialog) {
        tap(dialog, "key1");
        tap(dialog, "cancel");
    });
    QCOMPARE(line("text")->text(), QString("Go"));
    QCOMPARE(text(), kPanel);
}

void tst_EntryByMouse::theFormStaysWhereItWas()
{
    click(m_form->findChild<QAbstractButton*>("allParameters"));
    QCoreApplication::processEvents();
    auto* const bar = m_form->findChild<QScrollArea*>()->verticalScrollBar();
    QVERIFY(bar->maximum() > 0);
    bar->setValue(bar->maximum() / 2);
    const int before = bar->value();
    QLineEdit* shown = nullptr;
    for (QLineEdit* const one : m_form->findChildren<QLineEdit*>()) {
        const QRect place(one->mapTo(m_form.get(), QPoint()), one->size());
        if (one->isVisible() && one->isEnabled() && m_form->rect().contains(place)) {
            shown = one;
        }
    }
    QVERIFY(shown);
    click(shown);
    ask(keyOf(*shown), [&](QWidget& dialog) {
        QCOMPARE(bar->value(), before);
        tap(dialog, "key1");
        tap(dialog, "ok");
    });
    QCOMPARE(bar->value(), before);
    QVERIFY(shown->hasFocus());
}

void tst_EntryByMouse::whatCannotBeChangedHasNoKey()
{
    QLineEdit* const caption = line("text");
    click(caption);
    caption->setReadOnly(true);
    QVERIFY(!keyOf(*caption)->isVisible());
    caption->setReadOnly(false);
    QVERIFY(keyOf(*caption)->isVisible());
}

NORVO_TEST(tst_EntryByMouse)
#include "tst_EntryByMouse.moc"
