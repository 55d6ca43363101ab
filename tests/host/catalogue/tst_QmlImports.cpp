// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/QmlImports.h"
#include "TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

class tst_QmlImports : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void typesOfTheFolderAreFound();
    void foldersAndScriptsAreFollowed();
    void whatIsListedBesideAFolderIsFound();
    void circlesEnd();
    void nothingIsMadeOfNothing();

private:
    void write(const QString& name, const QByteArray& text) const
    {
        const QString path = m_folder->filePath(name);
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    /// Relative to the folder, in the order of the alphabet.
    QStringList importsOf(const QString& document) const
    {
        QStringList names;
        for (const QString& file : norvo::qmlImports(m_folder->filePath(document))) {
            names.append(QDir(m_folder->path()).relativeFilePath(file));
        }
        names.sort();
        return names;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_QmlImports::typesOfTheFolderAreFound()
{
    write("Gauge.qml", "import QtQuick 2.0\nItem { property Needle needle }\n");
    write("Needle.qml", "Item {}\n");
    write("Unused.qml", "Item {}\n");
    write("panel.qml", "import QtQuick 2.0\nGauge {\n  Later\n  {}\n}\n");
    QCOMPARE(importsOf("panel.qml"),
             QStringList({"Gauge.qml", "Item.qml", "Later.qml", "Needle.qml"}));
}

void tst_QmlImports::foldersAndScriptsAreFollowed()
{
    write("qml/panel.qml", "import QtQuick 2.0\nimport \"../parts\" as Parts\n"
                           "import 'units.js' as Units\nLoader { source: \"Face.qml\" }\n"
                           "// Parts.Dial\n");
    write("parts/Dial.qml", "");
    write("parts/Other.qml", "");
    write("qml/units.js", ".import \"more.js\" as More\n");
    write("qml/Face.qml", "");
    QCOMPARE(importsOf("qml/panel.qml"),
             QStringList({"parts/Dial.qml", "parts/Loader.qml", "qml/Face.qml", "qml/Loader.qml",
                          "qml/more.js", "qml/units.js"}));
}

void tst_QmlImports::whatIsListedBesideAFolderIsFound()
{
    write("panel.qml", "import \"parts\"\n");
    write("parts/qmldir",
          "Round 1.0 RoundDial.qml\nsingleton Units 1.0 Units.qml\nHelp 1.0 help.js");
    QCOMPARE(importsOf("panel.qml"), QStringList({"parts/RoundDial.qml", "parts/Units.qml",
                                                  "parts/help.js", "parts/qmldir"}));
}

void tst_QmlImports::circlesEnd()
{
    write("One.qml", "Two {}\n");
    write("Two.qml", "One {}\n");
    QCOMPARE(importsOf("One.qml"), QStringList("Two.qml"));
    QByteArray many;
    for (int i = 0; i < 1000; ++i) {
        many += "Type" + QByteArray::number(i) + " {}\n";
    }
    write("Many.qml", many);
    QCOMPARE(importsOf("Many.qml").size(), 200);
}

void tst_QmlImports::nothingIsMadeOfNothing()
{
    QCOMPARE(importsOf("none.qml"), QStringList());
    write("panel.qml", "import \"http://example.org/parts\"\nimport \"none\"\n"
                       "Loader { source: \"qrc:/Face.qml\" }\n");
    QCOMPARE(importsOf("panel.qml"), QStringList("Loader.qml"));
}

NORVO_GUILESS_TEST(tst_QmlImports)
#include "tst_QmlImports.moc"
