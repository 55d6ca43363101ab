// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelProcess.h"
#include "TestMain.h"

#include <QDirIterator>
#include <QtTest>

namespace {

struct Block
{
    int line = 0; ///< Of its first line.
    QByteArray text;
};

/// What stands in a document as YAML.
QVector<Block> yamlBlocks(const QString& document)
{
    QFile file(document);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QVector<Block> blocks;
    bool isInside = false;
    for (int line = 1; !file.atEnd(); ++line) {
        const QByteArray text = file.readLine();
        if (text == "```yaml\n") {
            isInside = true;
            blocks.append(Block{line + 1, {}});
        } else if (text == "```\n") {
            isInside = false;
        } else if (isInside) {
            blocks.last().text += text;
        }
    }
    return blocks;
}

bool isWholePanel(const QByteArray& text)
{
    return text.startsWith("devices:") || text.contains("\ndevices:");
}

} // namespace

/// Each panel that a document shows is one that the program takes.
class tst_DocumentPanels : public QObject
{
    Q_OBJECT

private slots:
    void everyPanelOfADocumentIsSound_data();
    void everyPanelOfADocumentIsSound();
    void partOfAPanelIsFew();
};

void tst_DocumentPanels::everyPanelOfADocumentIsSound_data()
{
    QTest::addColumn<QByteArray>("panel");
    QDirIterator documents(NORVO_SOURCE_DIR "/docs", {"*.md"}, QDir::Files);
    QStringList files{NORVO_SOURCE_DIR "/README.md"};
    while (documents.hasNext()) {
        files.append(documents.next());
    }
    for (const QString& file : qAsConst(files)) {
        for (const Block& block : yamlBlocks(file)) {
            if (isWholePanel(block.text)) {
                QTest::addRow("%s:%d", qPrintable(QFileInfo(file).fileName()), block.line)
                    << block.text;
            }
        }
    }
}

/// With the plug-ins that a document shows how to write, and the QML files of the examples.
void tst_DocumentPanels::everyPanelOfADocumentIsSound()
{
    QFETCH(QByteArray, panel);
    const PanelFolder folder(panel);
    QDirIterator faces(NORVO_SOURCE_DIR "/examples/qml", {"*.qml"}, QDir::Files);
    while (faces.hasNext()) {
        const QString face = faces.next();
        QVERIFY(QFile::copy(face, folder.filePath(faces.fileName())));
    }
    PanelProcess program({"--plugins", fixture("document"), "--plugins", fixture("example"),
                          "--check", folder.panel()});
    QCOMPARE(program.runToEnd(), 0);
    QVERIFY2(!program.errorLines().join('\n').contains(": error:"),
             qPrintable(program.errorLines().join('\n')));
}

/// What no check can judge stays a rare thing: such as one key with what it may have.
void tst_DocumentPanels::partOfAPanelIsFew()
{
    QStringList parts;
    QDirIterator documents(NORVO_SOURCE_DIR "/docs", {"*.md"}, QDir::Files);
    while (documents.hasNext()) {
        const QString file = documents.next();
        for (const Block& block : yamlBlocks(file)) {
            if (!isWholePanel(block.text)) {
                parts << QString("%1:%2").arg(documents.fileName()).arg(block.line);
            }
        }
    }
    QVERIFY2(parts.size() <= 2, qPrintable(parts.join('\n')));
}

NORVO_GUILESS_TEST(tst_DocumentPanels)
#include "tst_DocumentPanels.moc"
