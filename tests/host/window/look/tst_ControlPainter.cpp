// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/look/PanelStyle.h"
#include "TestMain.h"

#include <QSlider>
#include <QSpinBox>
#include <QStyleOption>
#include <QtTest>

using namespace norvo;

namespace {

constexpr int kTarget = 48;

/// The places in a row or column of a picture that have another colour than its first.
QPair<int, int> drawnAlong(const QImage& picture, bool isRow, int at)
{
    const int length = isRow ? picture.width() : picture.height();
    const auto colour = [&](int i) { return isRow ? picture.pixel(i, at) : picture.pixel(at, i); };
    int first = -1;
    int last = -1;
    for (int i = 1; i < length; ++i) {
        if (colour(i) != colour(0)) {
            first = first < 0 ? i : first;
            last = i;
        }
    }
    return {first, last};
}

} // namespace

/// What the controls look like in the panel's style.
class tst_ControlPainter : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void uprightGrooveIsTheLevelOneTurned();
    void arrowOfADisabledFieldIsQuiet();
};

void tst_ControlPainter::initTestCase()
{
    const Theme& colors = Theme::of(PanelLook::Theme::Light);
    QApplication::setStyle(new PanelStyle(colors, kTarget));
    QApplication::setPalette(colors.palette());
}

void tst_ControlPainter::uprightGrooveIsTheLevelOneTurned()
{
    const auto grooveOf = [](Qt::Orientation orientation, int value) {
        const bool isLevel = orientation == Qt::Horizontal;
        QSlider slider(orientation);
        slider.resize(isLevel ? QSize(400, kTarget) : QSize(kTarget, 400));
        slider.setValue(value);
        return drawnAlong(slider.grab().toImage(), !isLevel, 200);
    };
    for (const int value : {0, 99}) { // Empty and filled where it is looked at.
        const auto level = grooveOf(Qt::Horizontal, value);
        QVERIFY(level.first > 0 && level.second < kTarget - 1);
        QCOMPARE(grooveOf(Qt::Vertical, value), level);
    }
}

void tst_ControlPainter::arrowOfADisabledFieldIsQuiet()
{
    const Theme& colors = Theme::of(PanelLook::Theme::Light);
    QSpinBox field;
    field.resize(200, kTarget);
    QStyleOptionSpinBox option;
    option.initFrom(&field);
    option.rect = field.rect();
    const QRect up =
        field.style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, &field);
    const auto has = [&](const QColor& colour) {
        const QImage picture = field.grab(up).toImage();
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y) == colour) {
                    return true;
                }
            }
        }
        return false;
    };
    field.setValue(50); // Both arrows have somewhere to go.
    QVERIFY(has(colors.text));
    QVERIFY(!has(colors.quiet));
    field.setEnabled(false);
    QVERIFY(has(colors.quiet));
    QVERIFY(!has(colors.text));
}

NORVO_TEST(tst_ControlPainter)
#include "tst_ControlPainter.moc"
