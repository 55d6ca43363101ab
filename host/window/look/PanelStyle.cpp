// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/look/PanelStyle.h"

#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QFontInfo>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QSlider>

namespace norvo {

namespace {

ControlPainter::Mark markOf(const QWidget* widget, const QStyleOption& option)
{
    const auto* const button = qobject_cast<const QPushButton*>(widget);
    if (!button || !button->isCheckable()) {
        return ControlPainter::Mark::None;
    }
    return option.state & QStyle::State_On ? ControlPainter::Mark::On : ControlPainter::Mark::Off;
}

/// Seven-segment digits fill the height of their font: without air they touch the frame. A label
/// draws a new text within its contents alone, so the air belongs to these: digits reach beyond
/// their font by up to two pixels, which would stay.
void addAir(QLabel& label)
{
    constexpr int share = 8; // of the height, all around
    if (QFontInfo(label.font()).family().startsWith(QLatin1String("DSEG"))) {
        label.setMargin(label.fontMetrics().height() / share + 2);
    }
}

/// One with a style sheet does not ask for the size of its contents.
bool isSizedBySheet(QWidget* widget)
{
    return qobject_cast<QCheckBox*>(widget) || qobject_cast<QAbstractSpinBox*>(widget);
}

/// A least size takes the place of the one that the widget asks for, so it is set only above that.
void enlarge(QWidget& widget, int target)
{
    const QSize asked = widget.minimumSizeHint();
    if (asked.height() < target) {
        widget.setMinimumHeight(qMax(widget.minimumHeight(), target));
    }
    if (asked.width() < target) {
        widget.setMinimumWidth(qMax(widget.minimumWidth(), target));
    }
}

} // namespace

PanelStyle::PanelStyle(const Theme& theme, int target)
    : QProxyStyle("Fusion"), m_paint(theme, target), m_target(target)
{}

void PanelStyle::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    auto* const label = qobject_cast<QLabel*>(widget);
    if (label && !label->styleSheet().isEmpty()) {
        m_guard.watch(*label);
        addAir(*label);
    } else if (qobject_cast<QSlider*>(widget) || isSizedBySheet(widget)) {
        widget->installEventFilter(this);
    }
}

void PanelStyle::unpolish(QWidget* widget)
{
    widget->removeEventFilter(&m_guard);
    widget->removeEventFilter(this);
    QProxyStyle::unpolish(widget);
}

/// A slider asks only how presses act in general; so what this one is on is found out before.
bool PanelStyle::eventFilter(QObject* watched, QEvent* event)
{
    auto* const widget = qobject_cast<QWidget*>(watched);
    if (event->type() == QEvent::Show && isSizedBySheet(widget)) {
        enlarge(*widget, m_target);
    } else if (event->type() == QEvent::MouseButtonPress && qobject_cast<QSlider*>(widget)) {
        const auto& slider = *qobject_cast<QSlider*>(widget);
        QStyleOptionSlider option;
        option.initFrom(&slider);
        option.orientation = slider.orientation();
        option.minimum = slider.minimum();
        option.maximum = slider.maximum();
        option.sliderPosition = slider.sliderPosition();
        option.upsideDown =
            slider.orientation() == Qt::Horizontal
                ? slider.invertedAppearance() != (option.direction == Qt::RightToLeft)
                : !slider.invertedAppearance();
        option.subControls = SC_SliderGroove | SC_SliderHandle;
        m_isHandlePressed =
            hitTestComplexControl(CC_Slider, &option, static_cast<QMouseEvent*>(event)->pos(),
                                  &slider) == SC_SliderHandle;
    }
    return QProxyStyle::eventFilter(watched, event);
}

void PanelStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const
{
    switch (element) {
    case PE_PanelButtonCommand:
        return m_paint.button(*painter, *option, markOf(widget, *option));
    case PE_IndicatorCheckBox:
        return m_paint.checkMark(*painter, *option);
    case PE_PanelLineEdit:
        return m_paint.field(*painter, *option);
    case PE_FrameLineEdit:
    case PE_PanelScrollAreaCorner: // Where two scroll bars meet is the page's ground.
        return;
    case PE_FrameFocusRect:
        return m_paint.focusRing(*painter, option->rect);
    case PE_Frame:
    case PE_FrameTabWidget:
        return m_paint.frame(*painter, option->rect);
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void PanelStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const
{
    const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
    const auto* const tab = qstyleoption_cast<const QStyleOptionTab*>(option);
    if (element == CE_PushButtonLabel && button) {
        drawButtonLabel(*button, painter, widget);
    } else if (element == CE_TabBarTabShape && tab) {
        m_paint.tab(*painter, *tab);
    } else if (element == CE_ProgressBarGroove) {
        m_paint.progressGroove(*painter, *option);
    } else {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void PanelStyle::drawButtonLabel(const QStyleOptionButton& option, QPainter* painter,
                                 const QWidget* widget) const
{
    QStyleOptionButton label(option);
    label.palette.setColor(QPalette::ButtonText, m_paint.buttonText(option));
    if (markOf(widget, option) != ControlPainter::Mark::None) {
        const int mark = qMin(m_paint.markSize(), label.rect.width() / 4);
        label.rect.setLeft(label.rect.left() + mark);
    }
    QProxyStyle::drawControl(CE_PushButtonLabel, &label, painter, widget);
}

void PanelStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const
{
    const auto part = [&](SubControl which) {
        return subControlRect(control, option, which, widget);
    };
    const auto* const slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    const auto* const combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    const auto* const spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
    if (control == CC_Slider && slider) {
        m_paint.slider(*painter, *slider, part(SC_SliderGroove), part(SC_SliderHandle));
    } else if (control == CC_ScrollBar && slider) {
        m_paint.scrollBar(*painter, *slider, part(SC_ScrollBarSlider));
    } else if (control == CC_ComboBox && combo) {
        m_paint.comboBox(*painter, *combo);
    } else if (control == CC_SpinBox && spin) {
        m_paint.spinBox(*painter, *spin, part(SC_SpinBoxUp), part(SC_SpinBoxDown));
    } else {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}

} // namespace norvo
