// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/gui/dialogs/PinDialog.h"
#include "host/window/look/Look.h"
#include "host/window/look/TouchSize.h"

#include "ModalDialog.h"
#include "TestMain.h"
#include "norvo/NumpadDialog.h"
#include "norvo/ScreenKeyboardDialog.h"

#include <QPushButton>
#include <QScreen>

#include <algorithm>
#include <cmath>
#include <functional>

using norvo::PanelLook;

/// The keys of the dialogs in the look, on the screen that the test finds. NORVO_TEST_TOUCH says
/// for what they are; tst_DialogKeys names screens.
class tst_DialogKeysHere : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { QApplication::setStyle("fusion"); }
    void keysAreForAFinger_data();
    void keysAreForAFinger();
    void okIsFilledAndBold();
    void enterIsOk();
};

namespace {

using Open = std::function<void()>;

void openKeypad()
{
    NumpadDialog::getDouble(nullptr, "Input value", "Set-point, °C", 5, 0, 10);
}

/// Relative luminance as the guidelines for readable screens define it.
double luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

} // namespace

Q_DECLARE_METATYPE(Open)

void tst_DialogKeysHere::initTestCase()
{
    PanelLook look;
    look.theme = PanelLook::Theme::Light;
    look.touch = qEnvironmentVariable("NORVO_TEST_TOUCH") == "gloves" ? PanelLook::Touch::Gloves
                                                                      : PanelLook::Touch::Fingers;
    norvo::Look::apply(*qApp, look);
    setProperty("target", norvo::TouchSize::pixels(look.touch, *qApp->primaryScreen()));
}

void tst_DialogKeysHere::keysAreForAFinger_data()
{
    QTest::addColumn<Open>("open");
    QTest::newRow("keypad") << Open(openKeypad);
    QTest::newRow("keyboard") << Open(
        [] { ScreenKeyboardDialog::getText(nullptr, "Input value"); });
    QTest::newRow("PIN") << Open([] { norvo::PinDialog::getPin(nullptr, "PIN"); });
}

/// Where a screen has no room for that, the dialog takes all of it.
void tst_DialogKeysHere::keysAreForAFinger()
{
    QFETCH(Open, open);
    const int target = property("target").toInt();
    ModalDialog modal([&](QWidget& dialog) {
        const QRect screen = dialog.screen()->availableGeometry();
        QVERIFY2(screen.contains(dialog.geometry()), qPrintable(QString("%1x%2 at %3, %4")
                                                                    .arg(dialog.width())
                                                                    .arg(dialog.height())
                                                                    .arg(dialog.x())
                                                                    .arg(dialog.y())));
        QSize least = screen.size();
        for (const QPushButton* key : dialog.findChildren<QPushButton*>()) {
            if (key->isVisible()) {
                least = least.boundedTo(key->size());
                QVERIFY2(dialog.rect().contains(key->geometry()), qPrintable(key->objectName()));
            }
        }
        qInfo("%dx%d, target %d: keys of %dx%d at least in %dx%d", screen.width(), screen.height(),
              target, least.width(), least.height(), dialog.width(), dialog.height());
        QVERIFY(least.width() >= target || dialog.width() > screen.width() * 0.97);
        QVERIFY(least.height() >= target || dialog.height() > screen.height() * 0.97);
        QVERIFY(least.width() >= 48 && least.height() >= 64);
    });
    open();
    QCOMPARE(modal.count(), 1);
}

void tst_DialogKeysHere::okIsFilledAndBold()
{
    ModalDialog modal([](QWidget& dialog) {
        auto* const ok = dialog.findChild<QPushButton*>("ok");
        auto* const cancel = dialog.findChild<QPushButton*>("cancel");
        const auto ground = [](QWidget& key) {
            return luminance(key.grab().toImage().pixelColor(8, key.height() / 2));
        };
        const double dark = std::min(ground(*ok), ground(*cancel));
        const double light = std::max(ground(*ok), ground(*cancel));
        QVERIFY2((light + 0.05) / (dark + 0.05) >= 3, "the fill");
        QVERIFY2(ok->font().bold() && !cancel->font().bold(), "without colour");
    });
    openKeypad();
    QCOMPARE(modal.count(), 1);
}

void tst_DialogKeysHere::enterIsOk()
{
    bool ok = false;
    ModalDialog modal([](QWidget& dialog) {
        QTest::keyClick(&dialog, Qt::Key_7);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    QCOMPARE(NumpadDialog::getDouble(nullptr, "Input value", {}, 5, 0, 10, 2, &ok), 7.0);
    QVERIFY(ok);
}

NORVO_TEST(tst_DialogKeysHere)
#include "tst_DialogKeysHere.moc"
