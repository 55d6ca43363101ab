// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/DeviceEdit.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Cells;
using norvo::YamlEdit;
namespace DeviceEdit = norvo::DeviceEdit;

namespace {

QString errorOf(const YamlEdit::Error& error)
{
    return error ? error->text : QString();
}

Cells at(int row, int column, const QString& area = {}, int rowspan = 1, int colspan = 1)
{
    Cells cells;
    cells.area = area;
    cells.row = row;
    cells.column = column;
    cells.rowspan = rowspan;
    cells.colspan = colspan;
    return cells;
}

} // namespace

class tst_DeviceEdit : public QObject
{
    Q_OBJECT

private slots:
    void idIsTheFirstThatIsFree();
    void newDeviceIsWrittenAsItsNeighbours_data();
    void newDeviceIsWrittenAsItsNeighbours();
    void idInUseOrNoneIsRefused();
    void removedDeviceTakesAllThatNamesIt_data();
    void removedDeviceTakesAllThatNamesIt();
    void renamedDeviceIsFollowedEverywhere();
    void sharedValueIsRefused();
    void placeWritesWhatDiffers_data();
    void placeWritesWhatDiffers();
    void keyStandsBehindTheType();
    void copyHasTheDevicesAndWhatIsAmongThem();
    void pastedDevicesHaveFreeIdsInTheirConnectionsToo();
    void pastedDevicesGoToThePageAndMove();
    void connectionToAnotherDeviceIsNotPasted();
    void whatCannotBePastedChangesNothing_data();
    void whatCannotBePastedChangesNothing();
};

void tst_DeviceEdit::idIsTheFirstThatIsFree()
{
    const YamlEdit edit("devices: {lamp: {device: x}, lamp2: {device: x}, p: {use: t}}\n");
    QCOMPARE(DeviceEdit::freeId(edit, "button"), QString("button"));
    QCOMPARE(DeviceEdit::freeId(edit, "lamp"), QString("lamp3"));
    QCOMPARE(DeviceEdit::freeId(edit, "lamp2"), QString("lamp3"));
    QCOMPARE(DeviceEdit::freeId(edit, "p-start"), QString("start"));
    QCOMPARE(DeviceEdit::freeId(edit, "a b"), QString("a_b"));
    QCOMPARE(DeviceEdit::freeId(edit, ""), QString("device"));
}

void tst_DeviceEdit::newDeviceIsWrittenAsItsNeighbours_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char* name, const QByteArray& before, const QString& after,
                        const QByteArray& expected) {
        QTest::newRow(name) << before << after << expected;
    };
    const QByteArray written =
        "  go: {device: button, params: {text: Go, widget: {row: 1, column: 0}}}\n";
    row("empty file", "", {}, "devices:\n" + written);
    row("only a comment", "# Mine.\n", {}, "# Mine.\ndevices:\n" + written);
    row("title only", "title: Mine\n", {}, "title: Mine\ndevices:\n" + written);
    row("without line end", "title: Mine", {},
        "title: Mine\ndevices:\n" + written.trimmed().prepend("  "));
    row("devices with nothing behind", "devices:\n", {}, "devices:\n" + written);
    row("empty devices", "devices: {} # None.\n", {}, "devices: # None.\n" + written);
    row("between the keys", "title: Mine\ntheme: dark\nconnections:\n  - a.b -> c.d\n", {},
        "title: Mine\ntheme: dark\ndevices:\n" + written + "connections:\n  - a.b -> c.d\n");
    row("flow", "devices:\n  a: {device: x}\n", {}, "devices:\n  a: {device: x}\n" + written);
    row("behind another", "devices:\n  a: {device: x} # A.\n\n  b: {device: x}\n", "a",
        "devices:\n  a: {device: x} # A.\n" + written + "\n  b: {device: x}\n");
    row("blocks", "devices:\n    a:\n        device: x\n        params: {text: 1}\n", {},
        "devices:\n    a:\n        device: x\n        params: {text: 1}\n    go:\n        device: "
        "button\n"
        "        params: {text: Go, widget: {row: 1, column: 0}}\n");
    row("joined", "devices:\n  a:\n    device: x\n    params:\n      widget/row: 1\n", {},
        "devices:\n  a:\n    device: x\n    params:\n      widget/row: 1\n"
        "  go:\n    device: button\n    params:\n      text: Go\n      widget/row: 1\n"
        "      widget/column: 0\n");
    row("all in brackets", "{devices: {a: {device: x}}}\n", {},
        "{devices: {a: {device: x}, go: {device: button, params: {text: Go, widget: {row: 1, "
        "column: 0}}}}}\n");
    row("in quotes", "{\n  \"devices\": {\n    \"a\": {\"device\": \"x\"}\n  }\n}\n", {},
        "{\n  \"devices\": {\n    \"a\": {\"device\": \"x\"},\n    \"go\": {\"device\": "
        "\"button\", "
        "\"params\": {\"text\": \"Go\", \"widget\": {\"row\": 1, \"column\": 0}}}\n  }\n}\n");
}

void tst_DeviceEdit::newDeviceIsWrittenAsItsNeighbours()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, after);
    YamlEdit edit(before);
    const norvo::NewDevice device{
        "go", "button", {{"text", "Go"}, {"widget/row", "1"}, {"widget/column", "0"}}};
    QCOMPARE(errorOf(DeviceEdit::add(edit, device, after.isEmpty() ? QString() : after)),
             QString());
    QTEST(edit.text(), "expected");
}

void tst_DeviceEdit::idInUseOrNoneIsRefused()
{
    const QByteArray text("devices: {a: {device: x}, p: {use: t}}\n");
    YamlEdit edit(text);
    QCOMPARE(errorOf(DeviceEdit::add(edit, {"a", "x", {}})), QString("the id \"a\" is in use"));
    QCOMPARE(errorOf(DeviceEdit::add(edit, {"p-x", "x", {}})), QString("the id \"p-x\" is in use"));
    QCOMPARE(errorOf(DeviceEdit::rename(edit, "a", "p")), QString("the id \"p\" is in use"));
    QCOMPARE(errorOf(DeviceEdit::rename(edit, "a", "")), QString("a device needs an id"));
    QVERIFY(errorOf(DeviceEdit::rename(edit, "a", "a b")).contains("may hold"));
    QVERIFY(errorOf(DeviceEdit::rename(edit, "b", "c")).startsWith("there is no device \"b\""));
    QVERIFY(errorOf(DeviceEdit::remove(edit, "b")).startsWith("there is no device \"b\""));
    QVERIFY(errorOf(DeviceEdit::place(edit, "b", {})).startsWith("there is no device \"b\""));
    QCOMPARE(edit.text(), text);
}

void tst_DeviceEdit::removedDeviceTakesAllThatNamesIt_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("its connections and alarms, comments of others stay")
        << QByteArray("devices:\n  a: {device: x} # A.\n  # B follows.\n  b: {device: x}\n"
                      "  ab: {device: x}\nconnections:\n  - a.o -> b.i # One.\n  # Two.\n"
                      "  - b.o -> ab.i\n  - ab.o(int) ->  a . i\nalarms:\n"
                      "  - signal: a.o\n    above: 1\n  - {signal: ab.o, above: 1}\n"
                      "history: {signals: [a.o, ab.o]}\n")
        << QByteArray("devices:\n  # B follows.\n  b: {device: x}\n"
                      "  ab: {device: x}\nconnections:\n  # Two.\n  - b.o -> ab.i\nalarms:\n"
                      "  - {signal: ab.o, above: 1}\nhistory: {signals: [ab.o]}\n");
    QTest::newRow("lists that become empty go")
        << QByteArray("devices:\n  a: {device: x}\n  b: {device: x}\nconnections:\n"
                      "  - a.o -> b.i\nalarms: [{signal: a.o, above: 1}]\n"
                      "history:\n  signals:\n    a.o: {every: 1 s}\n  keep: 1 d\ntheme: dark\n")
        << QByteArray("devices:\n  b: {device: x}\ntheme: dark\n");
    QTest::newRow("the last device") << QByteArray("title: x\ndevices:\n  a: {device: x}\n")
                                     << QByteArray("title: x\ndevices: {}\n");
    QTest::newRow("a use with what it has made")
        << QByteArray(
               "devices:\n  a: {use: t}\n  a-c: {device: x}\n  b: {device: x}\nconnections:\n"
               "  - a-b.o -> b.i\n  - a-c.o -> b.i\n")
        << QByteArray("devices:\n  a-c: {device: x}\n  b: {device: x}\nconnections:\n"
                      "  - a-c.o -> b.i\n");
    QTest::newRow("not what a template names")
        << QByteArray(
               "templates:\n  t:\n    devices: {a: {device: x}}\n    connections: [a.o -> a.i]\n"
               "devices:\n  a: {device: x}\n  b: {use: t}\n")
        << QByteArray(
               "templates:\n  t:\n    devices: {a: {device: x}}\n    connections: [a.o -> a.i]\n"
               "devices:\n  b: {use: t}\n");
}

void tst_DeviceEdit::removedDeviceTakesAllThatNamesIt()
{
    QFETCH(QByteArray, before);
    YamlEdit edit(before);
    QCOMPARE(errorOf(DeviceEdit::remove(edit, "a")), QString());
    QTEST(edit.text(), "expected");
}

void tst_DeviceEdit::renamedDeviceIsFollowedEverywhere()
{
    YamlEdit edit(
        "templates: {t: {devices: {a: {device: x}}, connections: [a.o -> a.i]}}\n"
        "devices:\n  \"a\": {device: x} # A.\n  u: {use: t}\n  ab: {device: a}\n"
        "connections:\n  - a.o ->a.i # Both.\n  - 'ab.o -> a .i(int)'\n  - u-a.o -> ab.i\n"
        "alarms:\n  - {signal: a.o, above: 1, text: a.o}\n"
        "history:\n  signals:\n    a.o: {every: 1 s}\n    ab.o:\n");
    QCOMPARE(errorOf(DeviceEdit::rename(edit, "a", "pump")), QString());
    QCOMPARE(edit.text(),
             QByteArray("templates: {t: {devices: {a: {device: x}}, connections: [a.o -> a.i]}}\n"
                        "devices:\n  \"pump\": {device: x} # A.\n  u: {use: t}\n  ab: {device: a}\n"
                        "connections:\n  - pump.o ->pump.i # Both.\n  - 'ab.o -> pump .i(int)'\n"
                        "  - u-a.o -> ab.i\n"
                        "alarms:\n  - {signal: pump.o, above: 1, text: a.o}\n"
                        "history:\n  signals:\n    pump.o: {every: 1 s}\n    ab.o:\n"));
    QCOMPARE(errorOf(DeviceEdit::rename(edit, "u", "v")), QString());
    QVERIFY(edit.text().contains("  v: {use: t}\n"));
    QVERIFY(edit.text().contains("- v-a.o -> ab.i\n"));
}

void tst_DeviceEdit::sharedValueIsRefused()
{
    const QByteArray text("devices:\n  a: {device: x, params: {widget: &w {row: 1}}}\n"
                          "  b: {device: x, params: {widget: *w}}\n");
    YamlEdit edit(text);
    QVERIFY(errorOf(DeviceEdit::place(edit, "b", at(2, 0))).contains("alias"));
    QVERIFY(errorOf(DeviceEdit::place(edit, "a", at(2, 0))).contains("alias"));
    QVERIFY(errorOf(DeviceEdit::remove(edit, "a")).contains("alias"));
    QCOMPARE(edit.text(), text);
    QCOMPARE(errorOf(DeviceEdit::remove(edit, "b")), QString());
}

void tst_DeviceEdit::placeWritesWhatDiffers_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QVariantList>("cells");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](const char* name, const QByteArray& before, const QVariantList& cells,
                        const QByteArray& expected) {
        QTest::newRow(name) << "devices:\n" + before << cells << "devices:\n" + expected;
    };
    row("nothing", "  a: {device: x, params: {widget: {row: 1, column: 0}}}\n", {1, 0},
        "  a: {device: x, params: {widget: {row: 1, column: 0}}}\n");
    row("row", "  a: {device: x, params: {widget: {row: 1, column: 0}}}\n", {2, 0},
        "  a: {device: x, params: {widget: {row: 2, column: 0}}}\n");
    row("spans beside their position",
        "  a:\n    device: x\n    params:\n      widget: {row: 1, column: 0, units: A}\n",
        {1, 0, "", 2, 3},
        "  a:\n    device: x\n    params:\n      widget: {row: 1, column: 0, rowspan: 2, colspan: "
        "3, "
        "units: A}\n");
    row("span of one", "  a: {device: x, params: {widget: {row: 1, column: 0, colspan: 2}}}\n",
        {1, 0}, "  a: {device: x, params: {widget: {row: 1, column: 0}}}\n");
    row("none before", "  a: {device: x}\n", {1, 0},
        "  a: {device: x, params: {widget: {row: 1, column: 0}}}\n");
    row("joined", "  a: {device: x, params: {widget/column: 3}}\n", {1, 0},
        "  a: {device: x, params: {widget/column: 0, widget/row: 1}}\n");
    row("another page",
        "  a: {device: x, params: {widget: {row: 1, column: 0}}}\n"
        "  b: {device: x, params: {widget/area: B}}\n",
        {1, 0, "C"},
        "  a: {device: x, params: {widget: {row: 1, column: 0, area: C}}}\n"
        "  b: {device: x, params: {widget/area: B}}\n");
    row("first page, which others name",
        "  b: {device: x, params: {widget/area: B}}\n"
        "  a: {device: x, params: {widget/area: C}}\n",
        {-1, -1, "B"},
        "  b: {device: x, params: {widget/area: B}}\n"
        "  a: {device: x, params: {widget/area: B}}\n");
    row("first page, which no other names",
        "  a: {device: x, params: {widget: {area: C}}}\n  b: {device: x, params: {widget/area: "
        "C}}\n"
        "pages: [B, C]\n",
        {-1, -1, "B"},
        "  a: {device: x}\n  b: {device: x, params: {widget/area: C}}\npages: [B, C]\n");
}

void tst_DeviceEdit::placeWritesWhatDiffers()
{
    QFETCH(QByteArray, before);
    QFETCH(QVariantList, cells);
    YamlEdit edit(before);
    const Cells wanted = at(cells[0].toInt(), cells[1].toInt(), cells.value(2).toString(),
                            cells.value(3, 1).toInt(), cells.value(4, 1).toInt());
    QCOMPARE(errorOf(DeviceEdit::place(edit, "a", wanted)), QString());
    QTEST(edit.text(), "expected");
}

void tst_DeviceEdit::keyStandsBehindTheType()
{
    YamlEdit edit("devices:\n  a:\n    device: x\n    params: {text: 1}\n");
    QCOMPARE(errorOf(DeviceEdit::setKey(edit, "a", "keep", "false")), QString());
    QCOMPARE(edit.text(),
             QByteArray("devices:\n  a:\n    device: x\n    keep: false\n    params: {text: 1}\n"));
    QCOMPARE(errorOf(DeviceEdit::setKey(edit, "a", "keep", "send")), QString());
    QCOMPARE(edit.text(),
             QByteArray("devices:\n  a:\n    device: x\n    keep: send\n    params: {text: 1}\n"));
    QCOMPARE(errorOf(DeviceEdit::setKey(edit, "a", "keep", "")), QString());
    QCOMPARE(errorOf(DeviceEdit::setKey(edit, "a", "keep", "")), QString());
    QCOMPARE(edit.text(), QByteArray("devices:\n  a:\n    device: x\n    params: {text: 1}\n"));
}

void tst_DeviceEdit::copyHasTheDevicesAndWhatIsAmongThem()
{
    const YamlEdit edit("title: Mine\n"
                        "devices:\n"
                        "  a: {device: x} # First.\n"
                        "  b: {device: y, params: {text: 'no', widget: {row: 1}}}\n"
                        "  c: {device: z}\n"
                        "connections:\n"
                        "  - a.x -> b.y\n"
                        "  - b.y -> c.z\n"
                        "alarms:\n"
                        "  - {on: a.x}\n");
    QCOMPARE(DeviceEdit::copy(edit, {"b", "a"}),
             QByteArray("devices:\n"
                        "  a: {device: x}\n"
                        "  b: {device: y, params: {text: no, widget: {row: 1}}}\n"
                        "connections:\n"
                        "  - a.x -> b.y\n"));
}

void tst_DeviceEdit::pastedDevicesHaveFreeIdsInTheirConnectionsToo()
{
    YamlEdit edit("devices:\n  a: {device: x}\n  b2: {device: x}\n");
    DeviceEdit::NewIds ids;
    QCOMPARE(errorOf(DeviceEdit::paste(edit,
                                       "devices:\n  a: {device: x}\n  b: {device: y}\n"
                                       "connections:\n  - a.out(double) -> b.in(double)\n",
                                       at(0, 0), ids)),
             QString());
    const DeviceEdit::NewIds expected{{"a", "a2"}, {"b", "b"}};
    QCOMPARE(ids, expected);
    QCOMPARE(edit.text(), QByteArray("devices:\n"
                                     "  a: {device: x}\n"
                                     "  b2: {device: x}\n"
                                     "  a2: {device: x}\n"
                                     "  b: {device: y}\n"
                                     "connections:\n"
                                     "  - a2.out(double) -> b.in(double)\n"));
}

void tst_DeviceEdit::pastedDevicesGoToThePageAndMove()
{
    YamlEdit edit("pages: [One, Two]\ndevices:\n  a: {device: x}\n");
    DeviceEdit::NewIds ids;
    const QByteArray copied = "devices:\n"
                              "  b: {device: y, params: {text: 1.0, widget: {row: 1, column: 0}}}\n"
                              "  c: {device: y}\n";
    QCOMPARE(errorOf(DeviceEdit::paste(edit, copied, at(2, 1, "Two"), ids)), QString());
    QCOMPARE(
        edit.text(),
        QByteArray("pages: [One, Two]\n"
                   "devices:\n"
                   "  a: {device: x}\n"
                   "  b: {device: y, params: {text: 1.0, widget: {row: 3, column: 1, area: Two}}}\n"
                   "  c: {device: y, params: {widget: {area: Two}}}\n"));
}

/// Though this file has one of that name.
void tst_DeviceEdit::connectionToAnotherDeviceIsNotPasted()
{
    YamlEdit edit("devices:\n  pump: {device: x}\n");
    DeviceEdit::NewIds ids;
    QCOMPARE(errorOf(DeviceEdit::paste(edit,
                                       "devices:\n  a: {device: x}\n"
                                       "connections:\n  - a.x -> pump.start\n  - pump.y -> a.y\n"
                                       "  - a.x -> a.y\n",
                                       at(0, 0), ids)),
             QString());
    QCOMPARE(edit.text(), QByteArray("devices:\n"
                                     "  pump: {device: x}\n"
                                     "  a: {device: x}\n"
                                     "connections:\n"
                                     "  - a.x -> a.y\n"));
}

void tst_DeviceEdit::whatCannotBePastedChangesNothing_data()
{
    QTest::addColumn<QByteArray>("copied");
    QTest::newRow("no YAML") << QByteArray("devices: {a: [}");
    QTest::newRow("no devices") << QByteArray("title: Mine\n");
    QTest::newRow("a text for devices") << QByteArray("devices: many\n");
}

void tst_DeviceEdit::whatCannotBePastedChangesNothing()
{
    QFETCH(QByteArray, copied);
    const QByteArray before = "devices:\n  a: {device: x}\n";
    YamlEdit edit(before);
    DeviceEdit::NewIds ids{{"as", "before"}};
    QVERIFY(!errorOf(DeviceEdit::paste(edit, copied, at(0, 0), ids)).isEmpty());
    QCOMPARE(edit.text(), before);
    QCOMPARE(ids.size(), 1);
}

NORVO_GUILESS_TEST(tst_DeviceEdit)
#include "tst_DeviceEdit.moc"
