// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/Display.h"
#include "TestMain.h"

#include <QQuickWindow>
#include <QtTest>

class tst_Display : public QObject
{
    Q_OBJECT

private slots:
    void offScreenNeedsNoDisplay();
};

void tst_Display::offScreenNeedsNoDisplay()
{
    QString reason;
    const auto application = norvo::Display::open(norvo::Display::Kind::OffScreen, {}, reason);
    QVERIFY(application);
    QCOMPARE(reason, QString());
    QCOMPARE(QGuiApplication::platformName(), QString("offscreen"));
    // A panel without QML does not pay for the question which renderer Qt Quick is to have.
    QCOMPARE(QQuickWindow::sceneGraphBackend(), QString());
}

NORVO_APPLESS_TEST(tst_Display)
#include "tst_Display.moc"
