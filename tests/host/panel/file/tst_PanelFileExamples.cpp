// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelTexts.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Diagnostics;

namespace {

struct Example
{
    int line = 0; ///< Of the fence.
    QByteArray text;
};

QVector<Example> examplesIn(const QString& document)
{
    QVector<Example> examples;
    QFile file(document);
    bool isInside = false;
    if (!file.open(QIODevice::ReadOnly)) {
        return examples;
    }
    for (int number = 1; !file.atEnd(); ++number) {
        const QByteArray line = file.readLine();
        if (!isInside && line == "```yaml\n") {
            isInside = true;
            examples.append(Example{number, {}});
        } else if (isInside && line == "```\n") {
            isInside = false;
        } else if (isInside) {
            examples.last().text += line;
        }
    }
    return examples;
}

} // namespace

/// What the documents and the examples show is sound.
class tst_PanelFileExamples : public QObject
{
    Q_OBJECT

private slots:
    void examplesInDocuments_data()
    {
        QTest::addColumn<QString>("document");
        QTest::addColumn<int>("atLeast");
        QTest::newRow("the reference") << "docs/panel-files.md" << 5;
        QTest::newRow("the read-me file") << "README.md" << 1;
    }
    void examplesInDocuments()
    {
        QFETCH(QString, document);
        QFETCH(int, atLeast);
        const auto examples = examplesIn(document);
        QVERIFY(examples.size() >= atLeast);
        for (const Example& example : examples) {
            Diagnostics diagnostics("panel.yaml");
            const auto panel = panels::parse(example.text, diagnostics);
            QVERIFY2(diagnostics.isEmpty(), qPrintable(QString("example in line %1: %2")
                                                           .arg(example.line)
                                                           .arg(panels::errorsOf(example.text))));
            QVERIFY2(!panel.devices.isEmpty(), qPrintable(QString::number(example.line)));
        }
    }

    void panelsInFolders_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::newRow("examples") << "examples";
        QTest::newRow("good panels") << "tests/panels/good";
    }
    void panelsInFolders()
    {
        QFETCH(QString, folder);
        QDirIterator files(folder, {"*.yaml"}, QDir::Files, QDirIterator::Subdirectories);
        QVERIFY(files.hasNext());
        while (files.hasNext()) {
            Diagnostics diagnostics("panel.yaml");
            norvo::PanelFile::read(files.next(), diagnostics);
            QVERIFY2(diagnostics.isEmpty(), qPrintable(diagnostics.sorted().value(0).toString()));
        }
    }
};

NORVO_GUILESS_TEST(tst_PanelFileExamples)
#include "tst_PanelFileExamples.moc"
