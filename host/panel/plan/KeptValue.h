// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/TypeKnowledge.h"

#include <QObject>
#include <QVariant>

class BaseDevice;
class BaseWidget;

namespace norvo {

/// Keeps what an operator has given to a device from one run to the next.
///
/// What a wire has given to it is not kept: it comes again. A wire is told from a hand by what
/// happens between beginWire() and endWire().
class KeptValue : public QObject
{
    Q_OBJECT

public:
    /// Under these names it stands in the state of a device.
    static const QString kValue;
    static const QString kSettings;

    KeptValue(BaseDevice& device, KeptMethods methods);

    /// Identifies the settings that a value belongs to: all parameters of the device but its place.
    /// A value that was given under others may mean something else.
    QString settings() const;
    /// What is put back leaves the device as if it had come by a wire, too.
    void setSending(bool isSent) { m_isSent = isSent; }
    /// Takes what an earlier run has saved. False where it is no such value.
    bool setSaved(const QString& text);
    /// Puts the saved value back, once, and from then on reports what is given.
    void start(BaseWidget* widget);
    /// Has a widget that has taken the place of another show the latest value. Nothing is sent.
    void showIn(BaseWidget& widget) const;

signals:
    void given(QString text);

public slots:
    void beginWire() { ++m_wires; }
    void endWire() { --m_wires; }

private slots:
    void note(double value);
    void note(bool value);
    void note(int value);
    void note(const QString& value);

private:
    void report(const QString& text);
    static void give(const QVariant& value, QObject& receiver, const QString& method);

    BaseDevice& m_device;
    const KeptMethods m_methods;
    bool m_isSent = false;
    QVariant m_saved;
    QVariant m_latest; ///< Whoever gave it; invalid before the first.
    bool m_isStarted = false;
    int m_wires = 0; ///< That give it a value just now.
};

} // namespace norvo
