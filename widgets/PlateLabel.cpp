// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlateLabel.h"

#include "widgets/PlatePicture.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QTextDocument>

PlateLabel::PlateLabel()
{
    setAlignment(Qt::AlignCenter);
}

/// A label asks for a new layout of all that is around it with each text and each style sheet, but
/// not while it counts as hidden.
template <class Change>
void PlateLabel::withoutLayout(const Change& change)
{
    setAttribute(Qt::WA_WState_Hidden);
    change();
    setAttribute(Qt::WA_WState_Hidden, false);
}

/// What it is given of a layout.
PlateLabel::Room PlateLabel::neededRoom() const
{
    return {sizeHint().expandedTo(minimumSize()), minimumSizeHint().expandedTo(minimumSize())};
}

void PlateLabel::setPlate(const QString& styleSheet)
{
    const bool wasPlate = !m_plate.isEmpty() && this->styleSheet() == m_plate;
    m_plate = styleSheet;
    if (this->styleSheet() == styleSheet) {
        return;
    }
    if (isVisible() && wasPlate) { // which needs the same room
        withoutLayout([&] { setStyleSheet(styleSheet); });
    } else {
        setStyleSheet(styleSheet);
    }
}

void PlateLabel::setPlainText(const QString& text)
{
    if (!isVisible()) {
        setText(text);
    } else if (this->text() != text) {
        const Room before = neededRoom();
        withoutLayout([&] { setText(text); });
        if (neededRoom() != before) {
            updateGeometry();
        }
    }
}

/// Whether nothing but the plate's own style sheet has a say in its look.
bool PlateLabel::isPlateAlone() const
{
    if (m_plate.isEmpty() || styleSheet() != m_plate || !qApp->styleSheet().isEmpty()) {
        return false;
    }
    for (const QWidget* around = parentWidget(); around; around = around->parentWidget()) {
        if (!around->styleSheet().isEmpty()) {
            return false;
        }
    }
    return true;
}

/// What asks for a style sheet before the label is polished has it read twice: its polish, which
/// reads it, tells all that the change would.
bool PlateLabel::event(QEvent* event)
{
    if (event->type() == QEvent::StyleChange && !m_isPolished) {
        return true;
    }
    const bool done = QLabel::event(event);
    m_isPolished = m_isPolished || event->type() == QEvent::Polish;
    if (event->type() == QEvent::Polish || event->type() == QEvent::StyleChange) {
        m_drawsPlate = testAttribute(Qt::WA_StyledBackground) && isPlateAlone();
        if (m_drawsPlate) {
            setAttribute(Qt::WA_StyledBackground, false);
        }
    }
    return done;
}

bool PlateLabel::canDrawItself(const QPainter& painter) const
{
    return alignment() == Qt::AlignCenter && !text().isEmpty() &&
           textInteractionFlags() == Qt::LinksAccessibleByMouse &&
           (textFormat() == Qt::PlainText ||
            (textFormat() == Qt::AutoText && !Qt::mightBeRichText(text()))) &&
           PlatePicture::canBeDrawnBy(painter, size());
}

void PlateLabel::paintEvent(QPaintEvent* event)
{
    if (!m_drawsPlate) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    const PlatePicture& plate = PlatePicture::of(*this);
    if (plate.isNull() || !canDrawItself(painter)) {
        style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
        painter.end();
        QLabel::paintEvent(event);
        return;
    }
    plate.draw(painter, size());
    const int margins = margin();
    const QRect inside = contentsRect().adjusted(margins, margins, -margins, -margins);
    const auto direction =
        text().isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight;
    style()->drawItemText(&painter, inside, Qt::AlignCenter | direction, option.palette,
                          isEnabled(), text(), foregroundRole());
}
