// SPDX-License-Identifier: GPL-3.0-or-later

#include "GridPlaces.h"
#include "MessageLog.h"
#include "Stand.h"

#include "devices/QmlGuiDevice.h"
#include "norvo/QmlDeviceImpl.h"
#include "widgets/QmlWidget.h"
#include "TestMain.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWidget>
#include <QQuickWindow>
#include <QtTest>

namespace {

/// A red face of 200 x 100 with a green quarter at its upper left; sends where it is pressed.
const QString kFace = "import QtQuick 2.0\n"
                      "Rectangle {\n"
                      "    width: 200; height: 100; color: '#ff0000'\n"
                      "    signal pressed(real x, real y)\n"
                      "    Rectangle { width: 100; height: 50; color: '#00ff00' }\n"
                      "    MouseArea { anchors.fill: parent; onPressed: parent.pressed(mouseX, "
                      "mouseY) }\n"
                      "}\n";

QMap<QString, QString> code(const QString& text)
{
    return {{"sourceType", "parameter"}, {"sourceCode", text}};
}

using Face = Stand<QmlGuiDevice>;

QQuickItem* itemOf(const Face& face)
{
    return face.only<QQuickWidget>()->rootObject()->childItems().value(0);
}

} // namespace

class tst_QmlWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresNoSignalsSlotsOrProperties();
    void loaderWithoutDocumentIsReported();
    void missingItemIsReported();
    void itemOfTwoHundredByOneHundredGivesTheMinimumSize();
    void quickWidgetIsSetUp();
    void emptyRootCarriesTheItem();
    void faceIsDrawnWhereItLies();
    void whatTheFaceLeavesFreeIsTransparent();
    void pressReachesTheFace();
    void faceThatFillsItsParentGrowsWithTheWidget();
    void resizingAsksForARepaint();
    void deinitialiseTakesTheQuickWidgetAway();
    void itemOutlivesTheWidget();
    void widgetCanBeInitialisedAgain();
    void widgetMayOutliveItsDevice();
};

void tst_QmlWidget::declaresNoSignalsSlotsOrProperties()
{
    const QMetaObject& meta = QmlWidget::staticMetaObject;
    QCOMPARE(meta.methodCount(), BaseWidget::staticMetaObject.methodCount());
    QCOMPARE(meta.propertyCount(), BaseWidget::staticMetaObject.propertyCount());
}

void tst_QmlWidget::loaderWithoutDocumentIsReported()
{
    QQmlEngine engine;
    QmlDeviceImpl impl(&engine);
    QmlGuiDevice device;
    QmlWidget widget(&impl, &device, nullptr);
    widget.setObjectName("face");
    QmlWidget without(nullptr, &device, nullptr);
    without.setObjectName("other");
    MessageLog log;
    widget.initialise();
    QCOMPARE(log.take(), QStringList("critical: face: QmlDeviceImpl not initialised!"));
    without.initialise();
    QCOMPARE(log.take(), QStringList("critical: other: QmlDeviceImpl not initialised!"));
    QVERIFY(widget.findChildren<QWidget*>().isEmpty());
    QVERIFY(!widget.isInitialised());
    widget.resize(50, 50);
    widget.deinitialise();
}

void tst_QmlWidget::missingItemIsReported()
{
    Face face(code(kFace));
    const std::unique_ptr<BaseWidget> second(face.device.createWidget());
    second->setObjectName("face");
    delete itemOf(face);
    MessageLog log;
    second->initialise();
    QCOMPARE(log.take().filter("critical"),
             QStringList("critical: face: QmlDeviceImpl's item is null!"));
    QVERIFY(!second->isInitialised());
}

void tst_QmlWidget::itemOfTwoHundredByOneHundredGivesTheMinimumSize()
{
    Face face(code(kFace));
    QCOMPARE(face.only<QQuickWidget>()->minimumSize(), QSize(200, 100));
    QCOMPARE(face.only<QQuickWidget>()->geometry(), QRect(0, 0, 200, 100));
    QCOMPARE(face.widget->minimumSizeHint(), QSize(200, 100));
    face.widget->show();
    QVERIFY(face.widget->width() >= 200 && face.widget->height() >= 100);
}

void tst_QmlWidget::quickWidgetIsSetUp()
{
    Face face(code(kFace));
    const auto* const quick = face.only<QQuickWidget>();
    QVERIFY(quick);
    QCOMPARE(quick->resizeMode(), QQuickWidget::SizeRootObjectToView);
    QCOMPARE(quick->quickWindow()->color(), QColor(Qt::transparent));
    for (const QWidget* widget :
         {static_cast<const QWidget*>(quick), static_cast<const QWidget*>(face.widget.get())}) {
        QVERIFY(widget->testAttribute(Qt::WA_TranslucentBackground));
        QVERIFY(widget->windowFlags() & Qt::FramelessWindowHint);
        QCOMPARE(widget->styleSheet(), QString("background:transparent;"));
        QCOMPARE(widget->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(widget->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
    }
    QVERIFY(quick->testAttribute(Qt::WA_AlwaysStackOnTop));
    QVERIFY(!face.widget->testAttribute(Qt::WA_AlwaysStackOnTop));
    QVERIFY(placeOf(quick, *face.widget->getLayout()).startsWith("row 0, column 0, 1 x 1"));
    QCOMPARE(face.widget->getLayout()->contentsMargins(), QMargins(0, 0, 0, 0));
    QVERIFY(face.widget->isInitialised());
}

void tst_QmlWidget::emptyRootCarriesTheItem()
{
    Face face(code(kFace));
    auto* const quick = face.only<QQuickWidget>();
    const QQuickItem* const root = quick->rootObject();
    QCOMPARE(root->metaObject()->className(), "QQuickItem");
    QCOMPARE(root->childItems().size(), 1);
    QQuickItem* const item = itemOf(face);
    QCOMPARE(item->width(), 200.0);
    QCOMPARE(QQmlEngine::objectOwnership(item), QQmlEngine::CppOwnership);
    QCOMPARE(qmlEngine(item), quick->engine());
    face.widget->resize(500, 400);
    face.widget->show();
    QTRY_COMPARE(root->width(), 500.0);
    QCOMPARE(root->height(), 400.0);
    QCOMPARE(item->width(), 200.0);
}

void tst_QmlWidget::faceIsDrawnWhereItLies()
{
    Face face(code(kFace));
    face.widget->resize(200, 100);
    face.widget->show();
    QTRY_COMPARE(face.widget->grab().toImage().pixelColor(50, 25), QColor("#00ff00"));
    const QImage seen = face.widget->grab().toImage();
    QCOMPARE(seen.pixelColor(97, 47), QColor("#00ff00"));
    QCOMPARE(seen.pixelColor(103, 25), QColor("#ff0000"));
    QCOMPARE(seen.pixelColor(50, 53), QColor("#ff0000"));
}

void tst_QmlWidget::whatTheFaceLeavesFreeIsTransparent()
{
    QWidget panel; // dies after the widget in it
    Face face(code("import QtQuick 2.0\nItem { width: 100; height: 100\n"
                   "Rectangle { width: 50; height: 100; color: '#ff0000' } }\n"));
    panel.setStyleSheet("QWidget#panel { background: #0000ff; }");
    panel.setObjectName("panel");
    panel.resize(100, 100);
    face.widget->setParent(&panel);
    face.widget->resize(100, 100);
    panel.show();
    face.widget->show();
    QTRY_COMPARE(panel.grab().toImage().pixelColor(25, 50), QColor("#ff0000"));
    QCOMPARE(panel.grab().toImage().pixelColor(75, 50), QColor("#0000ff"));
}

void tst_QmlWidget::pressReachesTheFace()
{
    Face face(code(kFace));
    face.widget->resize(200, 100);
    face.widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(face.widget.get()));
    QString signature;
    QObject* const provider = face.device.getProvider("pressed", signature);
    QSignalSpy pressed(provider, SIGNAL(pressed(double, double)));
    QTest::mouseClick(face.only<QQuickWidget>(), Qt::LeftButton, {}, {30, 40});
    QCOMPARE(pressed.count(), 1);
    QCOMPARE(pressed[0], QVariantList({30.0, 40.0}));
}

void tst_QmlWidget::faceThatFillsItsParentGrowsWithTheWidget()
{
    MessageLog log;
    Face face(code("import QtQuick 2.0\n"
                   "Rectangle { width: 20; height: 10; anchors.fill: parent; color: '#00ff00' }"));
    QCOMPARE(face.only<QQuickWidget>()->minimumSize(), QSize(20, 10));
    face.widget->resize(300, 200);
    face.widget->show();
    QTRY_COMPARE(itemOf(face)->size(), QSizeF(300, 200));
    QTRY_COMPARE(face.widget->grab().toImage().pixelColor(290, 190), QColor("#00ff00"));
    QCOMPARE(log.take().filter("device: "), QStringList());
}

void tst_QmlWidget::resizingAsksForARepaint()
{
    Face face(code("import QtQuick 2.0\nItem { width: 20; height: 10 }"));
    face.widget->resize(300, 200);
    face.widget->show();
    auto* const quick = face.only<QQuickWidget>();
    QVERIFY(QTest::qWaitForWindowExposed(face.widget.get()));
    QCoreApplication::processEvents();
    QSignalSpy frames(quick->quickWindow(), &QQuickWindow::afterRendering);
    QResizeEvent event(face.widget->size(), face.widget->size());
    QCoreApplication::sendEvent(face.widget.get(), &event);
    QTRY_VERIFY(frames.count() > 0);
    delete quick;
    QCoreApplication::sendEvent(face.widget.get(), &event); // touches nothing dead
}

void tst_QmlWidget::deinitialiseTakesTheQuickWidgetAway()
{
    Face face(code(kFace));
    face.widget->show();
    const QPointer<QQuickWidget> quick = face.only<QQuickWidget>();
    const QPointer<QQuickItem> root = quick->rootObject();
    face.widget->deinitialise();
    QVERIFY(quick && !quick->parent() && !quick->isVisible());
    QVERIFY(!face.widget->isInitialised());
    QTRY_VERIFY(!root);
    QTRY_VERIFY(!quick);
    face.widget->deinitialise(); // once more, with nothing left
}

void tst_QmlWidget::itemOutlivesTheWidget()
{
    Face face(code(kFace));
    const QPointer<QQuickItem> item = itemOf(face);
    face.widget->deinitialise();
    face.widget.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(item);
    QVERIFY(!item->parentItem());
    face.device.deinitialise();
    QTRY_VERIFY(!item);
}

void tst_QmlWidget::widgetCanBeInitialisedAgain()
{
    Face face(code(kFace));
    face.widget->initialise(); // without an end to the first
    QVERIFY(face.only<QQuickWidget>());
    face.widget->deinitialise();
    face.widget->initialise();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(face.only<QQuickWidget>());
    QVERIFY(itemOf(face));
}

void tst_QmlWidget::widgetMayOutliveItsDevice()
{
    auto device = std::make_unique<QmlGuiDevice>();
    device->setParam("sourceType", "parameter");
    device->setParam("sourceCode", kFace);
    QVERIFY(device->initialise());
    const std::unique_ptr<BaseWidget> widget(device->createWidget());
    widget->initialise();
    widget->show();
    device.reset();
    QVERIFY(widget->findChildren<QQuickWidget*>().isEmpty());
    MessageLog log;
    widget->initialise();
    QCOMPARE(log.take(), QStringList("critical: : QmlDeviceImpl not initialised!"));
}

NORVO_TEST(tst_QmlWidget)
#include "tst_QmlWidget.moc"
