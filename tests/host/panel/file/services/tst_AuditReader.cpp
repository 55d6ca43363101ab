// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/PanelFile.h"

#include "host/panel/Descriptions.h"
#include "TestMain.h"

#include <QtTest>

class tst_AuditReader : public QObject
{
    Q_OBJECT

private slots:
    void fileIsReadWithWhatIsUsualForTheRest();
    void sizeAndNumberOfFilesAreRead();
    void whatIsWrongIsSaidWithItsPlace_data();
    void whatIsWrongIsSaidWithItsPlace();
};

static norvo::AuditSetting read(const QByteArray& text, QStringList* errors = nullptr)
{
    norvo::Diagnostics diagnostics("p.yaml");
    const auto panel = norvo::PanelFile::parse(text, "p.yaml", diagnostics);
    if (errors) {
        *errors = describe::lines(diagnostics);
    }
    return panel.audit;
}

void tst_AuditReader::fileIsReadWithWhatIsUsualForTheRest()
{
    QStringList errors;
    const auto audit = read("audit: log/what.jsonl\n", &errors);
    QCOMPARE(errors, QStringList());
    QCOMPARE(audit.file, QString("log/what.jsonl"));
    QCOMPARE(audit.maxBytes, 10000000LL);
    QCOMPARE(audit.kept, 5);
    QVERIFY(read("title: none\n").file.isEmpty());
}

void tst_AuditReader::sizeAndNumberOfFilesAreRead()
{
    const auto audit = read("audit: {file: a.jsonl, size: 1.5 kB, keep: 0}\n");
    QCOMPARE(audit.file, QString("a.jsonl"));
    QCOMPARE(audit.maxBytes, 1500LL);
    QCOMPARE(audit.kept, 0);
}

void tst_AuditReader::whatIsWrongIsSaidWithItsPlace_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    const QString size = "size must be from 1 kB to 1 GB with its unit, such as \"10 MB\"";
    QTest::newRow("no file") << QByteArray("audit: {size: 1 MB}")
                             << "p.yaml:1:8: error: audit lacks file, the name of the file that it "
                                "is written to";
    QTest::newRow("empty") << QByteArray("audit: \"\"")
                           << "p.yaml:1:8: error: audit must name a file, such as "
                              "panel.audit.jsonl, or be a map of file, size and keep";
    QTest::newRow("no unit") << QByteArray("audit: {file: a, size: 10}")
                             << "p.yaml:1:24: error: " + size;
    QTest::newRow("too small") << QByteArray("audit: {file: a, size: 0.9 kB}")
                               << "p.yaml:1:24: error: " + size;
    QTest::newRow("too large") << QByteArray("audit: {file: a, size: 2 GB}")
                               << "p.yaml:1:24: error: " + size;
    QTest::newRow("files") << QByteArray("audit: {file: a, keep: -1}")
                           << "p.yaml:1:24: error: keep must be a whole number of files from 0 to "
                              "1000";
    QTest::newRow("misspelt") << QByteArray("audit: {fiel: a, file: b}")
                              << "p.yaml:1:9: error: unknown key \"fiel\" of audit; did you mean "
                                 "\"file\"?";
}

void tst_AuditReader::whatIsWrongIsSaidWithItsPlace()
{
    QFETCH(QByteArray, text);
    QStringList errors;
    read(text + "\n", &errors);
    QTEST(errors.join('\n'), "error");
}

NORVO_GUILESS_TEST(tst_AuditReader)
#include "tst_AuditReader.moc"
