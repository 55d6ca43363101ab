// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/PlannedWire.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QVariant>
#include <QVector>

#include <memory>

namespace norvo {

class Panel;
class SignalTap;

/// The last values of the connections of a panel, heard for as long as this exists.
class WireValues : public QObject
{
    Q_OBJECT

public:
    explicit WireValues(QObject* parent);
    ~WireValues() override;

    /// Hears the outputs of these wires and no others. Those that are heard already keep their
    /// values.
    void hear(const QVector<PlannedWire>& wires, const Panel& panel);

    /// In one line; "-" before the first value.
    QString text(const PlannedWire& wire) const;
    qint64 ageMs(const PlannedWire& wire) const; ///< -1 before the first.

private:
    struct Heard;

    const Heard* find(const PlannedWire& wire) const;

    QElapsedTimer m_clock;
    QHash<QString, std::shared_ptr<Heard>> m_heard; ///< By "device.signature".
};

} // namespace norvo
