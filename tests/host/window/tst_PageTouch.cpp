// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/fit/ScaledPage.h"

#include "ShownPanel.h"
#include "TestMain.h"

#include <QAbstractButton>
#include <QTouchDevice>
#include <QtTest>

/// A finger on a page that is drawn to its window.
class tst_PageTouch : public QObject
{
    Q_OBJECT

private slots:
    void fingerPressesWhatTakesNoTouch();
};

/// Such a touch is left to the window system, which then makes it one of the mouse.
void tst_PageTouch::fingerPressesWhatTakesNoTouch()
{
    const ShownPanel shown("fit: scale\ndesign: 640x400\n"
                           "devices: {pump: {device: button, params: {text: Pump}}}\n",
                           {640, 400});
    auto* const button = shown.only<QAbstractButton>("pump");
    QWidget* const view = shown.window.findChild<norvo::ScaledPage*>()->viewport();
    const QPoint place = button->mapTo(shown.window.page(), button->rect().center());
    QTouchDevice* const screen = QTest::createTouchDevice();
    QTest::touchEvent(view, screen).press(0, place, view);
    QTest::touchEvent(view, screen).release(0, place, view);
    QTRY_VERIFY(button->isChecked());
}

NORVO_TEST(tst_PageTouch)
#include "tst_PageTouch.moc"
