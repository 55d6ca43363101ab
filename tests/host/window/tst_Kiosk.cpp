// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/fit/Kiosk.h"

#include "TestMain.h"

#include <optional>

class tst_Kiosk : public QObject
{
    Q_OBJECT

private slots:
    void pointerIsHiddenWhileItLives();
    void menusAreOffWhileItLives();
};

void tst_Kiosk::pointerIsHiddenWhileItLives()
{
    std::optional<norvo::Kiosk> kiosk(std::in_place, *qApp);
    QVERIFY(QGuiApplication::overrideCursor()); // Stands before any window's and dialog's own.
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::BlankCursor);
    kiosk.reset();
    QVERIFY(!QGuiApplication::overrideCursor());
}

void tst_Kiosk::menusAreOffWhileItLives()
{
    struct Field : QWidget
    {
        void contextMenuEvent(QContextMenuEvent*) override { ++asked; }
        int asked = 0;
    } field;
    QContextMenuEvent menu(QContextMenuEvent::Mouse, {1, 1});
    std::optional<norvo::Kiosk> kiosk(std::in_place, *qApp);
    QApplication::sendEvent(&field, &menu);
    QCOMPARE(field.asked, 0);
    kiosk.reset();
    QApplication::sendEvent(&field, &menu);
    QCOMPARE(field.asked, 1);
}

NORVO_TEST(tst_Kiosk)
#include "tst_Kiosk.moc"
