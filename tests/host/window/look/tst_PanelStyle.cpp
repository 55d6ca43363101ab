// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/look/Contrast.h"
#include "host/window/look/PanelStyle.h"
#include "host/window/look/TouchSize.h"
#include "TestMain.h"

#include <QCheckBox>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QStyleOption>
#include <QTabBar>
#include <QtTest>

#include <memory>

using namespace norvo;

/// Sizes and marks of controls, on real ones.
class tst_PanelStyle : public QObject
{
    Q_OBJECT

private slots:
    void controlIsLargeEnough_data();
    void controlIsLargeEnough();
    void latchedButtonIsToldByColor_data();
    void latchedButtonIsToldByColor();
    void latchingButtonShowsAMark();
    void grooveGoesToTheFinger_data();
    void grooveGoesToTheFinger();
    void handleThatIsTouchedStays();
    void pressOnWhatIsNoSliderIsItsOwn();
    void scrollBarGoesAPageOn();
    void scrollBarWithNothingToScrollIsEmpty();
    void cornerOfTwoScrollBarsIsGround();
    void focusIsSeen_data();
    void focusIsSeen();
    void digitsStayWhereANewTextIsDrawn();
};

namespace {

constexpr int kTarget = 48;

void addThemes()
{
    QTest::addColumn<PanelLook::Theme>("theme");
    QTest::newRow("light") << PanelLook::Theme::Light;
    QTest::newRow("dark") << PanelLook::Theme::Dark;
}

void wear(PanelLook::Theme theme, int target = kTarget)
{
    const Theme& colors = Theme::of(theme);
    QApplication::setStyle(new PanelStyle(colors, target));
    QApplication::setPalette(colors.palette());
}

QSize partSize(const QWidget& control, QStyle::ComplexControl complex,
               const QStyleOptionComplex& option, QStyle::SubControl part)
{
    return control.style()->subControlRect(complex, &option, part, &control).size();
}

/// What is touched of each control.
QMap<QString, QSize> touchedSizes()
{
    QMap<QString, QSize> sizes;
    QPushButton button("A");
    sizes["button"] = button.sizeHint();
    button.setCheckable(true);
    sizes["latching button"] = button.sizeHint();
    sizes["check box"] = QCheckBox("A").sizeHint();
    sizes["line field"] = QLineEdit().sizeHint();
    QComboBox list;
    list.addItem("A");
    sizes["drop-down list"] = list.sizeHint();
    sizes["row of a drop-down list"] =
        QSize(kTarget * 3, list.view()->sizeHintForRow(0)); // as wide as the list
    for (const auto orientation : {Qt::Horizontal, Qt::Vertical}) {
        QSlider slider(orientation);
        slider.resize(slider.sizeHint());
        QStyleOptionSlider option;
        option.initFrom(&slider);
        option.orientation = orientation;
        sizes[QString("slider's handle %1").arg(orientation)] =
            partSize(slider, QStyle::CC_Slider, option, QStyle::SC_SliderHandle);
    }
    QScrollBar bar;
    bar.setRange(0, 1000);
    bar.resize(bar.sizeHint().width(), 300);
    QStyleOptionSlider scroll;
    scroll.initFrom(&bar);
    scroll.orientation = Qt::Vertical;
    scroll.maximum = 1000;
    sizes["scroll bar's handle"] =
        partSize(bar, QStyle::CC_ScrollBar, scroll, QStyle::SC_ScrollBarSlider);
    QSpinBox spin;
    spin.resize(spin.sizeHint());
    QStyleOptionSpinBox keys;
    keys.initFrom(&spin);
    sizes["spin key up"] = partSize(spin, QStyle::CC_SpinBox, keys, QStyle::SC_SpinBoxUp);
    sizes["spin key down"] = partSize(spin, QStyle::CC_SpinBox, keys, QStyle::SC_SpinBoxDown);
    QTabBar tabs;
    tabs.addTab("A");
    sizes["tab"] = tabs.tabRect(0).size();
    return sizes;
}

QColor colorAt(QWidget& widget, const QPoint& point)
{
    return widget.grab().toImage().pixelColor(point);
}

} // namespace

Q_DECLARE_METATYPE(norvo::PanelLook::Theme)
Q_DECLARE_METATYPE(norvo::PanelLook::Touch)

void tst_PanelStyle::controlIsLargeEnough_data()
{
    QTest::addColumn<PanelLook::Touch>("touch");
    QTest::addColumn<double>("dpi");
    QTest::addColumn<double>("mm");
    for (const double dpi : {96.0, 160.0}) {
        const QByteArray at = " at " + QByteArray::number(dpi) + " dpi";
        QTest::newRow("fingers" + at) << PanelLook::Touch::Fingers << dpi << 12.7;
        QTest::newRow("gloves" + at) << PanelLook::Touch::Gloves << dpi << 20.0;
    }
}

void tst_PanelStyle::controlIsLargeEnough()
{
    QFETCH(PanelLook::Touch, touch);
    QFETCH(double, dpi);
    QFETCH(double, mm);
    const double pixelsPerMm = dpi / 25.4;
    wear(PanelLook::Theme::Light, TouchSize::pixels(touch, pixelsPerMm));
    const QMap<QString, QSize> sizes = touchedSizes();
    for (auto it = sizes.cbegin(); it != sizes.cend(); ++it) {
        const double least = qMin(it->width(), it->height()) / pixelsPerMm;
        QVERIFY2(least >= mm - 1e-9, qPrintable(QString("%1: %2 mm").arg(it.key()).arg(least)));
    }
}

void tst_PanelStyle::latchedButtonIsToldByColor_data()
{
    addThemes();
}

void tst_PanelStyle::latchedButtonIsToldByColor()
{
    QFETCH(PanelLook::Theme, theme);
    wear(theme);
    QPushButton button;
    button.setCheckable(true);
    button.resize(200, kTarget);
    const QPoint ground(150, 10);
    const QColor off = colorAt(button, ground);
    button.setChecked(true);
    const double ratio = contrast(off, colorAt(button, ground));
    QVERIFY2(ratio >= 3, qPrintable(QString::number(ratio)));
}

/// So that the state is told without colour, too: a ring when off, a disc when on.
void tst_PanelStyle::latchingButtonShowsAMark()
{
    wear(PanelLook::Theme::Light);
    QPushButton button;
    button.resize(200, kTarget);
    const QPoint middle(kTarget / 3, kTarget / 2);
    const QPoint rim(kTarget / 3 - kTarget / 8, kTarget / 2);
    const QPoint ground(150, 10);
    QCOMPARE(colorAt(button, rim), colorAt(button, ground));
    button.setCheckable(true);
    QVERIFY(contrast(colorAt(button, rim), colorAt(button, ground)) >= 3);
    QCOMPARE(colorAt(button, middle), colorAt(button, ground));
    button.setChecked(true);
    QVERIFY(contrast(colorAt(button, middle), colorAt(button, ground)) >= 3);
}

void tst_PanelStyle::grooveGoesToTheFinger_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<bool>("inverted");
    QTest::newRow("level") << Qt::Horizontal << false;
    QTest::newRow("upright") << Qt::Vertical << false;
    QTest::newRow("level, inverted") << Qt::Horizontal << true;
}

void tst_PanelStyle::grooveGoesToTheFinger()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(bool, inverted);
    wear(PanelLook::Theme::Light);
    QSlider slider(orientation);
    slider.setInvertedAppearance(inverted);
    slider.setRange(0, 100);
    const bool isLevel = orientation == Qt::Horizontal;
    slider.resize(isLevel ? QSize(448, kTarget) : QSize(kTarget, 448));
    slider.show();
    // Three quarters of the handle's way from the left or from below.
    const QPoint finger = isLevel ? QPoint(24 + 300, 24) : QPoint(24, 448 - 24 - 300);
    QTest::mouseClick(&slider, Qt::LeftButton, Qt::NoModifier, finger);
    QVERIFY2(qAbs(slider.value() - (inverted ? 25 : 75)) <= 1,
             qPrintable(QString::number(slider.value())));
}

/// A touch beside the middle of the handle moves nothing.
void tst_PanelStyle::handleThatIsTouchedStays()
{
    wear(PanelLook::Theme::Light);
    QSlider slider(Qt::Horizontal);
    slider.setRange(0, 100);
    slider.resize(448, kTarget);
    slider.setValue(50);
    slider.show();
    QTest::mouseClick(&slider, Qt::LeftButton, Qt::NoModifier, QPoint(224 + 15, 24));
    QCOMPARE(slider.value(), 50);
    QTest::mouseClick(&slider, Qt::LeftButton, Qt::NoModifier, QPoint(24, 24));
    QCOMPARE(slider.value(), 0);
}

void tst_PanelStyle::pressOnWhatIsNoSliderIsItsOwn()
{
    wear(PanelLook::Theme::Light);
    QCheckBox box("A");
    box.show();
    QTest::mouseClick(&box, Qt::LeftButton, {}, {kTarget / 2, box.height() / 2});
    QVERIFY(box.isChecked());
}

void tst_PanelStyle::scrollBarGoesAPageOn()
{
    wear(PanelLook::Theme::Light);
    QScrollBar bar;
    bar.setRange(0, 90);
    bar.setPageStep(10);
    bar.resize(kTarget, 300);
    bar.show();
    QTest::mouseClick(&bar, Qt::LeftButton, Qt::NoModifier, QPoint(24, 290));
    QCOMPARE(bar.value(), 10);
    QTest::mouseClick(&bar, Qt::LeftButton, Qt::NoModifier, QPoint(24, 2));
    QCOMPARE(bar.value(), 0);
}

void tst_PanelStyle::scrollBarWithNothingToScrollIsEmpty()
{
    wear(PanelLook::Theme::Light);
    QScrollBar bar(Qt::Vertical);
    bar.resize(kTarget, 200);
    const auto hasHandle = [&bar] {
        const QImage picture = bar.grab().toImage();
        return picture.pixel(kTarget / 2, 100) != picture.pixel(1, 100);
    };
    bar.setRange(0, 10);
    bar.setPageStep(100);
    QVERIFY(hasHandle());
    bar.setRange(0, 0);
    QVERIFY(!hasHandle());
}

void tst_PanelStyle::cornerOfTwoScrollBarsIsGround()
{
    wear(PanelLook::Theme::Light);
    QScrollArea area;
    area.setFrameShape(QFrame::NoFrame);
    area.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    area.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    area.resize(300, 200);
    area.show();
    QVERIFY(QTest::qWaitForWindowExposed(&area));
    const QRect corner(area.viewport()->geometry().bottomRight() + QPoint(1, 1),
                       area.rect().bottomRight());
    QVERIFY(corner.width() > 10 && corner.height() > 10);
    const QImage picture = area.grab(corner).toImage();
    QImage ground(picture.size(), picture.format());
    ground.fill(area.palette().color(QPalette::Window));
    QCOMPARE(picture, ground);
}

void tst_PanelStyle::focusIsSeen_data()
{
    addThemes();
}

void tst_PanelStyle::focusIsSeen()
{
    QFETCH(PanelLook::Theme, theme);
    wear(theme);
    QWidget window;
    window.resize(220, 60);
    window.setFocusPolicy(Qt::StrongFocus);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(QTest::qWaitForWindowActive(&window));
    for (QWidget* control :
         QList<QWidget*>{new QPushButton("A"), new QLineEdit, new QComboBox, new QCheckBox("A")}) {
        control->setParent(&window);
        control->resize(200, kTarget);
        control->show();
        window.setFocus();
        const QImage without = control->grab().toImage();
        control->setFocus(Qt::TabFocusReason);
        QVERIFY(control->hasFocus());
        const QImage with = control->grab().toImage();
        int changed = 0;
        for (int y = 0; y < with.height(); ++y) {
            for (int x = 0; x < with.width(); ++x) {
                changed += contrast(with.pixelColor(x, y), without.pixelColor(x, y)) >= 1.5;
            }
        }
        // At least the outline of a small check box.
        QVERIFY2(changed >= 80,
                 qPrintable(QString("%1 %2").arg(control->metaObject()->className()).arg(changed)));
    }
}

/// What they leave elsewhere would stay when the text changes.
void tst_PanelStyle::digitsStayWhereANewTextIsDrawn()
{
    wear(PanelLook::Theme::Light);
    for (int points = 10; points < 80; ++points) {
        QLabel label("888");
        label.setFont(QFont("DSEG7 Classic", points));
        label.setAlignment(Qt::AlignCenter);
        label.setStyleSheet("background-color: black; color: white");
        label.resize(label.sizeHint());
        label.show();
        const QImage picture = label.grab().toImage();
        QRect drawn;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                drawn |= qRed(picture.pixel(x, y)) > 0 ? QRect(x, y, 1, 1) : QRect();
            }
        }
        QVERIFY(drawn.height() > 5);
        QVERIFY2(label.contentsRect().contains(drawn), qPrintable(QString::number(points)));
        // The air that keeps them off a frame.
        QVERIFY2(drawn.top() > 0 && drawn.bottom() < label.height() - 1,
                 qPrintable(QString::number(points)));
    }
}

NORVO_TEST(tst_PanelStyle)
#include "tst_PanelStyle.moc"
