// SPDX-License-Identifier: GPL-3.0-or-later

#include "PanelTexts.h"
#include "TestMain.h"

#include <QtTest>

using norvo::Diagnostics;

/// What the examples show is sound.
class tst_PanelFileExamples : public QObject
{
    Q_OBJECT

private slots:
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
