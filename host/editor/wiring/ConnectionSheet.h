// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/wiring/ports/PortList.h"
#include "host/window/sheet/Sheet.h"

class QComboBox;
class QLabel;

namespace norvo {

class PortColumn;

/// Chooses what to connect with what: outputs at the left, inputs at the right, those that fit
/// first. The others say why not.
class ConnectionSheet : public Sheet
{
    Q_OBJECT

public:
    /// `connection` of the panel is the one to be changed; -1: a new one.
    ConnectionSheet(QWidget& opener, EditSession& session, int connection);

signals:
    void problem(const QString& text);

private:
    void fillOutputs();
    void fillInputs();
    void showFit();
    void join();

    EditSession& m_session;
    const int m_connection;
    const PortList m_ports;
    PortColumn* m_outputs;
    PortColumn* m_inputs;
    QComboBox* m_choices; ///< Where several pairs fit.
    QLabel* m_reason;
    QPushButton* m_key;
    PortFit m_fit;
};

} // namespace norvo
