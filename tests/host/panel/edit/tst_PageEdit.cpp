// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/PageEdit.h"
#include "host/panel/edit/ParamEdit.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Cells;
using norvo::YamlEdit;
namespace PageEdit = norvo::PageEdit;

namespace {

QString errorOf(const YamlEdit::Error& error)
{
    return error ? error->text : QString();
}

/// Where a text puts the devices of these ids.
norvo::CellsById cellsOf(const YamlEdit& edit, const QStringList& ids)
{
    norvo::CellsById known;
    for (const QString& id : ids) {
        known.insert(id, {});
    }
    return norvo::cellsByText(edit, known);
}

} // namespace

class tst_PageEdit : public QObject
{
    Q_OBJECT

private slots:
    void pagesAreAddedInTheirOrder();
    void nameInUseOrNoneIsRefused();
    void renamedPageIsFollowedEverywhere();
    void pageIsRemovedWithItsDevices();
    void firstPageIsNamedWhereAnotherTakesItsPlace();
    void linesComeAndGo_data();
    void linesComeAndGo();
    void lineThatHoldsADeviceStays();
    void usesMoveAsAWhole();
    void usesMoveBackAsAWhole();
    void othersKeepTheirPlaces();
};

void tst_PageEdit::pagesAreAddedInTheirOrder()
{
    YamlEdit edit("title: x\nrows: [1]\ndevices: {a: {device: x}}\n");
    QCOMPARE(errorOf(PageEdit::add(edit, {}, "Details")), QString());
    QCOMPARE(edit.text(), QByteArray("title: x\npages: [Main, Details]\nrows: [1]\n"
                                     "devices: {a: {device: x}}\n"));
    QCOMPARE(errorOf(PageEdit::add(edit, {"Main", "Details"}, "3")), QString());
    QVERIFY(edit.text().contains("\npages: [Main, Details, 3]\n"));
    YamlEdit named("devices: {a: {device: x, params: {widget/area: Run}}}\n");
    QCOMPARE(errorOf(PageEdit::add(named, {"Run"}, "Service")), QString());
    QCOMPARE(named.text(), QByteArray("pages: [Run, Service]\n"
                                      "devices: {a: {device: x, params: {widget/area: Run}}}\n"));
}

void tst_PageEdit::nameInUseOrNoneIsRefused()
{
    const QByteArray text("pages: [Run]\ndevices: {a: {device: x, params: {widget/area: Air}}}\n");
    YamlEdit edit(text);
    const auto cells = cellsOf(edit, {"a"});
    QCOMPARE(errorOf(PageEdit::add(edit, {"Run", "Air"}, "Air")),
             QString("there is a page \"Air\" already"));
    QCOMPARE(errorOf(PageEdit::add(edit, {"Run", "Air"}, " ")), QString("a page needs a name"));
    QCOMPARE(errorOf(PageEdit::rename(edit, cells, "Run", "Air")),
             QString("there is a page \"Air\" already"));
    QCOMPARE(errorOf(PageEdit::rename(edit, cells, "Air", "Run")),
             QString("there is a page \"Run\" already"));
    QCOMPARE(errorOf(PageEdit::rename(edit, cells, "Air", "")), QString("a page needs a name"));
    QCOMPARE(edit.text(), text);
}

void tst_PageEdit::renamedPageIsFollowedEverywhere()
{
    YamlEdit edit("pages: [Run, Air] # Two.\nrows: {Air: [1], \"\": [2]}\ndevices:\n"
                  "  a: {device: x, params: {widget: {area: Air}}}\n  b: {device: Air}\n"
                  "  u: {use: t, at: {area: Air}}\n");
    auto cells = cellsOf(edit, {"a", "b"});
    cells.insert("u-x", {"Air", 0, 0, 1, 1});
    QCOMPARE(errorOf(PageEdit::rename(edit, cells, "Air", "Fans")), QString());
    QCOMPARE(edit.text(),
             QByteArray("pages: [Run, Fans] # Two.\nrows: {Fans: [1], \"\": [2]}\ndevices:\n"
                        "  a: {device: x, params: {widget: {area: Fans}}}\n  b: {device: Air}\n"
                        "  u: {use: t, at: {area: Fans}}\n"));
    YamlEdit plain("devices: {a: {device: x}}\n");
    QCOMPARE(errorOf(PageEdit::rename(plain, cellsOf(plain, {"a"}), "", "Run")), QString());
    QCOMPARE(plain.text(), QByteArray("pages: [Run]\ndevices: {a: {device: x}}\n"));
    YamlEdit fixed("pages: [Run]\ndevices: {u: {use: t}}\n");
    QVERIFY(errorOf(PageEdit::rename(fixed, {{"u-x", {"Air", 0, 0, 1, 1}}}, "Air", "Fans"))
                .contains("template"));
}

void tst_PageEdit::pageIsRemovedWithItsDevices()
{
    YamlEdit edit("pages: [Run, Air]\ncolumns: {Air: [1]}\ndevices:\n  a: {device: x}\n"
                  "  b: {device: x, params: {widget/area: Air}}\n  c: {device: source}\n"
                  "connections:\n  - c.o -> a.i\n  - c.o -> b.i\n");
    const auto cells = cellsOf(edit, {"a", "b"});
    QCOMPARE(errorOf(PageEdit::remove(edit, cells, "Air")), QString());
    QCOMPARE(edit.text(), QByteArray("pages: [Run]\ndevices:\n  a: {device: x}\n"
                                     "  c: {device: source}\nconnections:\n  - c.o -> a.i\n"));
    QCOMPARE(errorOf(PageEdit::remove(edit, cellsOf(edit, {"a"}), "Run")),
             QString("the only page of a panel cannot be removed"));
}

void tst_PageEdit::firstPageIsNamedWhereAnotherTakesItsPlace()
{
    YamlEdit edit("pages: [Run, Air]\ndevices:\n  a: {device: x}\n"
                  "  b: {device: x, params: {widget: {area: Air}}}\n  s: {device: source}\n");
    const auto cells = cellsOf(edit, {"a", "b"});
    QCOMPARE(errorOf(PageEdit::order(edit, cells, {"Air", "Run"})), QString());
    QCOMPARE(
        edit.text(),
        QByteArray("pages: [Air, Run]\ndevices:\n"
                   "  a: {device: x, params: {widget: {area: Run}}}\n"
                   "  b: {device: x, params: {widget: {area: Air}}}\n  s: {device: source}\n"));
}

void tst_PageEdit::linesComeAndGo_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("what");
    QTest::addColumn<int>("line");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char* name, const QByteArray& before, const QString& what, int line,
                        const QByteArray& expected) {
        QTest::newRow(name) << before << what << line << expected;
    };
    row("what is below moves, what reaches over it grows",
        "devices:\n  a: {device: x, params: {widget: {row: 0, column: 0}}}\n"
        "  b: {device: x, params: {widget: {row: 0, column: 1, rowspan: 2}}} # B.\n"
        "  c: {device: x, params: {widget: {row: 1, column: 0}}}\nrows: [0, 2]\n",
        "+row", 1,
        "devices:\n  a: {device: x, params: {widget: {row: 0, column: 0}}}\n"
        "  b: {device: x, params: {widget: {row: 0, column: 1, rowspan: 3}}} # B.\n"
        "  c: {device: x, params: {widget: {row: 2, column: 0}}}\nrows: [0, 0, 2]\n");
    row("what has no cells gets some",
        "devices:\n  a: {device: x}\n  b: {device: x}\n  c: {device: x}\n", "+row", 1,
        "devices:\n  a: {device: x}\n  b: {device: x, params: {widget: {row: 2, column: 0}}}\n"
        "  c: {device: x, params: {widget: {row: 3, column: 0}}}\n");
    row("columns",
        "columns: [2, 1]\ndevices:\n  a: {device: x, params: {widget: {row: 0, column: 0, colspan: "
        "2}}}\n"
        "  b: {device: x, params: {widget: {row: 1, column: 1}}}\n",
        "+column", 0,
        "columns: [1, 2, 1]\ndevices:\n  a: {device: x, params: {widget: {row: 0, column: 1, "
        "colspan: 2}}}\n"
        "  b: {device: x, params: {widget: {row: 1, column: 2}}}\n");
    row("an empty row goes",
        "rows: [0, 5, 1]\ndevices:\n  a: {device: x, params: {widget: {row: 0, column: 0, rowspan: "
        "2}}}\n"
        "  b: {device: x, params: {widget: {row: 2, column: 0}}}\n",
        "-row", 1,
        "rows: [0, 1]\ndevices:\n  a: {device: x, params: {widget: {row: 0, column: 0}}}\n"
        "  b: {device: x, params: {widget: {row: 1, column: 0}}}\n");
    row("an empty column goes",
        "devices:\n  a: {device: x, params: {widget: {row: 0, column: 1}}}\n", "-column", 0,
        "devices:\n  a: {device: x, params: {widget: {row: 0, column: 0}}}\n");
}

void tst_PageEdit::linesComeAndGo()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, what);
    QFETCH(int, line);
    YamlEdit edit(before);
    const auto cells = cellsOf(edit, {"a", "b", "c"});
    const auto change = what == "+row"      ? PageEdit::insertRow
                        : what == "+column" ? PageEdit::insertColumn
                        : what == "-row"    ? PageEdit::removeRow
                                            : PageEdit::removeColumn;
    QCOMPARE(errorOf(change(edit, cells, "", line)), QString());
    QTEST(edit.text(), "expected");
}

void tst_PageEdit::lineThatHoldsADeviceStays()
{
    const QByteArray text("devices:\n  a: {device: x}\n");
    YamlEdit edit(text);
    QCOMPARE(errorOf(PageEdit::removeRow(edit, cellsOf(edit, {"a"}), "", 0)),
             QString("\"a\" stands in this row"));
    QCOMPARE(edit.text(), text);
}

void tst_PageEdit::usesMoveAsAWhole()
{
    YamlEdit edit("devices:\n  u: {use: t, at: {row: 1}}\n  v: {use: t}\n");
    norvo::CellsById cells{
        {"u-a", {"", 1, 0, 1, 1}}, {"u-b", {"", 2, 0, 1, 1}}, {"v-a", {"", 0, 1, 1, 1}}};
    QCOMPARE(errorOf(PageEdit::insertRow(edit, cells, "", 1)), QString());
    QCOMPARE(edit.text(), QByteArray("devices:\n  u: {use: t, at: {row: 2}}\n  v: {use: t}\n"));
    QVERIFY(errorOf(PageEdit::insertRow(edit, cells, "", 2)).contains("template"));
    QCOMPARE(errorOf(PageEdit::insertColumn(edit, cells, "", 1)), QString());
    QCOMPARE(edit.text(), QByteArray("devices:\n  u: {use: t, at: {row: 2}}\n"
                                     "  v: {use: t, at: {column: 1}}\n"));
}

/// The first row need not be said; it is, where a column is said, too.
void tst_PageEdit::usesMoveBackAsAWhole()
{
    YamlEdit edit(
        "devices:\n  u: {use: t, at: {row: 2}}\n  v: {use: t, at: {row: 2, column: 3}}\n");
    norvo::CellsById cells{{"u-a", {"", 2, 0, 1, 1}}, {"v-a", {"", 2, 3, 1, 1}}};
    QCOMPARE(errorOf(PageEdit::removeRow(edit, cells, "", 1)), QString());
    QCOMPARE(edit.text(), QByteArray("devices:\n  u: {use: t, at: {row: 1}}\n"
                                     "  v: {use: t, at: {row: 1, column: 3}}\n"));
    cells = {{"u-a", {"", 1, 0, 1, 1}}, {"v-a", {"", 1, 3, 1, 1}}};
    QCOMPARE(errorOf(PageEdit::removeRow(edit, cells, "", 0)), QString());
    QCOMPARE(edit.text(),
             QByteArray("devices:\n  u: {use: t}\n  v: {use: t, at: {row: 0, column: 3}}\n"));
}

void tst_PageEdit::othersKeepTheirPlaces()
{
    YamlEdit edit("devices:\n  a: {device: x}\n  b: {device: x}\n  c: {device: x}\n");
    const auto cells = cellsOf(edit, {"a", "b", "c"});
    QCOMPARE(errorOf(norvo::ParamEdit::setParams(edit, "a",
                                                 {{"widget/row", "7"}, {"widget/column", "0"}})),
             QString());
    QCOMPARE(errorOf(norvo::keepPlaces(
                 edit, cells, {"a"},
                 [&](const YamlEdit& text) { return norvo::cellsByText(text, cells); })),
             QString());
    QCOMPARE(edit.text(),
             QByteArray("devices:\n  a: {device: x, params: {widget: {row: 7, column: 0}}}\n"
                        "  b: {device: x, params: {widget: {row: 1, column: 0}}}\n"
                        "  c: {device: x, params: {widget: {row: 2, column: 0}}}\n"));
}

NORVO_GUILESS_TEST(tst_PageEdit)
#include "tst_PageEdit.moc"
