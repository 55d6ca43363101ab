// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "host/window/look/TouchSize.h"
#include "host/window/sheet/Sheet.h"

#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <QtTest>

using norvo::Sheet;

namespace {

/// A window with a key that opens a sheet over it.
struct Opened
{
    Opened()
    {
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(key = new QPushButton("open"));
        window.resize(800, 480);
        window.show();
        window.activateWindow();
        key->setFocus();
        sheet = new Sheet(*key, "Title");
        sheet->content().addWidget(new QLabel("content"));
    }

    QWidget window;
    QPushButton* key;
    QPointer<Sheet> sheet;
};

} // namespace

class tst_Sheet : public QObject
{
    Q_OBJECT

private slots:
    void panelIsDimmedWhileItIsOpen();
    void escapeClosesAndGivesTheFocusBack();
    void keysAreLargeEnoughForAFinger();
    void windowMayBeSmallerThanWanted();
    void itFollowsTheWindowsSize();
    void itGoesWithTheWindow();
    void keyStandsBeforeClose();
};

void tst_Sheet::panelIsDimmedWhileItIsOpen()
{
    Opened opened;
    const QColor before = opened.window.grab().toImage().pixelColor(2, 2);
    opened.sheet->present();
    QVERIFY(opened.window.grab().toImage().pixelColor(2, 2).lightness() < before.lightness());
    opened.sheet->closeKey()->click();
    QCOMPARE(opened.window.grab().toImage().pixelColor(2, 2), before);
    QTRY_VERIFY(!opened.sheet);
}

void tst_Sheet::escapeClosesAndGivesTheFocusBack()
{
    Opened opened;
    opened.sheet->present();
    QVERIFY(QTest::qWaitForWindowActive(opened.sheet));
    QTest::keyClick(opened.sheet, Qt::Key_Escape);
    QTRY_VERIFY(!opened.sheet);
    QTRY_VERIFY(opened.key->hasFocus());
}

void tst_Sheet::keysAreLargeEnoughForAFinger()
{
    Opened opened;
    QPushButton* const further = opened.sheet->addKey("x");
    opened.sheet->present();
    const int target =
        norvo::TouchSize::pixels(norvo::PanelLook::Touch::Fingers, *opened.window.screen());
    for (const QPushButton* key : {further, opened.sheet->closeKey()}) {
        QVERIFY(key->width() >= target && key->height() >= target);
    }
}

void tst_Sheet::windowMayBeSmallerThanWanted()
{
    Opened opened;
    opened.sheet->present({2000, 300});
    const QRect window = opened.window.geometry();
    QVERIFY(window.contains(opened.sheet->geometry()));
    QCOMPARE(opened.sheet->height(), 300);
    QCOMPARE(opened.sheet->geometry().center().x(), window.center().x());
}

void tst_Sheet::itFollowsTheWindowsSize()
{
    Opened opened;
    opened.sheet->present();
    const int before = opened.sheet->width();
    opened.window.resize(1000, 600);
    QTRY_COMPARE(opened.sheet->width(), before + 200);
}

void tst_Sheet::itGoesWithTheWindow()
{
    QPointer<Sheet> sheet;
    {
        Opened opened;
        sheet = opened.sheet;
        sheet->present();
    }
    QVERIFY(!sheet);
}

void tst_Sheet::keyStandsBeforeClose()
{
    Opened opened;
    QPushButton* const first = opened.sheet->addKey("first");
    QPushButton* const second = opened.sheet->addKey("second");
    opened.sheet->present();
    QVERIFY(second->x() < first->x());
    QVERIFY(first->x() < opened.sheet->closeKey()->x());
}

NORVO_TEST(tst_Sheet)
#include "tst_Sheet.moc"
