// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/XServer.h"
#include "TestMain.h"

#include <QtTest>

/// Runs tst_DialogKeysHere on screens of several sizes and resolutions.
class tst_DialogKeys : public QObject
{
    Q_OBJECT

private slots:
    void keysSuitTheScreen_data();
    void keysSuitTheScreen();
};

void tst_DialogKeys::keysSuitTheScreen_data()
{
    QTest::addColumn<QString>("size");
    QTest::addColumn<int>("dpi");
    QTest::addColumn<QString>("touch");
    for (const char* const size : {"800x480", "1920x1080"}) {
        for (const int dpi : {96, 160}) {
            for (const char* const touch : {"fingers", "gloves"}) {
                QTest::addRow("%s, %d dpi, %s", size, dpi, touch) << size << dpi << touch;
            }
        }
    }
}

void tst_DialogKeys::keysSuitTheScreen()
{
    QFETCH(QString, size);
    QFETCH(int, dpi);
    QFETCH(QString, touch);
    if (!XServer::isInstalled()) {
        QSKIP("there is no Xvfb");
    }
    XServer server(size, dpi);
    PanelProcess test({"tst_DialogKeysHere"}, QCoreApplication::applicationFilePath());
    setDisplay(test, server.display());
    test.setEnvironment("NORVO_TEST_TOUCH", touch);
    const int status = test.runToEnd();
    const QStringList lines = test.outputLines();
    for (const QString& line : lines.filter("keys of")) {
        qInfo("%s", qPrintable(line));
    }
    QVERIFY2(status == 0, qPrintable(lines.join('\n')));
}

NORVO_GUILESS_TEST(tst_DialogKeys)
#include "tst_DialogKeys.moc"
