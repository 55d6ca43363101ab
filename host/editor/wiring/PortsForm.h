// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBasicTimer>
#include <QVector>
#include <QWidget>

class QVBoxLayout;

namespace norvo {

class EditSession;
class PortRow;
class WireValues;
struct DeviceSetting;

/// The outputs and inputs that a panel's author has named at the selected device: each in a row
/// with its name, its definition and, of an output, its value now. The last row of each kind adds
/// one. Empty where no such device is selected.
class PortsForm : public QWidget
{
    Q_OBJECT

public:
    PortsForm(EditSession& session, QWidget* parent);

    /// Whether the form has rows for a device.
    static bool isFor(const EditSession& session, const QString& device);

signals:
    void problem(const QString& text); ///< Not of a field: its faults stand below it.

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void follow();
    void build(const DeviceSetting& device);
    void addSide(QVBoxLayout& rows, const DeviceSetting& device, bool isOutput);
    void clear();
    void hear();

    EditSession& m_session;
    WireValues* m_values;
    QString m_device; ///< That has the rows.
    QWidget* m_content = nullptr;
    QVector<PortRow*> m_rows;
    QBasicTimer m_tick;
};

} // namespace norvo
