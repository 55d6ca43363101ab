// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLabel>

#include <utility>

/// A centred text on one of the plates of Looks.h, both of which change often.
///
/// It looks as any label with that style sheet does. What the style draws of a plate is kept and
/// drawn again, and what needs no other room asks for no new layout of the page.
class PlateLabel : public QLabel
{
public:
    PlateLabel();

    void setPlate(const QString& styleSheet); ///< Costs little where it is that already.
    void setPlainText(const QString& text);   ///< As digits are: without marks.

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    using Room = std::pair<QSize, QSize>; ///< The best and the least.

    template <class Change>
    void withoutLayout(const Change& change);
    Room neededRoom() const;
    bool isPlateAlone() const;
    bool canDrawItself(const QPainter& painter) const;

    QString m_plate;
    bool m_isPolished = false;
    bool m_drawsPlate = false; ///< It, and not the style.
};
