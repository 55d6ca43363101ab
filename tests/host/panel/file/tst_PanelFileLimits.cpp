// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/PanelFile.h"

#include "Effort.h"
#include "PanelTexts.h"
#include "TestMain.h"

#include <QtTest>

#include <unistd.h>

using norvo::Diagnostics;
using norvo::PanelFile;
using panels::errorsOf;

namespace {

constexpr int kSizeLimit = 4 * 1024 * 1024;
constexpr int kMaxValues = 100000;

QString readErrorsOf(const QString& file)
{
    Diagnostics diagnostics(file);
    const auto panel = PanelFile::read(file, diagnostics);
    const auto all = diagnostics.sorted();
    return panel.file == file && all.size() == 1 ? all.first().toString() : QString();
}

void write(const QString& name, const QByteArray& content)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), qint64(content.size()));
}

/// A panel of that many values: five of its own, and parameters.
QByteArray ofValues(int count)
{
    QByteArray text = "devices:\n  a:\n    device: x\n    params:\n";
    for (int i = 5; i < count; ++i) {
        text += "      p" + QByteArray::number(i) + ": 1\n";
    }
    return text;
}

QByteArray ofDevices(int count)
{
    QByteArray text = "devices:\n";
    for (int i = 0; i < count; ++i) {
        text += "  d" + QByteArray::number(i) + ": {device: x}\n";
    }
    return text;
}

} // namespace

class tst_PanelFileLimits : public QObject
{
    Q_OBJECT

private slots:
    void fileThatCannotBeRead();
    void sizeLimit();
    void depthLimit_data();
    void depthLimit();
    void manyOpenBracketsDoNotOverflowTheStack_data();
    void manyOpenBracketsDoNotOverflowTheStack();
    void bracketsInTextsAreNoLevels();
    void aliasesCountInTheDepth();
    void valueLimit();
    void valuesThatAreLeftOutCount();
    void deviceLimit();
    void connectionLimit();
    void keysAreNoValues();
    void aliasBombsAreRefusedUnexpanded();
    void aliasOfAnOpenValueIsRefused();
    void longKeysAndNames();
    void longConnection();
    void longTextsAreShortenedInErrors();
};

void tst_PanelFileLimits::fileThatCannotBeRead()
{
    QTemporaryDir folder;
    const QString missing = folder.filePath("missing.yaml");
    QCOMPARE(readErrorsOf(missing), missing + ": error: there is no such file");
    QCOMPARE(readErrorsOf(folder.path()), folder.path() + ": error: this is a folder, not a file");
    QCOMPARE(readErrorsOf("/dev/null"), QString("/dev/null: error: this is not a regular file"));
    const QString unreadable = "/proc/self/mem";
    QCOMPARE(readErrorsOf(unreadable),
             unreadable + ": error: the file cannot be read: Input/output error");
    if (geteuid() != 0) { // To whom nothing is forbidden.
        const QString forbidden = folder.filePath("forbidden.yaml");
        write(forbidden, "title: x\n");
        QVERIFY(QFile::setPermissions(forbidden, QFileDevice::WriteOwner));
        QCOMPARE(readErrorsOf(forbidden),
                 forbidden + ": error: the file cannot be read: Permission denied");
    }
}

void tst_PanelFileLimits::sizeLimit()
{
    QTemporaryDir folder;
    const QString file = folder.filePath("panel.yaml");
    QByteArray text = "title: x\n#";
    text += QByteArray(kSizeLimit - text.size(), 'x');
    write(file, text);
    Diagnostics diagnostics("panel.yaml");
    QCOMPARE(PanelFile::read(file, diagnostics).title.text, QString("x"));
    QVERIFY(diagnostics.isEmpty());

    const QString expected = ": error: the file is larger than 4 MiB";
    write(file, text + 'x');
    QCOMPARE(readErrorsOf(file), file + expected);
    QCOMPARE(panels::errorsOf(text + 'x'), expected.mid(1));
}

void tst_PanelFileLimits::depthLimit_data()
{
    QTest::addColumn<QByteArray>("opening");
    QTest::addColumn<QByteArray>("closing");
    QTest::addColumn<int>("column"); // Of the level beyond the last one, without the opening key.
    QTest::newRow("lists") << QByteArray("[") << QByteArray("]") << 64;
    QTest::newRow("maps in braces") << QByteArray("{a: ") << QByteArray("}") << 4 * 63 + 1;
    QTest::newRow("lists of dashes") << QByteArray("- ") << QByteArray() << 2 * 63 + 1;
    QTest::newRow("maps as keys") << QByteArray("? ") << QByteArray() << 2 * 63 + 1;
}

void tst_PanelFileLimits::depthLimit()
{
    QFETCH(QByteArray, opening);
    QFETCH(QByteArray, closing);
    QFETCH(int, column);
    const auto text = [&](int levels) { // Together with the outer map.
        return "x:\n  " + opening.repeated(levels - 1) + "a" + closing.repeated(levels - 1);
    };
    const QString error = QString("2:%1: error: nested deeper than 64 levels").arg(column + 2);
    QVERIFY(!errorsOf(text(64)).contains("nested"));
    QCOMPARE(errorsOf(text(65)), error);
    QCOMPARE(errorsOf(text(500)), error);
}

void tst_PanelFileLimits::manyOpenBracketsDoNotOverflowTheStack_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");
    const QString deep = ": error: nested deeper than 64 levels";
    QTest::newRow("[") << QByteArray(100000, '[') << "1:65" + deep;
    QTest::newRow("{") << QByteArray(100000, '{') << "1:65" + deep;
    QTest::newRow("[{") << QByteArray("[{").repeated(50000) << "1:65" + deep;
    QTest::newRow("[ a line each") << QByteArray("[\n").repeated(100000) << "65:1" + deep;
    QTest::newRow("- ") << QByteArray("- ").repeated(100000) << "1:129" + deep;
    QTest::newRow("? ") << QByteArray("? ").repeated(100000) << "1:129" + deep;
    QTest::newRow("closed") << QByteArray(100000, '[') + QByteArray(100000, ']') << "1:65" + deep;
}

void tst_PanelFileLimits::manyOpenBracketsDoNotOverflowTheStack()
{
    QFETCH(QByteArray, text);
    QTEST(errorsOf(text), "expected");
}

void tst_PanelFileLimits::bracketsInTextsAreNoLevels()
{
    const QByteArray many = QByteArray("[{").repeated(50000);
    QCOMPARE(errorsOf("title: \"" + many + "\""), QString());
    QCOMPARE(errorsOf("title: '" + many + "'"), QString());
    QCOMPARE(errorsOf("title: x" + many), QString());
    QCOMPARE(errorsOf("title: |\n  " + many), QString());
    QCOMPARE(errorsOf("title: x # " + many), QString());
}

void tst_PanelFileLimits::aliasesCountInTheDepth()
{
    const auto text = [](int outer, int inner) {
        return "x: &x " + QByteArray(inner, '[') + QByteArray(inner, ']') +
               "\ny: " + QByteArray(outer, '[') + "*x" + QByteArray(outer, ']') + "\n";
    };
    QVERIFY(!errorsOf(text(33, 30)).contains("nested"));
    QCOMPARE(errorsOf(text(34, 30)),
             QString("2:38: error: nested deeper than 64 levels once this alias is followed"));
    QVERIFY(!errorsOf(text(0, 63)).contains("nested"));
}

void tst_PanelFileLimits::valueLimit()
{
    QCOMPARE(errorsOf(ofValues(kMaxValues)), QString());
    QCOMPARE(errorsOf(ofValues(kMaxValues + 1)),
             QString("100000:16: error: more than 100,000 values once aliases are followed"));
    // The same through aliases: the list again, and the one that has the anchor.
    const QByteArray twice = "title: &x\n" + QByteArray("- a\n").repeated(49998);
    QCOMPARE(errorsOf(twice + "connections: {x: *x}\n").section('\n', 0, 0),
             QString("2:1: error: the title must be a text"));
    QCOMPARE(errorsOf(twice + "- a\nconnections: {x: *x}\n"),
             QString("50001:18: error: more than 100,000 values once aliases are followed"));
}

void tst_PanelFileLimits::valuesThatAreLeftOutCount()
{
    const auto list = [](int count) { return "x:\n" + QByteArray("-\n").repeated(count); };
    const QString many = "more than 100,000 values";
    QVERIFY(!errorsOf(list(kMaxValues - 2)).contains(many)); // Two: the map and the list.
    QVERIFY(errorsOf(list(kMaxValues - 1)).contains(many));
}

void tst_PanelFileLimits::deviceLimit()
{
    QCOMPARE(errorsOf(ofDevices(5000)), QString());
    QCOMPARE(errorsOf(ofDevices(20000)), QString("5002:3: error: more than 5,000 devices"));
}

void tst_PanelFileLimits::connectionLimit()
{
    const QByteArray connection = "- a.x -> b.y\n";
    QCOMPARE(errorsOf("connections:\n" + connection.repeated(8000)), QString());
    QCOMPARE(errorsOf("connections:\n" + connection.repeated(30000)),
             QString("8002:3: error: more than 8,000 connections"));
}

void tst_PanelFileLimits::keysAreNoValues()
{
    Diagnostics diagnostics("panel.yaml");
    const auto panel = panels::parse(ofValues(kMaxValues), diagnostics);
    QCOMPARE(diagnostics.sorted().size(), 0);
    QCOMPARE(panel.devices.value(0).params.size(), kMaxValues - 5);
}

void tst_PanelFileLimits::aliasBombsAreRefusedUnexpanded()
{
    QByteArray lists = "a0: &a0 [x, x]\n";
    QByteArray maps = "a0: &a0 {x: y}\n";
    QByteArray empty = "a0: &a0 []\n";
    for (int i = 1; i < 60; ++i) {
        const QByteArray name = "a" + QByteArray::number(i);
        const QByteArray last = "*a" + QByteArray::number(i - 1);
        lists += name + ": &" + name + " [" + last + ", " + last + "]\n";
        maps += name + ": &" + name + " {x: " + last + ", y: " + last + "}\n";
        empty += name + ": &" + name + " [" + last + ", " + last + ", " + last + "]\n";
    }
    const QString expected = ": error: more than 100,000 values once aliases are followed";
    const norvo::ProcessorTimer timer;
    QCOMPARE(errorsOf(lists), "15:18" + expected);
    QCOMPARE(errorsOf(maps), "16:15" + expected);
    QCOMPARE(errorsOf(empty), "11:17" + expected);
    QVERIFY(timer.elapsedMs() < 5000);
}

void tst_PanelFileLimits::aliasOfAnOpenValueIsRefused()
{
    const QString expected = ": error: this alias is inside the value that it names";
    QCOMPARE(errorsOf("title: &x [*x]\n"), "1:12" + expected);
    QCOMPARE(errorsOf("title: &x {a: [b, {c: *x}]}\n"), "1:23" + expected);
    QCOMPARE(errorsOf("title: &x {? *x : b}\n"), "1:14" + expected);
    // A name that was given again stands for the latest value that is complete or open.
    QCOMPARE(errorsOf("title: &x a\ndevices: &x {b: *x}\n"), "2:17" + expected);
}

void tst_PanelFileLimits::longKeysAndNames()
{
    const QByteArray k(1000, 'k');
    QVERIFY(errorsOf("? " + k + "\n: x\n").contains("unknown key"));
    QCOMPARE(errorsOf("? " + k + "k\n: x\n"),
             QString("1:3: error: a key has 1000 characters at most"));

    const QByteArray start = "devices: {a: {device: x, params: {";
    QCOMPARE(errorsOf(start + k.left(256) + ": 1}}}"), QString());
    QCOMPARE(errorsOf(start + k.left(257) + ": 1}}}"),
             QString("1:35: error: the name of a parameter has 256 characters at most"));
    QCOMPARE(errorsOf(start + k.left(200) + ": {" + k.left(55) + ": 1}}}}"), QString());
    QCOMPARE(errorsOf(start + k.left(200) + ": {" + k.left(56) + ": 1}}}}"),
             QString("1:238: error: the name of a parameter has 256 characters at most"));
}

void tst_PanelFileLimits::longConnection()
{
    const QByteArray name(992, 'a');
    QCOMPARE(errorsOf("connections:\n- " + name + ".x -> b.y\n").left(60),
             QString("2:3: error: a connection has 1000 characters at most"));
    QCOMPARE(errorsOf("connections:\n- " + name.left(991) + ".x -> b.y\n").left(60), QString());
}

void tst_PanelFileLimits::longTextsAreShortenedInErrors()
{
    const QByteArray text(100000, 'x');
    QCOMPARE(errorsOf("devices: {a: {device: b, network: " + text + "}}"),
             "1:35: error: network must be true or false, not \"" + QString(57, 'x') + "...\"");
}

NORVO_GUILESS_TEST(tst_PanelFileLimits)
#include "tst_PanelFileLimits.moc"
