// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/palette/TypeSymbol.h"

#include "host/catalogue/TypeWords.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

namespace norvo {

namespace {

constexpr int kMostNames = 4; ///< On either side.
constexpr int kPoints = 8;
constexpr int kPin = 6; // pixels, from the box outwards

/// Behind those that each device of the type has, a mark for what its author names.
QStringList namesOf(const QVector<MethodWords>& methods, bool takesMore)
{
    QStringList names;
    for (const MethodWords& method : methods) {
        if (!method.isForWidget && !names.contains(method.name())) {
            names.append(method.name());
        }
    }
    names = names.mid(0, takesMore ? kMostNames - 1 : kMostNames);
    return takesMore ? names + QStringList(QChar(0x2026)) : names;
}

/// On one side of the box, each with a pin.
void drawNames(QPainter& painter, const QRect& box, const QStringList& names, bool isOutput)
{
    const int height = box.height() / qMax(1, names.size());
    const QRect half = isOutput ? box.adjusted(box.width() / 2, 0, -3, 0)
                                : box.adjusted(3, 0, -box.width() / 2, 0);
    for (int i = 0; i < names.size(); ++i) {
        const QRect line(half.left(), box.top() + i * height, half.width(), height);
        const int y = line.center().y();
        const int edge = isOutput ? box.right() : box.left();
        painter.drawLine(edge, y, isOutput ? edge + kPin : edge - kPin, y);
        painter.drawText(line, Qt::AlignVCenter | (isOutput ? Qt::AlignRight : Qt::AlignLeft),
                         painter.fontMetrics().elidedText(names[i], Qt::ElideRight, line.width()));
    }
}

} // namespace

QImage TypeSymbol::draw(const TypeWords& words, const QSize& size, const QPalette& palette)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(palette.color(QPalette::Window));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font = QGuiApplication::font();
    font.setPointSize(kPoints);
    painter.setFont(font);
    painter.setPen(palette.color(QPalette::WindowText));
    painter.setBrush(palette.color(QPalette::AlternateBase));
    const QRect box = QRect(QPoint(), size).adjusted(kPin + 1, 2, -kPin - 2, -3);
    painter.drawRoundedRect(box, 6, 6);
    drawNames(painter, box, namesOf(words.inputs, words.takesPorts), false);
    drawNames(painter, box, namesOf(words.outputs, words.takesPorts), true);
    return picture;
}

} // namespace norvo
