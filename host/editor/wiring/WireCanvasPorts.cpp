// SPDX-License-Identifier: GPL-3.0-or-later

// How one connects outputs and inputs on the canvas.

#include "host/editor/EditSession.h"
#include "host/editor/wiring/DeviceShelf.h"
#include "host/editor/wiring/PickSheet.h"
#include "host/editor/wiring/PortKeys.h"
#include "host/editor/wiring/ports/PortList.h"
#include "host/editor/wiring/WireCanvas.h"
#include "host/editor/wiring/WireEdits.h"

#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

void WireCanvas::tapDevice(const QString& device)
{
    m_cursor = device;
    if (!m_armed) {
        selectConnection(-1);
        m_session.select({device});
        openPorts(device);
        return;
    }
    const QVector<Port> fitting = m_fitting.value(device);
    const QVector<Port> all = m_ports->opposites(*m_armed, device);
    if (fitting.size() == 1) {
        join(fitting.first());
    } else if (!fitting.isEmpty()) {
        openPorts(device);
    } else if (all.isEmpty()) {
        emit problem(m_armed->isOutput ? tr("%1 has no inputs").arg(device)
                                       : tr("%1 has no outputs").arg(device));
    } else {
        emit problem(m_ports->fit(*m_armed, all.first()).whyNot);
    }
    update();
}

void WireCanvas::tapLine(int line)
{
    closePorts();
    const WireLine tapped = m_scene.lines()[line];
    selectConnection(tapped.connection);
    if (!tapped.away.isEmpty()) {
        goToOtherEnd();
    }
}

void WireCanvas::openPorts(const QString& device)
{
    closePorts();
    m_shelf->showDevice(device);
    const auto keysOf = [this](const QVector<Port>& ports) {
        QVector<PortKeys::Key> keys;
        for (const Port& port : ports) {
            keys.append({port, m_armed ? m_ports->fit(*m_armed, port).whyNot : QString()});
        }
        std::stable_partition(keys.begin(), keys.end(),
                              [](const PortKeys::Key& key) { return key.whyNot.isEmpty(); });
        return keys;
    };
    const bool isInputWanted = !m_armed || m_armed->isOutput;
    const bool isOutputWanted = !m_armed || !m_armed->isOutput;
    m_open = device;
    m_keys = std::make_unique<PortKeys>(
        *this, m_scene.deviceRect(device),
        isInputWanted ? keysOf(m_ports->inputs(device)) : QVector<PortKeys::Key>(),
        isOutputWanted ? keysOf(m_ports->outputs(device)) : QVector<PortKeys::Key>());
    if (m_keys->count() == 0) {
        closePorts();
        emit problem(tr("%1 has no outputs and no inputs").arg(device));
        return;
    }
    connect(m_keys.get(), &PortKeys::tapped, this, &WireCanvas::tapPort);
    connect(m_keys.get(), &PortKeys::listWanted, this, &WireCanvas::listPorts);
}

void WireCanvas::closePorts()
{
    if (m_keys) {
        m_keys->close();
        m_keys.release()->deleteLater(); // One of its keys may have been tapped.
        m_open.clear();
        setFocus();
    }
}

void WireCanvas::listPorts(bool ofOutputs)
{
    QVector<Port> ports = ofOutputs ? m_ports->outputs(m_open) : m_ports->inputs(m_open);
    if (m_armed) {
        std::stable_partition(ports.begin(), ports.end(),
                              [this](const Port& port) { return m_ports->fits(*m_armed, port); });
    }
    QVector<PickSheet::Row> rows;
    for (const Port& port : qAsConst(ports)) {
        rows.append({port.name + ": " + port.carries(), port.meaning,
                     m_armed ? m_ports->fit(*m_armed, port).whyNot : QString()});
    }
    auto* const sheet = new PickSheet(
        *this, ofOutputs ? tr("Outputs of %1").arg(m_open) : tr("Inputs of %1").arg(m_open), rows);
    connect(sheet, &PickSheet::picked, this, [this, ports](int row) { tapPort(ports[row]); });
    sheet->present();
}

void WireCanvas::tapPort(const Port& port)
{
    if (m_armed && m_armed->isOutput != port.isOutput) {
        join(port);
    } else {
        arm(port);
    }
}

/// Lights up what the port can be connected with.
void WireCanvas::arm(const Port& port)
{
    closePorts();
    m_armed = port;
    m_fitting.clear();
    QHash<QString, DeviceShelf::Mark> marks;
    for (const QString& device : m_scene.devices()) {
        QVector<Port> fitting;
        for (const Port& other : m_ports->opposites(port, device)) {
            if (m_ports->fits(port, other)) {
                fitting.append(other);
            }
        }
        marks.insert(device,
                     fitting.isEmpty() ? DeviceShelf::Mark::FitsNot : DeviceShelf::Mark::Fits);
        m_fitting.insert(device, fitting);
    }
    m_shelf->setMarks(marks);
    update();
}

void WireCanvas::disarm()
{
    m_armed.reset();
    m_fitting.clear();
    m_shelf->setMarks({});
    update();
}

void WireCanvas::join(const Port& port)
{
    const PortFit fit = m_ports->fit(*m_armed, port);
    if (!fit.isPossible()) {
        emit problem(fit.whyNot);
        return;
    }
    if (fit.choices.size() == 1) {
        connectPorts(fit.choices.first());
        return;
    }
    QVector<PickSheet::Row> rows;
    for (const WireChoice& choice : fit.choices) {
        rows.append({choice.carries, choice.from + " -> " + choice.to, {}});
    }
    auto* const sheet = new PickSheet(*this, tr("What is to be passed on?"), rows);
    connect(sheet, &PickSheet::picked, this,
            [this, fit](int row) { connectPorts(fit.choices[row]); });
    sheet->present();
}

void WireCanvas::connectPorts(const WireChoice& choice)
{
    const QString from = choice.from.section('.', 0, 0);
    const QString to = choice.to.section('.', 0, 0);
    const QString note = WireEdits::noteOn(m_ports->circle(from, to));
    const QString fault = WireEdits::add(m_session, choice);
    if (!fault.isEmpty()) {
        emit problem(fault);
        return;
    }
    m_session.select({from});
    selectConnection(m_session.live().description().connections.size() - 1);
    if (!note.isEmpty()) {
        emit problem(note);
    }
}

} // namespace norvo
