// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/alarms/AlarmSign.h"
#include "TestMain.h"

#include <QImage>
#include <QPainter>
#include <QtTest>

using norvo::AlarmPriority;

/// The sign as it is painted.
class tst_AlarmSign : public QObject
{
    Q_OBJECT

private slots:
    void painterIsLeftAsItWas();
    void prioritiesAndAcknowledgementDiffer();

private:
    static QImage picture(AlarmPriority priority, bool isFilled)
    {
        return norvo::AlarmSign::icon(priority, isFilled, 24, QPalette()).pixmap(48).toImage();
    }
};

void tst_AlarmSign::painterIsLeftAsItWas()
{
    QImage image(40, 40, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setPen(QPen(Qt::cyan, 3));
    painter.setBrush(Qt::magenta);
    const QFont font = painter.font();
    for (const auto priority : {AlarmPriority::Low, AlarmPriority::Medium, AlarmPriority::High}) {
        norvo::AlarmSign::paint(painter, image.rect(), priority, true, QPalette());
        QCOMPARE(painter.pen(), QPen(Qt::cyan, 3));
        QCOMPARE(painter.brush(), QBrush(Qt::magenta));
        QCOMPARE(painter.font(), font);
        QVERIFY(!painter.testRenderHint(QPainter::Antialiasing));
    }
}

void tst_AlarmSign::prioritiesAndAcknowledgementDiffer()
{
    QVector<QImage> pictures;
    for (const auto priority : {AlarmPriority::Low, AlarmPriority::Medium, AlarmPriority::High}) {
        for (const bool isFilled : {false, true}) {
            const QImage one = picture(priority, isFilled);
            QVERIFY(!one.isNull());
            QVERIFY(!pictures.contains(one));
            pictures.append(one);
        }
    }
}

NORVO_TEST(tst_AlarmSign)
#include "tst_AlarmSign.moc"
