// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/Display.h"
#include "TestMain.h"

#include <QFontDatabase>
#include <QtTest>

class tst_Fonts : public QObject
{
    Q_OBJECT

private slots:
    void missingFamilyIsReplaced_data();
    void missingFamilyIsReplaced();
    void installedFamilyIsLeftAlone();
};

void tst_Fonts::missingFamilyIsReplaced_data()
{
    QTest::addColumn<QString>("family");
    QTest::addColumn<QString>("replacement");
    QTest::newRow("seven segments") << "Digital-7"
                                    << "DSEG7 Classic";
    QTest::newRow("captions") << "Arial"
                              << "Liberation Sans";
    QTest::newRow("typewriter") << "Courier"
                                << "Liberation Mono";
}

void tst_Fonts::missingFamilyIsReplaced()
{
    QFETCH(QString, family);
    QFETCH(QString, replacement);
    if (QFontDatabase().families().contains(family)) {
        QSKIP("this family is installed here");
    }
    norvo::Display::substituteFonts();
    QCOMPARE(QFontInfo(QFont(family, 20)).family(), replacement);
}

/// Where a family of ours is installed, no free one takes its place.
void tst_Fonts::installedFamilyIsLeftAlone()
{
    QFont::insertSubstitution("DSEG7 Classic", "Liberation Mono");
    QCOMPARE(QFontInfo(QFont("DSEG7 Classic", 20)).family(), QString("DSEG7 Classic"));
    QFont::removeSubstitutions("DSEG7 Classic");
}

NORVO_TEST(tst_Fonts)
#include "tst_Fonts.moc"
