// SPDX-License-Identifier: GPL-3.0-or-later

// The sizes of PanelStyle.

#include "host/window/look/PanelStyle.h"

#include <QPushButton>

namespace norvo {

int PanelStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                            const QWidget* widget) const
{
    switch (metric) {
    case PM_SliderThickness:
    case PM_SliderControlThickness:
    case PM_SliderLength:
    case PM_ScrollBarExtent:
    case PM_ScrollBarSliderMin:
    case PM_TabBarScrollButtonWidth:
    case PM_MenuScrollerHeight:
        return m_target;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return m_target / 2;
    case PM_CheckBoxLabelSpacing:
        return m_target / 4;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_TabBarTabShiftHorizontal:
    case PM_TabBarTabShiftVertical:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int PanelStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* details) const
{
    if (hint == SH_Slider_AbsoluteSetButtons) {
        // The groove goes to the finger; the handle stays under it.
        return m_isHandlePressed ? Qt::NoButton : Qt::LeftButton;
    }
    return QProxyStyle::styleHint(hint, option, widget, details);
}

QSize PanelStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                   const QSize& contents, const QWidget* widget) const
{
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    switch (type) {
    case CT_PushButton: {
        const auto* const button = qobject_cast<const QPushButton*>(widget);
        const int mark = button && button->isCheckable() ? m_paint.markSize() : 0;
        return QSize(size.width() + m_target / 3 + mark, size.height())
            .expandedTo({2 * m_target, m_target});
    }
    case CT_ComboBox:
        return QSize(size.width() + m_target, size.height()).expandedTo({m_target, m_target});
    case CT_CheckBox:
    case CT_RadioButton:
    case CT_LineEdit:
    case CT_ToolButton:
        return size.expandedTo({m_target, m_target});
    case CT_SpinBox:
        return QSize(size.width() + 2 * m_target, size.height()).expandedTo({0, m_target});
    case CT_TabBarTab:
        return QSize(size.width() + m_target / 2, size.height())
            .expandedTo({2 * m_target, m_target});
    case CT_ItemViewItem:
        return size.expandedTo({0, m_target});
    case CT_MenuItem: {
        const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        const bool isSeparator = item && item->menuItemType == QStyleOptionMenuItem::Separator;
        return isSeparator ? size : size.expandedTo({0, m_target});
    }
    default:
        return size;
    }
}

QRect PanelStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                 SubControl part, const QWidget* widget) const
{
    const auto* const bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    const auto* const spin = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
    if (control == CC_ScrollBar && bar) {
        return scrollBarRect(*bar, part);
    }
    if (control == CC_SpinBox && spin && spin->buttonSymbols != QAbstractSpinBox::NoButtons) {
        return spinBoxRect(*spin, part);
    }
    QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
    if (control == CC_ComboBox && part == SC_ComboBoxEditField) {
        rect = visualRect(option->direction, option->rect,
                          option->rect.adjusted(m_target / 4, 2, -m_target, -2));
    }
    return rect;
}

/// Without arrow keys: a tap beside the handle goes a page on.
QRect PanelStyle::scrollBarRect(const QStyleOptionSlider& option, SubControl part) const
{
    const bool isLevel = option.orientation == Qt::Horizontal;
    const QRect all = option.rect;
    const int length = isLevel ? all.width() : all.height();
    const qint64 range = qint64(option.maximum) - option.minimum;
    const qint64 share = range + option.pageStep;
    const int shown = share > 0 ? int(length * qint64(option.pageStep) / share) : length;
    const int handle = range > 0 ? qMin(length, qMax(shown, m_target)) : length;
    const int start = sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                              length - handle, option.upsideDown);
    const auto along = [&](int from, int size) {
        return isLevel ? visualRect(option.direction, all,
                                    QRect(all.left() + from, all.top(), size, all.height()))
                       : QRect(all.left(), all.top() + from, all.width(), size);
    };
    switch (part) {
    case SC_ScrollBarGroove:
        return all;
    case SC_ScrollBarSlider:
        return along(start, handle);
    case SC_ScrollBarSubPage:
        return along(0, start);
    case SC_ScrollBarAddPage:
        return along(start + handle, length - start - handle);
    default:
        return {};
    }
}

/// Both keys side by side, as high as the field.
QRect PanelStyle::spinBoxRect(const QStyleOptionSpinBox& option, SubControl part) const
{
    const QRect all = option.rect;
    const auto key = [&](int nth) {
        return QRect(all.right() + 1 - nth * m_target, all.top(), m_target, all.height());
    };
    QRect rect = all;
    if (part == SC_SpinBoxUp || part == SC_SpinBoxDown) {
        rect = key(part == SC_SpinBoxUp ? 1 : 2);
    } else if (part == SC_SpinBoxEditField) {
        rect = all.adjusted(m_target / 6, 2, -2 * m_target, -2);
    }
    return visualRect(option.direction, all, rect);
}

} // namespace norvo
