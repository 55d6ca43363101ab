// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/wiring/ports/Port.h"

#include <QObject>
#include <QPushButton>
#include <QRect>

#include <functional>

namespace norvo {

/// The outputs and inputs of a device as large keys over its edges: inputs at the left, outputs at
/// the right. Where there are more than find room, the last key of a side opens the list of all.
class PortKeys : public QObject
{
    Q_OBJECT

public:
    /// A key to be; `whyNot`: it looks dim.
    struct Key
    {
        Port port;
        QString whyNot;
    };

    /// On `canvas`, where the device covers `device`.
    PortKeys(QWidget& canvas, const QRect& device, const QVector<Key>& inputs,
             const QVector<Key>& outputs);
    ~PortKeys() override;

    void close(); ///< Takes the keys away; may be called by one of them.

    int count() const { return m_keys.size(); }
    void focusNext(bool isForward); ///< From the key with the focus, round and round.
    /// Where the line of a port begins; empty: it has no key.
    QRect keyRect(const Port& port) const;

signals:
    void tapped(Port port);
    void listWanted(bool ofOutputs);

private:
    void addSide(const QVector<Key>& keys, bool isOutput);
    QPushButton* addKey(const QString& text, bool isDim, const std::function<void()>& tap);
    void place(const QRect& device);

    QWidget& m_canvas;
    QVector<QPushButton*> m_inputs;
    QVector<QPushButton*> m_outputs;
    QVector<QPushButton*> m_keys; ///< All.
    QVector<Port> m_ports;        ///< Of the keys; without a name for the key of a list.
};

} // namespace norvo
