// SPDX-License-Identifier: LGPL-3.0-or-later

#include "QmlOwner.h"

#include "host/gui/qml/QmlRenderer.h"
#include "TestMain.h"

#include <QQuickWindow>
#include <QtTest>

/// The choice is made once in a process; the library and this program have one each.
class tst_QmlRendererChoice : public QObject
{
    Q_OBJECT

private slots:
    void choiceOfTheEnvironmentStands()
    {
        qputenv("QMLSCENE_DEVICE", "chosen");
        norvo::chooseQuickRenderer();
        qunsetenv("QMLSCENE_DEVICE");
        QVERIFY(QQuickWindow::sceneGraphBackend() != "software");
    }

    void choiceOfTheProgramStands()
    {
        QQuickWindow::setSceneGraphBackend("chosen");
        const QmlOwner owner;
        QCOMPARE(QQuickWindow::sceneGraphBackend(), QString("chosen"));
    }
};

NORVO_TEST(tst_QmlRendererChoice)
#include "tst_QmlRendererChoice.moc"
