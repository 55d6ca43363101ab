// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/PlannedWire.h"

#include <QBasicTimer>
#include <QHash>
#include <QWidget>

class QAction;
class QLabel;
class QLineEdit;
class QTableWidget;

namespace norvo {

class EditSession;
class WireValues;

/// All connections of a panel with their last values, narrowed by typing; keys add, change and
/// remove. To choose one selects both of its devices.
class ConnectionTable : public QWidget
{
    Q_OBJECT

public:
    ConnectionTable(EditSession& session, QWidget* parent);

    QList<QAction*> actions() const;
    /// That of another view of the connections; -1: none. Emits nothing, and selects no device.
    void chooseConnection(int connection);

signals:
    void connectionChosen(int connection); ///< By hand; -1: none is.
    void problem(const QString& text);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    QAction* makeAction(const char* name, const QString& text);
    void fill();
    void hear();
    void refreshValues();
    void narrow();
    void choose();
    void showChosen();
    int current() const; ///< The connection; -1: none.
    void openSheet(int connection);
    void removeCurrent();

    EditSession& m_session;
    WireValues* m_values;
    QLineEdit* m_filter;
    QTableWidget* m_rows; ///< One for each connection, in the order of the panel.
    QLabel* m_about;      ///< The chosen one in full, and why it is fixed.
    QAction* m_add;
    QAction* m_change;
    QAction* m_remove;
    QHash<int, PlannedWire> m_wires; ///< By connection.
    QBasicTimer m_tick;
};

} // namespace norvo
