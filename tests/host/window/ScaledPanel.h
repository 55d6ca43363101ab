// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/fit/ScaledPage.h"

#include "ShownPanel.h"

#include <QStyle>

inline const QSize kDesign(640, 400);
inline const QByteArray kForm = "fit: scale\ndesign: 640x400\ndevices:\n";
inline const QByteArray kPanel =
    kForm + "  caption: {device: label, params: {Value: Scaled, widget: {row: 0, fontSize: 24}}}\n"
            "  key: {device: button, params: {text: Key, widget: {row: 0, column: 1}}}\n"
            "  graph: {device: output_graph, params: {widget: {row: 1}}}\n"
            "  gauge: {device: output_lumeno, params: {widget: {row: 1, column: 1}}}\n"
            "  qml:\n"
            "    device: qml_widget\n"
            "    params:\n"
            "      sourceType: parameter\n"
            "      sourceCode: 'import QtQuick 2.15; Rectangle { width: 300; height: 80; color: "
            "\"navy\"; Text { color: "
            "\"white\"; text: \"Face\"; font.pixelSize: 30; anchors.centerIn: parent } }'\n"
            "      widget: {row: 2, colspan: 2}\n";

inline norvo::ScaledPage* viewOf(const ShownPanel& shown)
{
    return shown.window.findChild<norvo::ScaledPage*>();
}

/// The part of a window of that size that the page covers.
inline QRect pageIn(const QSize& size)
{
    return QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter,
                               kDesign.scaled(size, Qt::KeepAspectRatio), {QPoint(), size});
}

/// Where a point of a widget of the page is in the window.
inline QPoint placeOf(const ShownPanel& shown, const QWidget* widget, const QPoint& point)
{
    const QRect page = pageIn(shown.window.size());
    return page.topLeft() + QPoint(widget->mapTo(shown.window.page(), point) *
                                   (double(page.width()) / kDesign.width()));
}

inline QPoint middleOf(const ShownPanel& shown, const QWidget* widget)
{
    return placeOf(shown, widget, widget->rect().center());
}

inline void tapOn(const ShownPanel& shown, const QWidget* widget)
{
    QTest::mouseClick(viewOf(shown)->viewport(), Qt::LeftButton, {}, middleOf(shown, widget));
}

inline QImage pictureOf(ShownPanel& shown)
{
    return shown.window.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

inline void tapAt(const ShownPanel& shown, const QPoint& place)
{
    QTest::mouseClick(viewOf(shown)->viewport(), Qt::LeftButton, {}, place);
}

/// Whether the document is seen: its first picture takes a while.
inline bool showsQml(ShownPanel& shown)
{
    const QWidget* const face = shown.panel.widget("qml");
    const QPoint place = face->mapTo(shown.window.page(), face->rect().center() - QPoint(80, 0));
    return QTest::qWaitFor(
        [&] {
            const QColor colour = pictureOf(shown).pixelColor(viewOf(shown)->mapFromScene(place));
            return colour == QColor("navy");
        },
        10000);
}

/// Of windows.
inline void addSizes()
{
    QTest::addColumn<QSize>("size");
    for (const QSize& size : {QSize(800, 480), QSize(1280, 800), QSize(1920, 1080),
                              QSize(3840, 2160), QSize(320, 240)}) {
        QTest::addRow("%dx%d", size.width(), size.height()) << size;
    }
}

/// How hard its edges are: the squares of the steps from each pixel to the next one.
inline double sharpness(const QImage& picture)
{
    double sum = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 1; x < picture.width(); ++x) {
            const int step = qGray(picture.pixel(x, y)) - qGray(picture.pixel(x - 1, y));
            sum += step * step;
        }
    }
    return sum;
}
