// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/PanelFile.h"
#include "TestMain.h"

#include <QtTest>

#include <sys/stat.h>

#include <memory>

using norvo::Diagnostics;
using norvo::PanelDescription;
using norvo::PanelFile;

/// Templates that come from other files.
class tst_Includes : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void templatesOfAnIncludedFileAreAtHand();
    void namesAreRelativeToTheFileThatIncludes();
    void fileThatTwoIncludeIsReadOnce();
    void errorsStandInTheIncludedFile();
    void errorsOfAUseNameTheFileOfTheTemplate();
    void useInAnIncludedFileIsNamedWithIt();
    void sameTemplateInTwoFilesIsAnError();
    void fileThatCannotBeReadIsAnErrorOfTheInclude_data();
    void fileThatCannotBeReadIsAnErrorOfTheInclude();
    void eachMissingFileIsAnError();
    void fileThatIncludesItselfIsAnError();
    void includedFilesMayReachTheLimits();
    void fileThatIsTooMuchLeavesRoomForOthers();
    void includesAreBounded();
    void form_data();
    void form();

private:
    void write(const QString& name, const QByteArray& text);
    PanelDescription read(const QString& name = "panel.yaml");
    QString errors(const QString& name = "panel.yaml");

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Diagnostics> m_diagnostics;
};

void tst_Includes::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_Includes::write(const QString& name, const QByteArray& text)
{
    const QString path = m_folder->filePath(name);
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), qint64(text.size()));
}

PanelDescription tst_Includes::read(const QString& name)
{
    m_diagnostics = std::make_unique<Diagnostics>(m_folder->filePath(name));
    return PanelFile::read(m_folder->filePath(name), *m_diagnostics);
}

/// The errors and warnings in a line each, without the folder.
QString tst_Includes::errors(const QString& name)
{
    read(name);
    QStringList lines;
    for (const auto& one : m_diagnostics->sorted()) {
        lines += one.toString().remove(m_folder->path() + '/');
    }
    return lines.join('\n');
}

void tst_Includes::templatesOfAnIncludedFileAreAtHand()
{
    write("pumps.yaml", "templates: {pump: {devices: {motor: {device: button}}}}\n");
    write("panel.yaml", "include: [pumps.yaml]\ndevices: {p1: {use: pump}}\n");
    const PanelDescription panel = read();
    QVERIFY(m_diagnostics->isEmpty());
    QCOMPARE(panel.devices.size(), 1);
    QCOMPARE(panel.devices[0].id.text, QString("p1-motor"));
    QCOMPARE(panel.devices[0].id.place.origin->file, m_folder->filePath("pumps.yaml"));
}

void tst_Includes::namesAreRelativeToTheFileThatIncludes()
{
    write("lib/pumps.yaml", "include: [parts/lamps.yaml]\n");
    write("lib/parts/lamps.yaml", "include: ['" + m_folder->filePath("x.yaml").toUtf8() + "']\n");
    write("x.yaml", "templates: {lamp: {devices: {on: {device: indicator}}}}\n");
    write("panel.yaml", "include: [lib/pumps.yaml]\ndevices: {l: {use: lamp}}\n");
    QCOMPARE(read().devices.size(), 1);
    QVERIFY(m_diagnostics->isEmpty());

    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_folder->path()));
    Diagnostics diagnostics("panel.yaml");
    const PanelDescription panel = PanelFile::read("panel.yaml", diagnostics);
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(diagnostics.isEmpty());
    QCOMPARE(panel.devices.size(), 1);
}

void tst_Includes::fileThatTwoIncludeIsReadOnce()
{
    write("a.yaml", "include: [c.yaml]\n");
    write("b.yaml", "include: [./c.yaml]\n");
    write("c.yaml", "templates: {t: {devices: {x: {device: y}}}}\n");
    write("panel.yaml", "include: [a.yaml, b.yaml, c.yaml]\ndevices: {u: {use: t}}\n");
    QCOMPARE(errors(), QString());
}

void tst_Includes::errorsStandInTheIncludedFile()
{
    write("a.yaml", "templates:\n  t: {devices: {x: {device: y, params: {p: $(q)}}}}\n"
                    "title: x\n<<: {}\n");
    write("b.yaml", "templates: {\n");
    write("panel.yaml", "include: [a.yaml, b.yaml]\ntitel: x\n");
    QCOMPARE(errors(),
             QString("panel.yaml:2:1: error: unknown key \"titel\"; did you mean \"title\"?\n"
                     "a.yaml:2:44: error: the template \"t\" has no placeholder \"q\"; \"with\" in "
                     "the template declares them; \"$$(\" stands for the text \"$(\"\n"
                     "a.yaml:3:1: error: unknown key \"title\" of an included file; an included "
                     "file has templates and include\n"
                     "a.yaml:4:1: error: \"<<\" merges nothing here; give the alias as the value "
                     "itself\n"
                     "b.yaml:1:12: error: broken YAML: the map that opens here is not closed; "
                     "\"}\" is missing before line 2, column 1"));
}

void tst_Includes::errorsOfAUseNameTheFileOfTheTemplate()
{
    write("a.yaml", "templates:\n  t: {devices: {x: {}}, connections: ['a.b c.d']}\n");
    write("panel.yaml", "include: [a.yaml]\ndevices:\n  u: {use: t}\n  v: {use: t}\n");
    QCOMPARE(errors(),
             QString("a.yaml:2:17: error: the device \"u-x\" has no type; add \"device: TYPE\" "
                     "[in use u (line 3)]\n"
                     "a.yaml:2:39: error: \"a.b c.d\" holds no \"->\"; write a connection such as "
                     "\"source.signal -> target.slot\" [in use u (line 3)]"));
}

void tst_Includes::useInAnIncludedFileIsNamedWithIt()
{
    write("a.yaml", "templates:\n  o: {devices: {i: {use: i}}}\n  i: {devices: {x: {}}}\n");
    write("panel.yaml", "include: [a.yaml]\ndevices:\n  u: {use: o}\n");
    QCOMPARE(errors(), QString("a.yaml:3:17: error: the device \"u-i-x\" has no type; add "
                               "\"device: TYPE\" [in use u-i (line 2 of a.yaml), in use u "
                               "(line 3)]"));
}

void tst_Includes::sameTemplateInTwoFilesIsAnError()
{
    write("a.yaml", "templates:\n  t:\n");
    write("panel.yaml", "templates: {t: }\ninclude: [a.yaml]\n");
    QCOMPARE(errors(), QString("a.yaml:2:3: error: the template \"t\" is given twice; it is "
                               "already in panel.yaml, line 1"));
}

void tst_Includes::fileThatCannotBeReadIsAnErrorOfTheInclude_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("missing") << "none.yaml"
                             << "\"none.yaml\" cannot be included: there is no such file";
    QTest::newRow("folder") << "."
                            << "\".\" cannot be included: this is a folder, not a file";
    QTest::newRow("pipe") << "pipe"
                          << "\"pipe\" cannot be included: this is not a regular file";
    QTest::newRow("device") << "/dev/zero"
                            << "\"/dev/zero\" cannot be included: this is not a regular file";
    QTest::newRow("too large") << "large"
                               << "the included files are larger than 4 MiB";
}

void tst_Includes::fileThatCannotBeReadIsAnErrorOfTheInclude()
{
    QFETCH(QString, name);
    QFETCH(QString, expected);
    QCOMPARE(mkfifo(qPrintable(m_folder->filePath("pipe")), 0600), 0);
    write("large", "#" + QByteArray(4 * 1024 * 1024, 'x'));
    write("panel.yaml", "include:\n  - " + name.toUtf8() + "\n");
    QCOMPARE(errors(), "panel.yaml:2:5: error: " + expected);
}

void tst_Includes::eachMissingFileIsAnError()
{
    write("panel.yaml", "include: [one.yaml, two.yaml]\n");
    QCOMPARE(errors(), QString("panel.yaml:1:11: error: \"one.yaml\" cannot be included: there is "
                               "no such file\n"
                               "panel.yaml:1:21: error: \"two.yaml\" cannot be included: there is "
                               "no such file"));
}

void tst_Includes::fileThatIncludesItselfIsAnError()
{
    write("panel.yaml", "include: [a.yaml]\n");
    write("a.yaml", "include: [b.yaml]\n");
    write("b.yaml", "include: [b.yaml, ./a.yaml]\n");
    QCOMPARE(errors(), QString("b.yaml:1:11: error: this file includes itself: b.yaml -> b.yaml\n"
                               "b.yaml:1:19: error: this file includes itself: a.yaml -> b.yaml -> "
                               "./a.yaml"));
    write("b.yaml", "include: [panel.yaml]\n");
    QCOMPARE(errors(), QString("b.yaml:1:11: error: this file includes itself: panel.yaml -> "
                               "a.yaml -> b.yaml -> panel.yaml"));
    // What was read before and is done is no part of the chain.
    write("b.yaml", "templates:\n");
    write("c.yaml", "include: [c.yaml]\n");
    write("panel.yaml", "include: [a.yaml, c.yaml]\n");
    QCOMPARE(errors(), QString("c.yaml:1:11: error: this file includes itself: c.yaml -> c.yaml"));
}

void tst_Includes::includedFilesMayReachTheLimits()
{
    // The file, its templates, the template and its list are values, too.
    const auto values = [](const char* name, int count) {
        return QByteArray("templates: {") + name + ": {devices: [" +
               QByteArray("a,").repeated(count - 4) + "]}}\n";
    };
    write("a.yaml", values("t", 60000));
    write("b.yaml", values("u", 40000));
    write("panel.yaml", "include: [a.yaml, b.yaml]\n");
    QCOMPARE(errors(), QString());

    const QByteArray start = "templates:\n#";
    const QByteArray half = start + QByteArray(2 * 1024 * 1024 - start.size(), 'x');
    write("a.yaml", half);
    write("b.yaml", half);
    QCOMPARE(errors(), QString());
    write("b.yaml", half + 'x');
    QCOMPARE(errors(), QString("panel.yaml:1:19: error: the included files are larger than 4 MiB"));
}

void tst_Includes::fileThatIsTooMuchLeavesRoomForOthers()
{
    const QByteArray large = "templates:\n#" + QByteArray(3 * 1024 * 1024, 'x') + "\n";
    write("a.yaml", large);
    write("b.yaml", large);
    write("c.yaml", "templates: {t: {devices: {x: {device: y}}}}\n");
    write("panel.yaml", "include: [a.yaml, b.yaml, c.yaml]\ndevices: {u: {use: t}}\n");
    QCOMPARE(errors(), QString("panel.yaml:1:19: error: the included files are larger than 4 MiB"));
}

void tst_Includes::includesAreBounded()
{
    QByteArray panel = "include:\n";
    for (int i = 1; i <= 101; ++i) {
        const QByteArray name = QByteArray::number(i) + ".yaml";
        write(name, "templates: {}\n");
        panel += "  - " + name + '\n';
    }
    write("panel.yaml", panel);
    QCOMPARE(errors(), QString("panel.yaml:102:5: error: a panel includes 100 files at most"));

    const QByteArray values = "templates: {t: {devices: [" + QByteArray("a,").repeated(60000);
    write("a.yaml", values + "]}}\n");
    write("b.yaml", values + "]}, u: }\n");
    write("panel.yaml", "include: [a.yaml, b.yaml]\n");
    QCOMPARE(errors(), QString("panel.yaml:1:19: error: the included files hold more than 100,000 "
                               "values"));

    const QByteArray half = "templates: {}\n#" + QByteArray(3 * 1024 * 1024, 'x') + "\n";
    write("a.yaml", half);
    write("b.yaml", half);
    QCOMPARE(errors(), QString("panel.yaml:1:19: error: the included files are larger than 4 MiB"));
}

void tst_Includes::form_data()
{
    QTest::addColumn<QByteArray>("panel");
    QTest::addColumn<QByteArray>("included");
    QTest::addColumn<QString>("expected");
    const QByteArray panel = "include: [a.yaml]\n";
    QTest::newRow("text") << QByteArray("include: a.yaml\n") << QByteArray()
                          << "panel.yaml:1:10: error: include must be a list of files, such as "
                             "[pumps.yaml]";
    QTest::newRow("map") << QByteArray("include: [{a: b}, '']\n") << QByteArray()
                         << "panel.yaml:1:11: error: the name of a file must be a text\n"
                            "panel.yaml:1:19: error: the name of a file must be a text";
    QTest::newRow("empty file") << panel << QByteArray()
                                << "a.yaml:1:1: error: an included file is a map with the keys "
                                   "templates and include";
    QTest::newRow("list in the file") << panel << QByteArray("\n- a\n")
                                      << "a.yaml:2:1: error: an included file is a map with the "
                                         "keys templates and include";
    QTest::newRow("devices") << panel << QByteArray("devices: {a: {device: b}}\n")
                             << "a.yaml:1:1: error: unknown key \"devices\" of an included file; "
                                "an included file has templates and include";
}

void tst_Includes::form()
{
    QFETCH(QByteArray, panel);
    QFETCH(QByteArray, included);
    write("panel.yaml", panel);
    write("a.yaml", included);
    QTEST(errors(), "expected");
}

NORVO_GUILESS_TEST(tst_Includes)
#include "tst_Includes.moc"
