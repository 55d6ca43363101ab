// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/access/LockMark.h"
#include "TestMain.h"

#include <QPainter>
#include <QtTest>

using norvo::LockMark;

/// The padlock of what is locked.
class tst_LockMark : public QObject
{
    Q_OBJECT

private slots:
    void padlockFillsItsSquare_data();
    void padlockFillsItsSquare();
};

void tst_LockMark::padlockFillsItsSquare_data()
{
    QTest::addColumn<bool>("isClosed");
    QTest::newRow("closed") << true;
    QTest::newRow("open") << false;
}

void tst_LockMark::padlockFillsItsSquare()
{
    QFETCH(bool, isClosed);
    QImage picture(140, 140, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    LockMark::paintLock(painter, QRectF(20, 20, 100, 100), Qt::black, isClosed);
    painter.end();
    QRect drawn;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            drawn |= qGray(picture.pixel(x, y)) < 128 ? QRect(x, y, 1, 1) : QRect();
        }
    }
    QVERIFY(QRect(20, 20, 100, 100).contains(drawn));
    QVERIFY2(drawn.height() >= 95, qPrintable(QString::number(drawn.height())));
}

NORVO_TEST(tst_LockMark)
#include "tst_LockMark.moc"
