// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelTexts.h"
#include "TestMain.h"

#include "host/panel/file/look/LookReader.h"

using norvo::PanelLook;
using Weights = QVector<int>;

/// What a panel file says on how the panel is shown.
class tst_LookReader : public QObject
{
    Q_OBJECT

private slots:
    void panelThatSaysNothingHasTheUsualLook();
    void everyKeyIsRead();
    void everyNameIsTakenAndTheDefaultSaysNothingNew();
    void weightsOfTabsStandByTheirNames();
    void languageIsWrittenEitherWay();
    void faultIsReported_data();
    void faultIsReported();
    void scaleNeedsADesign();
};

void tst_LookReader::panelThatSaysNothingHasTheUsualLook()
{
    const PanelLook look = panels::sound("title: x\n").look;
    QCOMPARE(look.theme, PanelLook::Theme::System);
    QCOMPARE(look.touch, PanelLook::Touch::Fingers);
    QCOMPARE(look.fit, PanelLook::Fit::Grow);
    QVERIFY(look.design.isEmpty() && look.language.isEmpty());
    QVERIFY(look.rows.isEmpty() && look.columns.isEmpty());
}

void tst_LookReader::everyKeyIsRead()
{
    const PanelLook look =
        panels::sound("theme: dark\ntouch: gloves\ndesign: 1024x600\nfit: scale\n"
                      "language: de\npages: [Main, 2]\nrows: [0, 3, 100]\ncolumns: [1]\n")
            .look;
    QCOMPARE(look.theme, PanelLook::Theme::Dark);
    QCOMPARE(look.touch, PanelLook::Touch::Gloves);
    QCOMPARE(look.fit, PanelLook::Fit::Scale);
    QCOMPARE(look.design, QSize(1024, 600));
    QCOMPARE(look.language, QString("de"));
    QCOMPARE(look.pages, QStringList({"Main", "2"}));
    QCOMPARE(look.rows, (PanelLook::Weights{{"", {0, 3, 100}}}));
    QCOMPARE(look.columns, (PanelLook::Weights{{"", {1}}}));
}

void tst_LookReader::everyNameIsTakenAndTheDefaultSaysNothingNew()
{
    QCOMPARE(norvo::lookNames("theme").size(), 3);
    QCOMPARE(norvo::lookNames("design"), QStringList());
    for (const QString& key : norvo::lookKeys()) {
        for (const QString& name : norvo::lookNames(key)) {
            const QString text = QString("design: 800x480\n%1: %2\n").arg(key, name);
            const PanelLook look = panels::sound(text.toUtf8()).look;
            const bool isUsual = look.theme == PanelLook().theme &&
                                 look.touch == PanelLook().touch && look.fit == PanelLook().fit;
            QCOMPARE(isUsual, name == norvo::lookDefault(key));
        }
    }
}

void tst_LookReader::weightsOfTabsStandByTheirNames()
{
    const PanelLook look = panels::sound("rows: {Pumps: [0, 1], \"\": [2]}\n").look;
    QCOMPARE(look.rows, (PanelLook::Weights{{"Pumps", {0, 1}}, {"", {2}}}));
}

void tst_LookReader::languageIsWrittenEitherWay()
{
    QCOMPARE(panels::sound("language: pt-BR\n").look.language, QString("pt_BR"));
    QCOMPARE(panels::sound("language: zh_Hant_TW\n").look.language, QString("zh_Hant_TW"));
}

void tst_LookReader::faultIsReported_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    const auto row = [](const QByteArray& text, const QString& error) {
        QTest::newRow(text) << text << "1:" + error;
    };
    row("theme: drak", "8: error: theme must be one of dark, light, system, not \"drak\"");
    row("theme: [dark]", "8: error: theme must be one of dark, light, system");
    row("touch: Gloves", "8: error: touch must be one of fingers, gloves, not \"Gloves\"");
    row("fit: shrink", "6: error: fit must be one of grow, scale, not \"shrink\"");
    const QString design = "9: error: design must be a width and a height in pixels from 64 to "
                           "16384, such as 1024x600";
    row("design: 1024", design);
    row("design: 63x600", design);
    row("design: 600x16385", design);
    row("design: 0x0", design);
    row("language: german", "11: error: language must be a code such as de or pt_BR");
    const QString rows = "error: rows must be a list of whole numbers from 0 to 100, such as "
                         "[0, 3, 1]";
    row("rows: 3", "7: " + rows);
    row("rows: [1, -1]", "11: " + rows);
    row("rows: [1, 101]", "11: " + rows);
    row("rows: [1.5]", "8: " + rows);
    row("rows: {Pumps: 1}", "15: " + rows);
    row("pages: Main",
        "8: error: pages must be a list of the names of tabs, such as [Main, Details]");
    row("colums: [1]", "1: error: unknown key \"colums\"; did you mean \"columns\"?");
}

void tst_LookReader::faultIsReported()
{
    QFETCH(QByteArray, text);
    QTEST(panels::errorsOf(text), "error");
}

void tst_LookReader::scaleNeedsADesign()
{
    const QString error = "fit: scale needs the size that the panel was laid out for, such as "
                          "\"design: 1024x600\"";
    QCOMPARE(panels::errorsOf("title: x\nfit: scale\n"), "2:6: error: " + error);
    QCOMPARE(panels::errorsOf("fit: scale\ndesign: 800x480\n"), QString());
}

NORVO_GUILESS_TEST(tst_LookReader)
#include "tst_LookReader.moc"
