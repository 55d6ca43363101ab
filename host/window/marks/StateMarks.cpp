// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/marks/StateMarks.h"

#include "host/panel/run/Panel.h"
#include "host/window/marks/StateMark.h"

#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"

#include <QGridLayout>

namespace norvo {

namespace {

/// As QObject::connect() takes it.
QByteArray signalCode(const ShownSignal& shown)
{
    return QByteArray::number(QSIGNAL_CODE) + shown.signature.toLatin1();
}

} // namespace

void StateMarks::listen(const PanelPlan& plan)
{
    for (const auto& node : plan.made) {
        const auto shown = m_knowledge.shownSignal(node->setting().type.text);
        if (shown && node->device()) {
            m_heard.insert(node->device(), {});
            connect(node->device(), signalCode(*shown), this,
                    shown->isState ? SLOT(take(bool)) : SLOT(take()));
        }
    }
}

void StateMarks::take()
{
    m_heard[sender()].hasValue = true;
}

void StateMarks::take(bool isOn)
{
    m_heard[sender()].state = isOn;
}

void StateMarks::show(const Panel& panel)
{
    for (const Node* node : panel.nodes()) {
        BaseDevice* const device = node->device();
        const auto heard = m_heard.constFind(device);
        if (heard == m_heard.constEnd()) {
            continue;
        }
        disconnect(device, nullptr, this, nullptr);
        const auto shown = m_knowledge.shownSignal(node->setting().type.text);
        BaseWidget* const widget = panel.widget(node->id());
        if (!widget || !widget->parentWidget() || heard->hasValue) {
            continue;
        }
        if (shown->isState) {
            const bool isMirrored = widget->isRightToLeft();
            widget->getLayout()->setContentsMargins(isMirrored ? 0 : StateMark::kLampRoom, 0,
                                                    isMirrored ? StateMark::kLampRoom : 0, 0);
        }
        auto* const mark = new StateMark(
            *widget, shown->isState ? StateMark::Kind::Lamp : StateMark::Kind::Value, heard->state);
        connect(device, signalCode(*shown), mark, shown->isState ? SLOT(take(bool)) : SLOT(take()));
        connect(widget, &QObject::destroyed, mark, &QObject::deleteLater);
    }
    m_heard.clear();
}

} // namespace norvo
