#include "host/program/Fonts.h"
#include "TestMain.h"

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
    const QStringList installed = QFontDatabase().families();
    if (installed.contains(family)) {
        QSKIP("this family is installed here");
    }
    norvo::substituteFonts(installed);
    QCOMPARE(QFontInfo(QFont(family, 20)).family(), replacement);
}

void tst_Fonts::installedFamilyIsLeftAlone()
{
    for (const char* family : {"Digital-7", "Arial", "Courier"}) {
        QFont::removeSubstitutions(family);
    }
    norvo::substituteFonts({"digital-7", "Courier"});
    QCOMPARE(QFont::substitutes("Digital-7"), QStringList());
    QCOMPARE(QFont::substitutes("Courier"), QStringList());
    QCOMPARE(QFont::substitutes("Arial"), QStringList("liberation sans")); // Qt keeps them so.
}

NORVO_TEST(tst_Fonts)
#include "tst_Fonts.moc"
