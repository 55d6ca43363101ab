// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/HoldDevice.h"
#include "plugins/extras/HeldKey.h"
#include "Recorder.h"
#include "Stand.h"
#include "TestMain.h"

/// Device and key together.
class tst_HoldWidget : public QObject
{
    Q_OBJECT

private slots:
    void captionAndFontFollowTheParameters();
    void keyFillsTheWidget();
    void handIsWhatTheDeviceSends();
    void keyIsDownWhileItIsHeld();
    void inputReleasesUnderTheHand();
    void destructionOfTheWidgetReleases();
    void keyOutlivesItsDevice();
    void receiverMayDeleteTheWidget_data();
    void receiverMayDeleteTheWidget();

private:
    static Stand<HoldDevice>::Params calm() { return {{"heartbeat", "100000"}, {"text", "Jog"}}; }
};

void tst_HoldWidget::captionAndFontFollowTheParameters()
{
    const Stand<HoldDevice> stand({{"text", "Jog"}, {"widget/fontSize", "23"}});
    QCOMPARE(stand.only<HeldKey>()->text(), QString("Jog"));
    QCOMPARE(stand.only<HeldKey>()->font().pointSize(), 23);
    QVERIFY(stand.widget->isInitialised());
}

void tst_HoldWidget::keyFillsTheWidget()
{
    const Stand<HoldDevice> stand(calm());
    stand.widget->resize(300, 200);
    stand.widget->show();
    QCOMPARE(stand.only<HeldKey>()->size(), QSize(300, 200));
    QCOMPARE(stand.widget->focusProxy(), stand.only<HeldKey>());
    QCOMPARE(stand.widget->sizePolicy(), stand.only<HeldKey>()->sizePolicy());
}

void tst_HoldWidget::handIsWhatTheDeviceSends()
{
    Stand<HoldDevice> stand(calm());
    Recorder recorder(&stand.device);
    stand.widget->show();
    QTest::mousePress(stand.only<HeldKey>(), Qt::LeftButton);
    QCOMPARE(recorder.take(), QStringList({"pressed()", "held(true)"}));
    QTest::mouseRelease(stand.only<HeldKey>(), Qt::LeftButton);
    QCOMPARE(recorder.take(), QStringList({"held(false)", "released()"}));
}

void tst_HoldWidget::keyIsDownWhileItIsHeld()
{
    Stand<HoldDevice> stand(calm());
    stand.widget->show();
    auto* const key = stand.only<HeldKey>();
    const QImage up = key->grab().toImage();
    QTest::mousePress(key, Qt::LeftButton);
    QVERIFY(key->isDown());
    const QImage down = key->grab().toImage();
    QCOMPARE(down.pixelColor(3, 30), key->palette().color(QPalette::ButtonText)); // the frame
    QVERIFY(up.pixelColor(3, 30) != down.pixelColor(3, 30));
    QTest::mouseRelease(key, Qt::LeftButton);
    QVERIFY(!key->isDown());
}

void tst_HoldWidget::inputReleasesUnderTheHand()
{
    Stand<HoldDevice> stand(calm());
    stand.widget->show();
    auto* const key = stand.only<HeldKey>();
    QTest::mousePress(key, Qt::LeftButton);
    Recorder recorder(&stand.device);
    stand.device.release();
    QVERIFY(!key->isDown());
    QTest::mouseRelease(key, Qt::LeftButton);
    QCOMPARE(recorder.take(), QStringList({"held(false)", "released()"}));
    QTest::mousePress(key, Qt::LeftButton);
    QCOMPARE(recorder.take(), QStringList({"pressed()", "held(true)"}));
}

void tst_HoldWidget::destructionOfTheWidgetReleases()
{
    Stand<HoldDevice> stand(calm());
    stand.widget->show();
    QTest::mousePress(stand.only<HeldKey>(), Qt::LeftButton);
    Recorder recorder(&stand.device);
    stand.widget.reset();
    QCOMPARE(recorder.take(), QStringList({"held(false)", "released()"}));
}

void tst_HoldWidget::keyOutlivesItsDevice()
{
    auto device = std::make_unique<HoldDevice>();
    device->setRunning(device->initialise());
    const std::unique_ptr<BaseWidget> widget(device->createWidget());
    widget->initialise();
    widget->show();
    auto* const key = widget->findChild<HeldKey*>();
    QTest::mousePress(key, Qt::LeftButton);
    QVERIFY(key->isDown());
    device.reset();
    QVERIFY(!key->isDown());
    QTest::mouseRelease(key, Qt::LeftButton);
    QTest::mousePress(key, Qt::LeftButton);
    QVERIFY(!key->isDown());
}

void tst_HoldWidget::receiverMayDeleteTheWidget_data()
{
    QTest::addColumn<bool>("at");
    QTest::newRow("yes") << true;
    QTest::newRow("no") << false;
}

void tst_HoldWidget::receiverMayDeleteTheWidget()
{
    QFETCH(bool, at);
    Stand<HoldDevice> stand(calm());
    stand.widget->show();
    connect(&stand.device, &HoldDevice::held, this, [&](bool on) {
        if (on == at) {
            stand.widget.reset();
        }
    });
    auto* const key = stand.only<HeldKey>();
    QMouseEvent press(QEvent::MouseButtonPress, {20, 20}, Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(key, &press);
    if (stand.widget) {
        QMouseEvent release(QEvent::MouseButtonRelease, {20, 20}, Qt::LeftButton, {}, {});
        QApplication::sendEvent(key, &release);
    }
    QVERIFY(!stand.widget);
    QVERIFY(!stand.device.isHeld());
}

NORVO_TEST(tst_HoldWidget)
#include "tst_HoldWidget.moc"
