// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/gui/dialogs/PinDialog.h"

#include "ModalDialog.h"
#include "TestMain.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

using norvo::PinDialog;
using Pin = std::optional<QString>;

namespace {

Pin askFor(std::function<void(QWidget&)> use, QWidget* parent = nullptr)
{
    ModalDialog modal(std::move(use));
    const Pin pin = PinDialog::getPin(parent, "PIN of the shift leader");
    return modal.count() == 1 ? pin : Pin("no dialog");
}

QLineEdit& display(QWidget& dialog)
{
    return *dialog.findChild<QLineEdit*>("display");
}

} // namespace

class tst_PinDialog : public QObject
{
    Q_OBJECT

private slots:
    void everyDigitIsReturned();
    void digitsAreMasked();
    void okWaitsForADigit();
    void noOldValueAndNoRangeAreShown();
    void backspaceAndClearTakeBack();
    void physicalKeyboardServes();
    void cancelReturnsNothing();
    void parentThatDiesCancels();
    void leadingZerosAreKept();
    void keyIsAtLeast64PixelsEachWay();
};

void tst_PinDialog::everyDigitIsReturned()
{
    const Pin pin = askFor([](QWidget& dialog) {
        for (const QChar digit : QString("1234567890")) {
            tap(dialog, QString("key") + digit);
        }
        tap(dialog, "ok");
    });
    QCOMPARE(pin.value_or("none"), QString("1234567890"));
}

void tst_PinDialog::digitsAreMasked()
{
    askFor([](QWidget& dialog) {
        tap(dialog, "key4");
        tap(dialog, "key2");
        QCOMPARE(display(dialog).displayText().size(), 2);
        QVERIFY(!display(dialog).displayText().contains('4'));
        QVERIFY(!display(dialog).displayText().contains('2'));
    });
}

void tst_PinDialog::okWaitsForADigit()
{
    const Pin pin = askFor([](QWidget& dialog) {
        QVERIFY(!dialog.findChild<QPushButton*>("ok")->isEnabled());
        tap(dialog, "ok");
        QTest::keyClick(&dialog, Qt::Key_Return);
        QVERIFY(dialog.isVisible());
        tap(dialog, "key7");
        QVERIFY(dialog.findChild<QPushButton*>("ok")->isEnabled());
        tap(dialog, "keyBackspace");
        QVERIFY(!dialog.findChild<QPushButton*>("ok")->isEnabled());
    });
    QVERIFY(!pin);
}

void tst_PinDialog::noOldValueAndNoRangeAreShown()
{
    askFor([](QWidget& dialog) {
        tap(dialog, "key4");
        tap(dialog, "ok");
    });
    askFor([](QWidget& dialog) {
        QCOMPARE(display(dialog).text(), QString());
        QStringList texts;
        const auto labels = dialog.findChildren<QLabel*>();
        for (const QLabel* label : labels) {
            texts += label->text();
        }
        texts.removeAll(QString());
        QCOMPARE(texts, QStringList("PIN of the shift leader"));
    });
}

void tst_PinDialog::backspaceAndClearTakeBack()
{
    const Pin pin = askFor([](QWidget& dialog) {
        for (const char* key : {"key1", "keyClear", "key2", "key3", "keyBackspace", "key4", "ok"}) {
            tap(dialog, key);
        }
    });
    QCOMPARE(pin.value_or("none"), QString("24"));
}

void tst_PinDialog::physicalKeyboardServes()
{
    const Pin pin = askFor([](QWidget& dialog) {
        QTest::keyClicks(&dialog, "1a-2.3");
        QTest::keyClick(&dialog, Qt::Key_Backspace);
        QTest::keyClick(&dialog, Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
    });
    QCOMPARE(pin.value_or("none"), QString("12"));
}

void tst_PinDialog::cancelReturnsNothing()
{
    QVERIFY(!askFor([](QWidget& dialog) {
        tap(dialog, "key1");
        tap(dialog, "cancel");
    }));
}

void tst_PinDialog::parentThatDiesCancels()
{
    auto* const parent = new QWidget;
    QVERIFY(!askFor([&](QWidget&) { delete parent; }, parent));
}

void tst_PinDialog::leadingZerosAreKept()
{
    const Pin pin = askFor([](QWidget& dialog) {
        for (const char* key : {"key0", "key0", "key1", "ok"}) {
            tap(dialog, key);
        }
    });
    QCOMPARE(pin.value_or("none"), QString("001"));
}

void tst_PinDialog::keyIsAtLeast64PixelsEachWay()
{
    int keys = 0;
    askFor([&](QWidget& dialog) {
        QVERIFY(dialog.screen()->availableGeometry().contains(dialog.geometry()));
        dialog.resize(dialog.minimumSizeHint());
        const auto buttons = dialog.findChildren<QPushButton*>();
        for (const QPushButton* key : buttons) {
            QVERIFY2(key->width() >= 64 && key->height() >= 64, qPrintable(key->objectName()));
            QVERIFY(!key->text().isEmpty() || !key->accessibleName().isEmpty());
            ++keys;
        }
    });
    QCOMPARE(keys, 14);
}

NORVO_TEST(tst_PinDialog)
#include "tst_PinDialog.moc"
