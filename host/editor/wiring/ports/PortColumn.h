// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/wiring/ports/Port.h"

#include <QVector>
#include <QWidget>

#include <optional>

class QLineEdit;
class QListWidget;

namespace norvo {

/// Outputs or inputs of many devices to choose one from, narrowed by typing. What cannot be chosen
/// looks dim and says why.
class PortColumn : public QWidget
{
    Q_OBJECT

public:
    struct Row
    {
        Port port;
        QString detail;
        bool isDim = false;
    };

    explicit PortColumn(const QString& title);

    /// The current port stays, if it is among them.
    void setRows(const QVector<Row>& rows);
    std::optional<Port> current() const; ///< Dim ones too.
    void setCurrent(const Port& port);

signals:
    void currentChanged();

private:
    void narrow();

    QVector<Row> m_rows;
    QLineEdit* m_filter;
    QListWidget* m_list;
};

} // namespace norvo
