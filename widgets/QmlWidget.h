// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseWidget.h"

#include <QPointer>

class QmlDeviceImpl;
class QQuickItem;
class QQuickWidget;

/// Shows the QML item of a QmlGuiDevice, at least at the item's own size, on what lies behind.
///
/// The item lies in an empty root item, its `parent`, that always has the size of the widget. It
/// belongs to the device and outlives the widget.
class QmlWidget : public BaseWidget
{
    Q_OBJECT

public:
    QmlWidget(QmlDeviceImpl* impl, BaseGuiDevice* device, QWidget* parent);

    void initialise() override; ///< Logs a critical message where there is nothing to show.
    void deinitialise() override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void buildQuickWidget();
    void makeTransparent();
    void adopt(QQuickItem* item);

    QPointer<QmlDeviceImpl> m_impl;
    QPointer<QQuickWidget> m_quickWidget;
};
