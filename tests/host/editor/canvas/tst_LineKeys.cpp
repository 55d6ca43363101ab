// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"

#include "host/editor/canvas/LineKeys.h"

#include <QAction>
#include <QPushButton>
#include <QtTest>

class tst_LineKeys : public QObject
{
    Q_OBJECT

private slots:
    void textsAreNotCut_data();
    void textsAreNotCut();
};

void tst_LineKeys::textsAreNotCut_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<bool>("isOneRow");
    QTest::newRow("a wide page") << 1200 << true;
    QTest::newRow("a narrow one") << 260 << false;
}

void tst_LineKeys::textsAreNotCut()
{
    QFETCH(int, width);
    QFETCH(bool, isOneRow);
    QWidget cover;
    cover.resize(width, 400);
    QAction before("Insert column before");
    QAction behind("Insert column behind");
    QAction remove("Remove column");
    const norvo::LineKeys keys(cover, {&before, &behind, &remove}, {100, 0, 50, 50}, 48);
    cover.show();
    QVERIFY(cover.rect().contains(keys.geometry()));
    const auto all = keys.findChildren<QPushButton*>();
    QCOMPARE(all.size(), 3);
    for (const QPushButton* const key : all) {
        QVERIFY2(key->width() >= key->sizeHint().width(), qPrintable(key->text()));
        QVERIFY(key->height() >= 48);
    }
    QCOMPARE(all.first()->y() == all.last()->y(), isOneRow);
}

NORVO_TEST(tst_LineKeys)
#include "tst_LineKeys.moc"
