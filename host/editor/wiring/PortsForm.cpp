// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/PortsForm.h"

#include "host/catalogue/Catalogue.h"
#include "host/editor/EditSession.h"
#include "host/editor/wiring/ports/ListFont.h"
#include "host/editor/wiring/ports/PortRow.h"
#include "host/editor/wiring/WireValues.h"
#include "host/window/layout/FingerScrollArea.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kTickMs = 500;

/// Each value of a named output leaves as text, too.
PlannedWire textOf(const QString& device, const QString& output)
{
    return {device, output + "(QString)", {}, {}};
}

QLabel* addText(QVBoxLayout& layout, const QString& text, bool isHeading)
{
    auto* const label = new QLabel(text);
    setListFont(*label);
    QFont font = label->font();
    font.setBold(isHeading);
    label->setFont(font);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    layout.addWidget(label);
    return label;
}

} // namespace

PortsForm::PortsForm(EditSession& session, QWidget* parent)
    : QWidget(parent), m_session(session), m_values(new WireValues(this))
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    connect(&session, &EditSession::changed, this, &PortsForm::follow);
    connect(&session, &EditSession::selectionChanged, this, &PortsForm::follow);
    follow();
}

bool PortsForm::isFor(const EditSession& session, const QString& device)
{
    const DeviceSetting* const setting = session.device(device);
    const TypeWords* const words =
        setting ? session.catalogue().words(setting->type.text) : nullptr;
    return words && words->takesPorts;
}

/// Rows stay as long as the ports have the same names, with what is being typed into them.
void PortsForm::follow()
{
    const QString id = m_session.selection().value(0);
    const DeviceSetting* const device = isFor(m_session, id) ? m_session.device(id) : nullptr;
    QStringList wanted;
    QStringList there;
    for (const PortSetting& port : device ? device->ports : QVector<PortSetting>()) {
        wanted.append((port.isOutput ? "> " : "< ") + port.name.text);
    }
    for (const PortRow* row : qAsConst(m_rows)) {
        if (!row->isNew()) {
            there.append((row->isOutput() ? "> " : "< ") + row->name());
        }
    }
    wanted.sort();
    there.sort();
    if (!device || id != m_device || wanted != there) {
        clear();
        if (device) {
            build(*device);
        }
    }
    for (PortRow* row : qAsConst(m_rows)) {
        for (const PortSetting& port : device->ports) {
            if (port.name.text == row->name() && port.isOutput == row->isOutput()) {
                row->setDefinition(port.definition.text);
            }
        }
    }
    hear();
}

void PortsForm::clear()
{
    m_device.clear();
    m_rows.clear();
    if (m_content) {
        m_content->hide();
        m_content->deleteLater(); // One of its fields may have asked for this.
        m_content = nullptr;
    }
}

void PortsForm::build(const DeviceSetting& device)
{
    m_device = device.id.text;
    auto* const page = new QWidget;
    auto* const rows = new QVBoxLayout(page);
    rows->setContentsMargins(0, 0, 0, 0);
    const QString fixed = m_session.whyFixed(m_device);
    if (!fixed.isEmpty()) {
        addText(*rows, fixed, false);
    }
    addSide(*rows, device, false);
    addSide(*rows, device, true);
    rows->addStretch(1);
    for (PortRow* row : qAsConst(m_rows)) {
        if (!fixed.isEmpty()) {
            row->setFixed();
        }
    }
    m_content = new FingerScrollArea(page);
    layout()->addWidget(m_content);
}

void PortsForm::addSide(QVBoxLayout& rows, const DeviceSetting& device, bool isOutput)
{
    const TypeWords& words = *m_session.catalogue().words(device.type.text);
    const QString hint = isOutput ? words.outputDefinition : words.inputDefinition;
    addText(rows, isOutput ? tr("Outputs of %1").arg(m_device) : tr("Inputs of %1").arg(m_device),
            true);
    const auto addRow = [&](const QString& name) {
        auto* const row = new PortRow(m_session, m_device, isOutput, name, hint);
        rows.addWidget(row);
        m_rows.append(row);
        return row;
    };
    for (const PortSetting& port : device.ports) {
        if (port.isOutput == isOutput) {
            addRow(port.name.text);
        }
    }
    // The form has been built anew by the time that this is heard.
    connect(addRow({}), &PortRow::added, this, [this, isOutput] {
        for (PortRow* row : qAsConst(m_rows)) {
            if (row->isNew() && row->isOutput() == isOutput) {
                row->focusName();
            }
        }
    });
    if (!hint.isEmpty()) {
        addText(rows, hint, false);
    }
}

void PortsForm::hear()
{
    QVector<PlannedWire> wires;
    for (const PortRow* row : qAsConst(m_rows)) {
        if (isVisible() && row->isOutput() && !row->isNew()) {
            wires.append(textOf(m_device, row->name()));
        }
    }
    m_values->hear(wires, m_session.live().panel());
}

void PortsForm::showEvent(QShowEvent* event)
{
    m_tick.start(kTickMs, this);
    hear();
    QWidget::showEvent(event);
}

void PortsForm::hideEvent(QHideEvent* event)
{
    m_tick.stop();
    m_values->hear({}, m_session.live().panel());
    QWidget::hideEvent(event);
}

void PortsForm::timerEvent(QTimerEvent* /*event*/)
{
    for (PortRow* row : qAsConst(m_rows)) {
        if (row->isOutput() && !row->isNew()) {
            row->setValue(m_values->text(textOf(m_device, row->name())));
        }
    }
}

} // namespace norvo
