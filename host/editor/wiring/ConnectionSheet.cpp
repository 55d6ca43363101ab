// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/ConnectionSheet.h"

#include "host/editor/EditSession.h"
#include "host/editor/wiring/ports/PortColumn.h"
#include "host/editor/wiring/WireEdits.h"
#include "host/window/look/TouchSize.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

ConnectionSheet::ConnectionSheet(QWidget& opener, EditSession& session, int connection)
    : Sheet(opener, connection < 0 ? tr("New connection") : tr("Change a connection")),
      m_session(session),
      m_connection(connection),
      m_ports(session, connection),
      m_outputs(new PortColumn(tr("From this output"))),
      m_inputs(new PortColumn(tr("To this input"))),
      m_choices(new QComboBox),
      m_reason(new QLabel),
      m_key(addKey(connection < 0 ? tr("Connect") : tr("Change")))
{
    m_outputs->setObjectName("outputs");
    m_inputs->setObjectName("inputs");
    m_choices->setObjectName("choices");
    m_choices->setAccessibleName(tr("What is to be passed on?"));
    m_choices->setMinimumHeight(TouchSize::pixels(PanelLook::Touch::Fingers, *screen()));
    m_reason->setWordWrap(true);
    m_key->setObjectName("connect");
    auto* const columns = new QHBoxLayout;
    columns->addWidget(m_outputs, 1);
    columns->addWidget(m_inputs, 1);
    content().addLayout(columns, 1);
    content().addWidget(m_choices);
    content().addWidget(m_reason);
    fillOutputs();
    const QVector<ConnectionSetting>& all = session.live().description().connections;
    if (connection >= 0 && connection < all.size()) {
        const auto portOf = [](const Endpoint& end, bool isOutput) {
            return Port{
                end.device.text, end.method.text.section('(', 0, 0).trimmed(), isOutput, {}, {}};
        };
        m_outputs->setCurrent(portOf(all[connection].from, true));
        fillInputs();
        m_inputs->setCurrent(portOf(all[connection].to, false));
    }
    connect(m_outputs, &PortColumn::currentChanged, this, &ConnectionSheet::fillInputs);
    connect(m_inputs, &PortColumn::currentChanged, this, &ConnectionSheet::showFit);
    connect(m_key, &QPushButton::clicked, this, &ConnectionSheet::join);
    showFit();
}

void ConnectionSheet::fillOutputs()
{
    QVector<PortColumn::Row> rows;
    for (const DeviceSetting& device : m_session.live().description().devices) {
        for (const Port& port : m_ports.outputs(device.id.text)) {
            rows.append({port, port.carries(), false});
        }
    }
    m_outputs->setRows(rows);
    fillInputs();
}

/// Those that fit come first.
void ConnectionSheet::fillInputs()
{
    const std::optional<Port> output = m_outputs->current();
    QVector<PortColumn::Row> rows;
    for (const DeviceSetting& device : m_session.live().description().devices) {
        for (const Port& port : m_ports.inputs(device.id.text)) {
            const PortFit fit = output ? m_ports.fit(*output, port) : PortFit();
            rows.append(
                {port, fit.whyNot.isEmpty() ? port.carries() : fit.whyNot, !fit.whyNot.isEmpty()});
        }
    }
    std::stable_partition(rows.begin(), rows.end(),
                          [](const PortColumn::Row& row) { return !row.isDim; });
    m_inputs->setRows(rows);
}

void ConnectionSheet::showFit()
{
    const std::optional<Port> output = m_outputs->current();
    const std::optional<Port> input = m_inputs->current();
    m_fit = output && input ? m_ports.fit(*output, *input) : PortFit();
    m_choices->clear();
    for (const WireChoice& choice : qAsConst(m_fit.choices)) {
        m_choices->addItem(choice.carries + ":  " + choice.from + " -> " + choice.to);
    }
    m_choices->setVisible(m_fit.choices.size() > 1);
    m_reason->setText(m_fit.whyNot);
    m_reason->setVisible(!m_fit.whyNot.isEmpty());
    m_key->setEnabled(m_fit.isPossible());
}

void ConnectionSheet::join()
{
    const WireChoice choice = m_fit.choices.value(std::max(0, m_choices->currentIndex()));
    const QVector<ConnectionSetting>& all = m_session.live().description().connections;
    const QString note = WireEdits::noteOn(
        m_ports.circle(choice.from.section('.', 0, 0), choice.to.section('.', 0, 0)));
    const QString fault = m_connection < 0
                              ? WireEdits::add(m_session, choice)
                              : WireEdits::replace(m_session, all.value(m_connection), choice);
    if (!fault.isEmpty()) {
        m_reason->setText(fault);
        m_reason->show();
        return;
    }
    if (!note.isEmpty()) {
        emit problem(note);
    }
    accept();
}

} // namespace norvo
