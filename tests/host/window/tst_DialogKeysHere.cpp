// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/gui/dialogs/PinDialog.h"
#include "host/window/look/Look.h"
#include "host/window/look/TouchSize.h"

#include "host/gui/dialogs/KeyboardUse.h"
#include "TestMain.h"
#include "norvo/NumpadDialog.h"

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
    void keyboardHasAllKeys_data() { keyboardLayouts(); }
    void keyboardHasAllKeys();
    void variantsAreForAFinger();
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

/// Those of a dialog that are on view.
QList<QPushButton*> keysOf(const QWidget& dialog)
{
    QList<QPushButton*> keys;
    for (auto* const key : dialog.findChildren<QPushButton*>()) {
        if (key->isVisible()) {
            keys.append(key);
        }
    }
    return keys;
}

QRect placeIn(const QWidget& dialog, const QWidget& key)
{
    return {key.mapTo(&dialog, QPoint()), key.size()};
}

/// That they are whole, apart from each other, and large enough.
void checkKeys(const QWidget& dialog, int target)
{
    QApplication::processEvents(); // what a tap before has begun
    QRegion taken;
    for (const QPushButton* const key : keysOf(dialog)) {
        const QRect place = placeIn(dialog, *key);
        QVERIFY2(dialog.rect().contains(place), qPrintable(key->objectName()));
        QVERIFY2(!taken.intersects(place), qPrintable(key->objectName()));
        QVERIFY2(std::min(place.width(), place.height()) >= target,
                 qPrintable(QString("%1: %2x%3, not %4")
                                .arg(key->objectName())
                                .arg(place.width())
                                .arg(place.height())
                                .arg(target)));
        taken += place;
    }
}

/// Whether there are further pages of keys and the next one has come into view.
bool turnPage(QWidget& dialog)
{
    auto* const more = dialog.findChild<QPushButton*>("keyMore");
    if (!more || !more->isVisible()) {
        return false;
    }
    QTest::mouseClick(more, Qt::LeftButton);
    return !more->text().contains("\n1/");
}

void tapOnAnyPage(QWidget& dialog, const QString& name)
{
    while (!key(dialog, name).isVisible() && turnPage(dialog)) {
    }
    tap(dialog, name);
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
        checkKeys(dialog, target);
    });
    open();
    QCOMPARE(modal.count(), 1);
}

/// On as many pages as the screen makes of them; what a key shows is typed.
void tst_DialogKeysHere::keyboardHasAllKeys()
{
    QFETCH(QString, language);
    QFETCH(QString, letters);
    const Answer answer = enter({}, [&](QWidget& dialog) {
        for (int i = 0; i < 10 && key(dialog, "keySpace").text() != language; ++i) {
            tapOnAnyPage(dialog, "keyLanguage");
        }
        QCOMPARE(key(dialog, "keySpace").text(), language);
        QStringList names;
        QString typed;
        do {
            checkKeys(dialog, property("target").toInt());
            for (QPushButton* const key : keysOf(dialog)) {
                names.append(key->objectName());
                if (key->text().size() == 1) {
                    QTest::mouseClick(key, Qt::LeftButton);
                    typed += key->text();
                }
            }
        } while (turnPage(dialog));
        QCOMPARE(display(dialog).text(), typed);
        for (const QChar character : letters + "0123456789") {
            QVERIFY2(typed.contains(character), qPrintable(QString(character)));
        }
        for (const char* const name :
             {"ok", "cancel", "keySpace", "keyBackspace", "keyShift", "keyCaps", "keyLeft",
              "keyRight", "keySymbols", "keyLanguage"}) {
            QVERIFY2(names.contains(name), name);
        }
        tapOnAnyPage(dialog, "keySymbols");
        checkKeys(dialog, property("target").toInt());
        tapOnAnyPage(dialog, "key1-0");
        QCOMPARE(display(dialog).text(), typed + "!");
        tap(dialog, "ok");
    });
    QVERIFY(answer.ok);
}

void tst_DialogKeysHere::variantsAreForAFinger()
{
    enter({}, [&](QWidget& dialog) {
        while (key(dialog, "keySpace").text() != "English") {
            tapOnAnyPage(dialog, "keyLanguage");
        }
        QPushButton* held = nullptr;
        for (QPushButton* const key : keysOf(dialog)) {
            held = key->text() == "a" ? key : held;
        }
        QVERIFY(held);
        const QPoint finger = placeIn(dialog, *held).center();
        QTest::mousePress(held, Qt::LeftButton);
        auto* const variants = dialog.findChild<QWidget*>("variants");
        QTRY_VERIFY(variants->isVisible());
        checkKeys(*variants, property("target").toInt());
        QCOMPARE(keysOf(*variants).size(), 7);
        for (const QPushButton* const variant : keysOf(*variants)) {
            QVERIFY(!placeIn(dialog, *variant).contains(finger));
        }
        QTest::mouseRelease(held, Qt::LeftButton);
        QTest::mouseClick(keysOf(*variants).at(1), Qt::LeftButton);
        QCOMPARE(display(dialog).text(), QStringLiteral(u"à"));
    });
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
