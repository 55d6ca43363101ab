// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "TestMain.h"

#include "host/editor/templates/TemplateSet.h"

#include <QtTest>

using norvo::PanelTemplate;
using norvo::TemplateSet;

namespace {

const QByteArray kLamp = "devices:\n  lamp: {device: indicator}\n";

void write(const QString& path, const QByteArray& text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        qFatal("%s is not written", qPrintable(path));
    }
}

} // namespace

/// The templates that there are, with folders of the test's own.
class tst_TemplateSet : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void thoseOfTheProgramRunWithoutAWarning_data();
    void thoseOfTheProgramRunWithoutAWarning();
    void foldersAreReadWithTitleAndPurpose();
    void whatIsWrongIsSaid_data();
    void whatIsWrongIsSaid();
    void savedTemplateIsThere();
    void whatCannotBeSavedSaysSo_data();
    void whatCannotBeSavedSaysSo();
    void onlyOwnOnesAreRemoved();

private:
    PanelTemplate only(const QString& folder); ///< Which is in the folder.

    std::unique_ptr<QTemporaryDir> m_data;
    std::unique_ptr<QTemporaryDir> m_panel;
    std::unique_ptr<TemplateSet> m_set;
};

void tst_TemplateSet::init()
{
    m_data = std::make_unique<QTemporaryDir>();
    m_panel = std::make_unique<QTemporaryDir>();
    qputenv("XDG_DATA_HOME", m_data->path().toUtf8());
    m_set = std::make_unique<TemplateSet>(EditedPanel::types(), m_panel->filePath("panel.yaml"));
    m_set->read();
}

PanelTemplate tst_TemplateSet::only(const QString& folder)
{
    m_set->read();
    for (const PanelTemplate& one : m_set->all()) {
        if (one.file.startsWith(folder)) {
            return one;
        }
    }
    return {};
}

void tst_TemplateSet::thoseOfTheProgramRunWithoutAWarning_data()
{
    QTest::addColumn<QString>("file");
    TemplateSet set(EditedPanel::types(), "panel.yaml");
    set.read();
    QVERIFY(set.all().size() >= 6);
    for (const PanelTemplate& one : set.all()) {
        QTest::newRow(qPrintable(one.title)) << one.file;
    }
}

void tst_TemplateSet::thoseOfTheProgramRunWithoutAWarning()
{
    QFETCH(QString, file);
    const PanelTemplate* const one = m_set->find(file);
    QCOMPARE(one->fault, QString());
    QVERIFY(!one->isOwn);
    QVERIFY(!one->purpose.isEmpty());
    const EditedPanel panel(one->text);
    QStringList problems;
    for (const norvo::Diagnostic& problem : panel.problems()) {
        problems += problem.toString();
    }
    QCOMPARE(problems, QStringList());
}

void tst_TemplateSet::foldersAreReadWithTitleAndPurpose()
{
    write(m_panel->filePath("templates/team.yaml"),
          "# What the team\n# shares.\ntitle: team\n" + kLamp);
    write(m_panel->filePath("templates/other.txt"), kLamp);
    write(TemplateSet::ownFolder() + "/mine.yaml", kLamp);
    const PanelTemplate team = only(m_panel->path());
    QCOMPARE(team.title, QString("team"));
    QCOMPARE(team.purpose, QString("What the team shares."));
    QVERIFY(!team.isOwn);
    const PanelTemplate mine = only(m_data->path());
    QCOMPARE(mine.title, QString("mine"));
    QCOMPARE(mine.purpose, EditedPanel::types().words("indicator")->title);
    QVERIFY(mine.isOwn);
    QCOMPARE(m_set->all().last().title, QString("team"));
    QCOMPARE(m_set->all()[m_set->all().size() - 2].title, QString("mine"));
}

void tst_TemplateSet::whatIsWrongIsSaid_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("said");
    QTest::newRow("no panel file") << QByteArray("Dear all,\n") << "mine.yaml:1:1: error";
    QTest::newRow("broken") << QByteArray("devices: {a: [}\n") << "mine.yaml:1:";
    QTest::newRow("a wrong key") << QByteArray("devices:\n  a: {device: label, parms: {}}\n")
                                 << "mine.yaml:2:";
    QTest::newRow("an unknown type") << QByteArray("devices:\n  a: {device: nosuch}\n") << "nosuch";
    QTest::newRow("no devices") << QByteArray("title: Nothing\n") << "no devices";
    QTest::newRow("too large") << QByteArray(2 << 20, '#') << "too large";
}

void tst_TemplateSet::whatIsWrongIsSaid()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, said);
    write(TemplateSet::ownFolder() + "/mine.yaml", text);
    const PanelTemplate mine = only(m_data->path());
    QVERIFY2(mine.fault.contains(said), qPrintable(mine.fault));
    QVERIFY(!mine.title.isEmpty());
}

void tst_TemplateSet::savedTemplateIsThere()
{
    const QSignalSpy changes(m_set.get(), &TemplateSet::changed);
    QCOMPARE(m_set->save("  Lamp: für / alle ", kLamp), QString());
    QCOMPARE(changes.count(), 1);
    const PanelTemplate mine = only(m_data->path());
    QCOMPARE(mine.title, QString("Lamp: für / alle"));
    QCOMPARE(QFileInfo(mine.file).fileName(), QString("lamp--für---alle.yaml"));
    QCOMPARE(mine.fault, QString());
    QVERIFY2(mine.text.endsWith(kLamp), mine.text);
    QVERIFY(mine.isOwn);
}

void tst_TemplateSet::whatCannotBeSavedSaysSo_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("said");
    QTest::newRow("no name") << "  "
                             << "needs a name";
    QTest::newRow("known") << "Known"
                           << "already";
    QTest::newRow("known as a file") << "knoWn"
                                     << "already";
}

void tst_TemplateSet::whatCannotBeSavedSaysSo()
{
    QFETCH(QString, title);
    QFETCH(QString, said);
    QCOMPARE(m_set->save("Known", kLamp), QString());
    const QByteArray before = only(m_data->path()).text;
    const QString fault = m_set->save(title, "devices:\n  a: {device: label}\n");
    QVERIFY2(fault.contains(said), qPrintable(fault));
    QCOMPARE(only(m_data->path()).text, before);
    const QString file = m_data->filePath("file");
    write(file, "no folder");
    qputenv("XDG_DATA_HOME", file.toUtf8());
    const QString unwritable = m_set->save("Another", kLamp);
    QVERIFY2(unwritable.contains(file), qPrintable(unwritable));
}

void tst_TemplateSet::onlyOwnOnesAreRemoved()
{
    write(m_panel->filePath("templates/team.yaml"), kLamp);
    QCOMPARE(m_set->save("Mine", kLamp), QString());
    const QString mine = only(m_data->path()).file;
    const QString team = only(m_panel->path()).file;
    QVERIFY(!m_set->remove(team).isEmpty());
    QVERIFY(!m_set->remove(m_set->all().first().file).isEmpty());
    QVERIFY(QFile::exists(team));
    QCOMPARE(m_set->remove(mine), QString());
    QVERIFY(!QFile::exists(mine));
    QVERIFY(!m_set->find(mine));
}

NORVO_TEST(tst_TemplateSet)
#include "tst_TemplateSet.moc"
