// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/StopDevice.h"
#include "plugins/extras/StopKey.h"
#include "Recorder.h"
#include "Stand.h"
#include "Touch.h"
#include "TestMain.h"

#include <QThread>

/// The key under a hand.
class tst_StopWidget : public QObject
{
    Q_OBJECT

private slots:
    void pressLatches_data();
    void pressLatches();
    void inputIsShown();
    void latchedKeyIsReleasedByHolding();
    void stopUnderTheHandThatReleasedStays();
    void releaseTakesHalfASecondAtLeast();
    void pressThatLatchesDoesNotRelease();
    void handThatLetsGoOrSlidesOffDoesNotRelease_data();
    void handThatLetsGoOrSlidesOffDoesNotRelease();
    void panelThatStandsStillDoesNotRelease();
    void progressIsShown();
    void eachHoldBeginsAtTheStart();
    void saysInWordsWhetherItIsConfirmed();
    void looksLatchedAtTheStart();
    void keyShowsItsFocusAndHasThatOfTheWidget();
    void latchedKeySaysHowItIsReleased();
    void lettersOfTheHintAreSmallerButLegible_data();
    void lettersOfTheHintAreSmallerButLegible();
    void captionIsShownVerbatim();
    void wordsAreLegible();
    void sizeIsLargeAndDoesNotChangeWithTheState();
    void keyOutlivesItsDevice();

private:
    static Stand<StopDevice>::Params params(const char* stopped = "false")
    {
        return {{"repeat", "100000"}, {"release", "500"}, {"stopped", stopped}};
    }

    /// The bar's length in pixels, of a key of 300 x 200.
    static int barLength(StopKey* key)
    {
        const QImage image = key->grab().toImage();
        int x = 22;
        while (x < 278 && image.pixelColor(x, 173) == QColor("#ffd500")) {
            ++x;
        }
        return x - 22;
    }
};

void tst_StopWidget::pressLatches_data()
{
    QTest::addColumn<QString>("with");
    for (const char* with : {"mouse", "finger", "space bar"}) {
        QTest::newRow(with) << QString(with);
    }
}

void tst_StopWidget::pressLatches()
{
    QFETCH(QString, with);
    Stand<StopDevice> stand(params());
    stand.widget->show();
    stand.widget->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(stand.widget.get()));
    auto* const key = stand.only<StopKey>();
    Recorder recorder(&stand.device);
    if (with == "mouse") {
        QTest::mousePress(key, Qt::LeftButton);
    } else if (with == "finger") {
        QTest::touchEvent(key, touchScreen()).press(0, {30, 30}, key);
    } else {
        QTest::keyPress(key, Qt::Key_Space);
    }
    QCOMPARE(recorder.take(), QStringList({"stopped(true)", "pressed()"}));
    QCOMPARE(key->text(), QString("STOPPED"));
    if (with == "finger") {
        QTest::touchEvent(key, touchScreen()).release(0, {30, 30}, key);
    }
}

void tst_StopWidget::inputIsShown()
{
    const Stand<StopDevice> stand({{"text", "HALT"}});
    QCOMPARE(stand.only<StopKey>()->text(), QString("HALT"));
    const_cast<StopDevice&>(stand.device).stop();
    QCOMPARE(stand.only<StopKey>()->text(), QString("STOPPED"));
    QVERIFY(stand.only<StopKey>()->isDown());
}

void tst_StopWidget::latchedKeyIsReleasedByHolding()
{
    Stand<StopDevice> stand(params("true"));
    stand.widget->show();
    auto* const key = stand.only<StopKey>();
    Recorder recorder(&stand.device);
    QElapsedTimer clock;
    clock.start();
    QTest::mousePress(key, Qt::LeftButton);
    QCOMPARE(recorder.take(), QStringList({"stopped(true)", "pressed()"}));
    QTRY_VERIFY(!stand.device.isStopped());
    QVERIFY2(clock.elapsed() >= 480, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(recorder.take(), QStringList({"stopped(false)", "released()"}));
    QCOMPARE(key->text(), QString("STOP"));
    QTest::mouseRelease(key, Qt::LeftButton);
    QCOMPARE(recorder.take(), QStringList());
}

void tst_StopWidget::pressThatLatchesDoesNotRelease()
{
    Stand<StopDevice> stand(params());
    stand.widget->show();
    QTest::mousePress(stand.only<StopKey>(), Qt::LeftButton);
    QTest::qWait(800);
    QVERIFY(stand.device.isStopped());
}

void tst_StopWidget::handThatLetsGoOrSlidesOffDoesNotRelease_data()
{
    QTest::addColumn<bool>("slides");
    QTest::newRow("lets go") << false;
    QTest::newRow("slides off") << true;
}

void tst_StopWidget::handThatLetsGoOrSlidesOffDoesNotRelease()
{
    QFETCH(bool, slides);
    Stand<StopDevice> stand(params("true"));
    stand.widget->show();
    auto* const key = stand.only<StopKey>();
    QTest::mousePress(key, Qt::LeftButton);
    QTest::qWait(100);
    if (slides) {
        QMouseEvent off(QEvent::MouseMove, {-1, 20}, Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(key, &off);
    } else {
        QTest::mouseRelease(key, Qt::LeftButton);
    }
    QTest::qWait(800);
    QVERIFY(stand.device.isStopped());
}

void tst_StopWidget::panelThatStandsStillDoesNotRelease()
{
    Stand<StopDevice> stand(params("true"));
    stand.widget->show();
    auto* const key = stand.only<StopKey>();
    QTest::mousePress(key, Qt::LeftButton);
    QThread::msleep(900);
    QCoreApplication::processEvents(); // the tick comes before the hand that went meanwhile
    QVERIFY(stand.device.isStopped());
    QTest::mouseRelease(key, Qt::LeftButton);
}

void tst_StopWidget::progressIsShown()
{
    Stand<StopDevice> stand({{"release", "60000"}, {"stopped", "true"}, {"repeat", "100000"}});
    stand.widget->resize(300, 200);
    stand.widget->show();
    auto* const key = stand.only<StopKey>();
    const QColor yellow("#ffd500");
    const auto barAt = [&](int x) { return key->grab().toImage().pixelColor(x, 173); };
    QTest::mousePress(key, Qt::LeftButton);
    QVERIFY(barAt(24) != yellow);
    QTRY_COMPARE_WITH_TIMEOUT(barAt(24), yellow, 20000);
    QVERIFY(barAt(270) != yellow);
    QTest::mouseRelease(key, Qt::LeftButton);
    QVERIFY(barAt(24) != yellow);
}

void tst_StopWidget::saysInWordsWhetherItIsConfirmed()
{
    Stand<StopDevice> stand(params());
    QString signature;
    stand.device.getReceiver("acknowledged()", signature);
    auto* const key = stand.only<StopKey>();
    stand.device.stop();
    QCOMPARE(key->text().simplified(), QString("STOPPED, not confirmed"));
    stand.device.acknowledged(true);
    QCOMPARE(key->text(), QString("STOPPED"));
    stand.device.acknowledged(false);
    QCOMPARE(key->text().simplified(), QString("STOPPED, not confirmed"));
}

void tst_StopWidget::looksLatchedAtTheStart()
{
    const Stand<StopDevice> stand(params("true"));
    QVERIFY(stand.only<StopKey>()->isDown());
    QCOMPARE(stand.only<StopKey>()->text(), QString("STOPPED"));
}

void tst_StopWidget::wordsAreLegible()
{
    const auto part = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [&](const QColor& colour) {
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) +
               0.0722 * part(colour.blueF());
    };
    Stand<StopDevice> stand(params());
    stand.widget->resize(300, 200);
    const QImage image = stand.only<StopKey>()->grab().toImage();
    const QColor red = image.pixelColor(40, 40);
    QVERIFY2(1.05 / (luminance(red) + 0.05) >= 4.5, qPrintable(red.name()));
    bool hasWhite = false;
    for (int x = 0; x < image.width(); ++x) {
        hasWhite = hasWhite || image.pixelColor(x, 100) == QColor(Qt::white);
    }
    QVERIFY(hasWhite);
    QCOMPARE(image.pixelColor(6, 100), QColor("#ffd500"));
}

void tst_StopWidget::sizeIsLargeAndDoesNotChangeWithTheState()
{
    Stand<StopDevice> stand(params());
    auto* const key = stand.only<StopKey>();
    const QSize size = key->sizeHint();
    QVERIFY(size.height() >= 120 && size.width() >= 120);
    QVERIFY(size.width() > key->fontMetrics().size(0, "STOPPED,\nnot confirmed").width());
    const Stand<StopDevice> small({{"text", ""}, {"widget/fontSize", "4"}});
    QCOMPARE(small.only<StopKey>()->sizeHint(), QSize(120, 120));
    stand.device.stop();
    QCOMPARE(key->sizeHint(), size);
    QCOMPARE(key->minimumSizeHint(), size);
}

void tst_StopWidget::keyOutlivesItsDevice()
{
    auto device = std::make_unique<StopDevice>();
    device->setRunning(device->initialise());
    const std::unique_ptr<BaseWidget> widget(device->createWidget());
    widget->initialise();
    widget->show();
    device.reset();
    QTest::mouseClick(widget->findChild<StopKey*>(), Qt::LeftButton);
    QVERIFY(!widget->findChild<StopKey*>()->isDown());
}

void tst_StopWidget::eachHoldBeginsAtTheStart()
{
    Stand<StopDevice> stand({{"release", "60000"}, {"stopped", "true"}, {"repeat", "100000"}});
    stand.widget->resize(300, 200);
    stand.widget->show();
    auto* const key = stand.only<StopKey>();
    QTest::mousePress(key, Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(barLength(key) >= 3, 20000);
    QTest::mouseRelease(key, Qt::LeftButton);
    QTest::mousePress(key, Qt::LeftButton);
    QCOMPARE(barLength(key), 0);
}

void tst_StopWidget::releaseTakesHalfASecondAtLeast()
{
    Stand<StopDevice> stand({{"release", "0"}, {"stopped", "true"}, {"repeat", "100000"}});
    stand.widget->resize(300, 200);
    stand.widget->show();
    auto* const key = stand.only<StopKey>();
    QElapsedTimer clock;
    clock.start();
    QTest::mousePress(key, Qt::LeftButton);
    QTRY_VERIFY(!stand.device.isStopped());
    QVERIFY2(clock.elapsed() >= 480, qPrintable(QString::number(clock.elapsed())));
}

void tst_StopWidget::stopUnderTheHandThatReleasedStays()
{
    Stand<StopDevice> stand(params("true"));
    stand.widget->show();
    QTest::mousePress(stand.only<StopKey>(), Qt::LeftButton);
    QTRY_VERIFY(!stand.device.isStopped());
    stand.device.stop();
    QTest::qWait(200);
    QVERIFY(stand.device.isStopped());
}

void tst_StopWidget::captionIsShownVerbatim()
{
    const Stand<StopDevice> stand({{"text", "R&D"}});
    QCOMPARE(stand.only<StopKey>()->text(), QString("R&&D"));
    QVERIFY(stand.only<StopKey>()->shortcut().isEmpty());
}

void tst_StopWidget::latchedKeySaysHowItIsReleased()
{
    Stand<StopDevice> stand(params());
    stand.widget->resize(300, 200);
    auto* const key = stand.only<StopKey>();
    const auto hasWhiteAboveTheBar = [&] {
        const QImage image = key->grab().toImage();
        bool hasWhite = false;
        for (int x = 40; x < 260; ++x) {
            for (int y = 140; y < 166; ++y) {
                hasWhite = hasWhite || image.pixelColor(x, y).lightness() > 180;
            }
        }
        return hasWhite;
    };
    QVERIFY(!hasWhiteAboveTheBar());
    stand.device.stop();
    QVERIFY(hasWhiteAboveTheBar());
}

void tst_StopWidget::lettersOfTheHintAreSmallerButLegible_data()
{
    QTest::addColumn<QString>("fontSize");
    QTest::addColumn<double>("hintSize");
    QTest::newRow("small") << "10" << 9.0;
    QTest::newRow("large") << "30" << 18.0;
}

void tst_StopWidget::lettersOfTheHintAreSmallerButLegible()
{
    QFETCH(QString, fontSize);
    QFETCH(double, hintSize);
    auto with = params("true");
    with["widget/fontSize"] = fontSize;
    Stand<StopDevice> stand(with);
    stand.widget->resize(500, 300);
    auto* const key = stand.only<StopKey>();
    const QImage image = key->grab().toImage();
    const int bottom = 300 - 10 - 12 - 10; // Above the bar.
    int left = image.width();
    int right = 0;
    for (int y = bottom - key->fontMetrics().height() / 2; y < bottom; ++y) {
        for (int x = 30; x < 470; ++x) {
            if (image.pixelColor(x, y).lightness() > 180) {
                left = std::min(left, x);
                right = std::max(right, x);
            }
        }
    }
    QFont font = key->font();
    font.setPointSizeF(hintSize);
    const int width = QFontMetrics(font).horizontalAdvance("hold to release");
    QVERIFY2(std::abs(right - left - width) < width / 8, qPrintable(QString::number(right - left)));
}

void tst_StopWidget::keyShowsItsFocusAndHasThatOfTheWidget()
{
    Stand<StopDevice> stand({{"widget/fontSize", "23"}});
    stand.widget->resize(300, 200);
    stand.widget->show();
    stand.widget->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(stand.widget.get()));
    auto* const key = stand.only<StopKey>();
    QCOMPARE(stand.widget->focusProxy(), key);
    QCOMPARE(stand.widget->sizePolicy(), key->sizePolicy());
    QCOMPARE(key->font().pointSize(), 23);
    QVERIFY(key->font().bold());
    stand.widget->setFocus();
    const QImage focused = key->grab().toImage();
    key->clearFocus();
    QVERIFY(key->grab().toImage() != focused);
}

NORVO_TEST(tst_StopWidget)
#include "tst_StopWidget.moc"
