#include "host/program/Display.h"
#include "TestMain.h"

#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWidget>
#include <QQuickWindow>
#include <QtTest>

class tst_Display : public QObject
{
    Q_OBJECT

private slots:
    void quickDrawsWithoutOpenGl();
};

/// Without a renderer that does without OpenGL, Qt ends the process here.
void tst_Display::quickDrawsWithoutOpenGl()
{
    QString reason;
    const auto application = norvo::Display::open(norvo::Display::Kind::OffScreen, {}, reason);
    QVERIFY(application);
    QCOMPARE(reason, QString());
    QCOMPARE(QGuiApplication::platformName(), QString("offscreen"));
    QCOMPARE(QQuickWindow::sceneGraphBackend(), QString("software"));

    QQuickWidget widget;
    QQmlComponent component(widget.engine());
    component.setData("import QtQuick 2.0; Rectangle { color: '#00ff00' }", QUrl());
    QVERIFY2(component.isReady(), qPrintable(component.errorString()));
    widget.setResizeMode(QQuickWidget::SizeRootObjectToView);
    widget.setContent(QUrl(), &component, component.create());
    widget.resize(100, 100);
    widget.show();
    QTRY_COMPARE(widget.grab().toImage().pixelColor(50, 50), QColor("#00ff00"));
}

NORVO_APPLESS_TEST(tst_Display)
#include "tst_Display.moc"
