// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/Placement.h"
#include "host/window/PanelPages.h"
#include "host/window/PanelWindow.h"
#include "host/window/look/TouchSize.h"
#include "TestMain.h"

#include <QtTest>
#include <QtWidgets>

using namespace norvo;

Q_DECLARE_METATYPE(norvo::PanelLook::Touch)

namespace {

/// A window with a panel of so many tabs, "Station 1" and on.
struct Tabbed
{
    explicit Tabbed(int count, const QSize& size = {800, 480},
                    PanelLook::Touch touch = PanelLook::Touch::Fingers)
    {
        QStringList areas;
        for (int i = 1; i <= count; ++i) {
            areas.append(QString("Station %1").arg(i));
        }
        PanelLook look;
        look.touch = touch;
        pages->setLook(look);
        pages->setAreas(areas);
        auto* const layout = new QVBoxLayout(window.page());
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(pages);
        window.resize(size);
    }

    bool show()
    {
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }
    QList<QPushButton*> keys() const { return pages->findChildren<QPushButton*>(); }
    QTabWidget* tabs() const { return pages->findChild<QTabWidget*>(); }

    PanelWindow window{"Test"};
    PanelPages* pages = new PanelPages;
};

void drag(QWidget* widget, const QPoint& from, int upwards)
{
    const QPoint start = widget->mapToGlobal(from);
    QTest::mousePress(widget, Qt::LeftButton, {}, from);
    for (int y = 10; y <= upwards; y += 10) {
        const QPoint at = start - QPoint(0, y);
        QMouseEvent move(QEvent::MouseMove, widget->mapFromGlobal(at), at, Qt::NoButton,
                         Qt::LeftButton, {});
        QCoreApplication::sendEvent(widget, &move);
    }
    QTest::mouseRelease(widget, Qt::LeftButton, {},
                        widget->mapFromGlobal(start) - QPoint(0, upwards));
}

} // namespace

class tst_PageKeys : public QObject
{
    Q_OBJECT

private slots:
    void everyPageHasAKeyThatAFingerHits_data();
    void everyPageHasAKeyThatAFingerHits();
    void keyShowsItsPage();
    void keysOfTheKeyboardGoToTheNeighbours();
    void keysStayWhereThePageScrolls();
    void fingerScrollsThePage();
    void fingerOnAControlScrollsNothing();
};

void tst_PageKeys::everyPageHasAKeyThatAFingerHits_data()
{
    QTest::addColumn<PanelLook::Touch>("touch");
    QTest::newRow("finger") << PanelLook::Touch::Fingers;
    QTest::newRow("glove") << PanelLook::Touch::Gloves;
}

void tst_PageKeys::everyPageHasAKeyThatAFingerHits()
{
    QFETCH(PanelLook::Touch, touch);
    Tabbed panel(14, {800, 480}, touch);
    QVERIFY(panel.show());
    const int least = TouchSize::pixels(touch, *panel.window.screen());
    const auto keys = panel.keys();
    QCOMPARE(keys.size(), 14);
    QTRY_VERIFY(keys.last()->parentWidget()->height() > 2 * least);
    for (const QPushButton* key : keys) {
        const QRect place(key->mapTo(&panel.window, QPoint()), key->size());
        QVERIFY(panel.window.rect().contains(place));
        QVERIFY(key->parentWidget()->rect().contains(key->geometry()));
        QVERIFY(key->height() >= least && key->width() >= least);
        QVERIFY(key->width() >= key->sizeHint().width());
        for (const QPushButton* other : keys) {
            QVERIFY(other == key || !other->geometry().intersects(key->geometry()));
        }
    }
}

void tst_PageKeys::keyShowsItsPage()
{
    Tabbed panel(14);
    QVERIFY(panel.show());
    QVERIFY(panel.keys()[0]->isChecked());
    QTest::mouseClick(panel.keys()[12], Qt::LeftButton);
    QCOMPARE(panel.tabs()->currentIndex(), 12);
    QVERIFY(panel.keys()[12]->isChecked());
    QVERIFY(!panel.keys()[0]->isChecked());
    QTest::mouseClick(panel.keys()[12], Qt::LeftButton); // There is no way to show none.
    QVERIFY(panel.keys()[12]->isChecked());
}

void tst_PageKeys::keysOfTheKeyboardGoToTheNeighbours()
{
    Tabbed panel(3);
    QVERIFY(panel.show());
    const auto press = [&panel](Qt::Key key) {
        QTest::keyClick(&panel.window, key, Qt::ControlModifier);
        return panel.tabs()->currentIndex();
    };
    QCOMPARE(press(Qt::Key_PageDown), 1);
    QCOMPARE(press(Qt::Key_PageDown), 2);
    QVERIFY(panel.keys()[2]->isChecked());
    QCOMPARE(press(Qt::Key_PageDown), 0);
    QCOMPARE(press(Qt::Key_PageUp), 2);
}

void tst_PageKeys::keysStayWhereThePageScrolls()
{
    Tabbed panel(3);
    auto* const high = new QFrame;
    high->setMinimumHeight(1000);
    panel.pages->place(high, {"Station 1", 0, 0, 1, 1});
    QVERIFY(panel.show());
    QCoreApplication::processEvents();
    const QPoint before = panel.keys()[0]->mapTo(&panel.window, QPoint());
    auto* const area = qobject_cast<QScrollArea*>(panel.tabs()->widget(0));
    QVERIFY(area->verticalScrollBar()->maximum() > 500);
    area->verticalScrollBar()->setValue(500);
    QCOMPARE(panel.keys()[0]->mapTo(&panel.window, QPoint()), before);
}

void tst_PageKeys::fingerScrollsThePage()
{
    PanelWindow window("Test");
    auto* const label = new QLabel("high");
    label->setMinimumHeight(1000);
    (new QVBoxLayout(window.page()))->addWidget(label);
    window.resize(800, 480);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QScrollBar* const bar = window.findChild<QScrollArea*>()->verticalScrollBar();
    drag(window.page(), {5, 300}, 200);
    QCOMPARE(bar->value(), 200);
}

void tst_PageKeys::fingerOnAControlScrollsNothing()
{
    PanelWindow window("Test");
    auto* const slider = new QSlider(Qt::Vertical);
    slider->setMinimumHeight(1000);
    slider->setRange(0, 100);
    (new QVBoxLayout(window.page()))->addWidget(slider);
    window.resize(800, 480);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto* const bar = window.findChild<QScrollArea*>()->verticalScrollBar();
    bar->setValue(bar->maximum());
    const int before = bar->value();
    QStyleOptionSlider option;
    option.initFrom(slider);
    option.orientation = Qt::Vertical;
    option.maximum = 100;
    option.upsideDown = true;
    const QRect handle = slider->style()->subControlRect(QStyle::CC_Slider, &option,
                                                         QStyle::SC_SliderHandle, slider);
    drag(slider, handle.center(), 300);
    QCOMPARE(bar->value(), before);
    QVERIFY2(slider->value() > 20, qPrintable(QString::number(slider->value())));
}

NORVO_TEST(tst_PageKeys)
#include "tst_PageKeys.moc"
