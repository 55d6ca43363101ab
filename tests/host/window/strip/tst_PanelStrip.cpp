// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "host/window/PanelWindow.h"
#include "host/window/look/TouchSize.h"
#include "host/window/strip/PanelStrip.h"

#include <QLabel>
#include <QScreen>
#include <QtTest>

using norvo::PanelLook;
using norvo::PanelStrip;
using norvo::PanelWindow;

/// The line below a panel's page.
class tst_PanelStrip : public QObject
{
    Q_OBJECT

private slots:
    void stripIsSeenWhileAPartIs();
    void stripIsAsHighAsAKey();
    void firstPartThatIsSeenTakesItsRoomOfThePage();
    void widestPartStandsFirst();
};

void tst_PanelStrip::stripIsSeenWhileAPartIs()
{
    PanelWindow window("");
    PanelStrip& strip = window.strip();
    window.show();
    QVERIFY(strip.isHidden());
    auto* const part = new QLabel("part");
    part->hide();
    strip.addPart(part);
    QVERIFY(strip.isHidden());
    part->show();
    QVERIFY(strip.isVisible());
    auto* const other = new QLabel("other");
    strip.addPart(other);
    part->hide();
    QVERIFY(strip.isVisible());
    other->hide();
    QVERIFY(strip.isHidden());
}

void tst_PanelStrip::stripIsAsHighAsAKey()
{
    PanelWindow window("");
    const double perMm = norvo::TouchSize::pixelsPerMm(*window.screen());
    QCOMPARE(window.strip().height(), qCeil(12.7 * perMm));
    window.strip().setTouch(PanelLook::Touch::Gloves);
    QCOMPARE(window.strip().height(), qCeil(20 * perMm));
}

void tst_PanelStrip::firstPartThatIsSeenTakesItsRoomOfThePage()
{
    PanelWindow window("");
    auto* const part = new QLabel("part");
    part->hide();
    window.strip().addPart(part);
    window.resize(800, 480);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const int before = window.page()->height();
    part->show();
    QTRY_VERIFY(part->isVisible());
    QTest::qWait(50);
    QCOMPARE(before - window.page()->height(), window.strip().height());
}

void tst_PanelStrip::widestPartStandsFirst()
{
    PanelWindow window("");
    auto* const key = new QLabel("key");
    auto* const line = new QLabel("line");
    window.strip().addPart(key);
    window.strip().addPart(line, 1);
    window.resize(800, 480);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(line->x() < key->x());
    QVERIFY(line->width() > 600);
    QVERIFY(window.width() - key->geometry().right() < 16);
}

NORVO_TEST(tst_PanelStrip)
#include "tst_PanelStrip.moc"
