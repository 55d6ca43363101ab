// SPDX-License-Identifier: GPL-3.0-or-later

#include "NumpadUse.h"
#include "TestMain.h"

#include <QWindow>
#include <QtTest>

class tst_NumpadDialogLook : public QObject
{
    Q_OBJECT

private slots:
    void keyIsAtLeast64PixelsEachWay();
    void fitsTheScreen_data();
    void fitsTheScreen();
    void rangeAndOldValueStandBesideTheDisplay();
    void titleAndLabelAreShown();
    void labelIsShownVerbatim();
    void withoutAParentItStaysInFrontOfTheWindowInUse();
    void outOfRangeIsRedAndCannotBeConfirmed();
    void unreadableIsRedAndCannotBeConfirmed();
};

void tst_NumpadDialogLook::keyIsAtLeast64PixelsEachWay()
{
    int keys = 0;
    enterDouble(5, [&](QWidget& dialog) {
        dialog.resize(dialog.minimumSizeHint());
        const auto buttons = dialog.findChildren<QPushButton*>();
        for (const QPushButton* key : buttons) {
            QVERIFY2(key->width() >= 64 && key->height() >= 64, qPrintable(key->objectName()));
            QVERIFY(!key->text().isEmpty() || !key->accessibleName().isEmpty());
            ++keys;
        }
    });
    QCOMPARE(keys, 18);
}

void tst_NumpadDialogLook::fitsTheScreen_data()
{
    QTest::addColumn<QString>("label");
    QTest::newRow("without a label") << "";
    QTest::newRow("with a label") << "Set-point of the second heater, in degrees";
}

void tst_NumpadDialogLook::fitsTheScreen()
{
    QFETCH(QString, label);
    ModalDialog modal([](QWidget& dialog) {
        QVERIFY(dialog.minimumSizeHint().width() <= 800);
        QVERIFY(dialog.minimumSizeHint().height() <= 480);
        QVERIFY(dialog.screen()->availableGeometry().contains(dialog.geometry()));
        dialog.resize(800, 480);
        QCOMPARE(dialog.size(), QSize(800, 480));
        const auto children = dialog.findChildren<QWidget*>();
        for (const QWidget* child : children) {
            QVERIFY2(dialog.rect().contains(child->geometry()) || child->parentWidget() != &dialog,
                     qPrintable(child->objectName()));
        }
    });
    NumpadDialog::getDouble(nullptr, "Input value", label, 0.5, -12345.6789, 1e300);
    QCOMPARE(modal.count(), 1);
}

void tst_NumpadDialogLook::rangeAndOldValueStandBesideTheDisplay()
{
    enterDouble(0.123457, [](QWidget& dialog) {
        tap(dialog, "key7");
        QCOMPARE(labelled(dialog, "range"), QString("Allowed: 0 to 10"));
        QCOMPARE(labelled(dialog, "oldValue"), QString("Old value: 0.123457"));
        const QRect display = dialog.findChild<QLineEdit*>("display")->geometry();
        for (const char* name : {"range", "oldValue"}) {
            const QRect label = dialog.findChild<QLabel*>(name)->geometry();
            QVERIFY(label.left() > display.right());
            QVERIFY(label.top() >= display.top() - 1 && label.bottom() <= display.bottom() + 1);
        }
    });
}

void tst_NumpadDialogLook::titleAndLabelAreShown()
{
    ModalDialog modal([](QWidget& dialog) {
        QCOMPARE(dialog.windowTitle(), QString("Input value"));
        QCOMPARE(labelled(dialog, "label"), QString("Heater"));
    });
    NumpadDialog::getDouble(nullptr, "Input value", "Heater");
    QCOMPARE(modal.count(), 1);
}

void tst_NumpadDialogLook::labelIsShownVerbatim()
{
    int plain = 0;
    const auto widthOf = [&plain](QWidget& dialog) {
        auto* const label = dialog.findChild<QLabel*>("label");
        label->setWordWrap(false);
        plain = label->sizeHint().width();
    };
    ModalDialog tagged(widthOf);
    NumpadDialog::getDouble(nullptr, "", "<i></i>1");
    const int withTags = plain;
    ModalDialog bare(widthOf);
    NumpadDialog::getDouble(nullptr, "", "1");
    QVERIFY(withTags > 3 * plain);
}

void tst_NumpadDialogLook::withoutAParentItStaysInFrontOfTheWindowInUse()
{
    QWidget panel;
    panel.show();
    panel.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&panel));
    enterDouble(5, [&panel](QWidget& dialog) {
        QCOMPARE(dialog.windowHandle()->transientParent(), panel.windowHandle());
        QCOMPARE(dialog.findChild<QLineEdit*>("display")->accessibleName(), QString("Input value"));
    });
}

void tst_NumpadDialogLook::outOfRangeIsRedAndCannotBeConfirmed()
{
    const Answer answer = enterDouble(5, [](QWidget& dialog) {
        QVERIFY(!isRed(colourOfDisplay(dialog)));
        tapAll(dialog, {"key1", "key1"});
        QVERIFY(isRed(colourOfDisplay(dialog)));
        QCOMPARE(labelled(dialog, "reason"), QString("Above the highest value allowed, 10"));
        QVERIFY(!dialog.findChild<QPushButton*>("ok")->isEnabled());
        tap(dialog, "ok");
        QTest::keyClick(&dialog, Qt::Key_Return);
        QVERIFY(dialog.isVisible());

        tap(dialog, "keyBackspace");
        QVERIFY(!isRed(colourOfDisplay(dialog)));
        QCOMPARE(labelled(dialog, "reason"), QString());
        tap(dialog, "ok");
    });
    QVERIFY(answer.ok);
    QCOMPARE(answer.number, 1.0);
}

void tst_NumpadDialogLook::unreadableIsRedAndCannotBeConfirmed()
{
    const Answer answer = enterDouble(5, [](QWidget& dialog) {
        QTest::keyClicks(&dialog, "-");
        QVERIFY(isRed(colourOfDisplay(dialog)));
        QCOMPARE(labelled(dialog, "reason"), QString("This is not a number"));
        QVERIFY(!dialog.findChild<QPushButton*>("ok")->isEnabled());
        tap(dialog, "keyClear");
        QCOMPARE(labelled(dialog, "reason"), QString("Enter a number"));
        QVERIFY(!dialog.findChild<QPushButton*>("ok")->isEnabled());
    });
    QVERIFY(!answer.ok);
}

NORVO_TEST(tst_NumpadDialogLook)
#include "tst_NumpadDialogLook.moc"
