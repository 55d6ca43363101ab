// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

#include <optional>

class BaseWidget;

namespace norvo {

/// The last value of a device that has one output only, of yes or no or of a number. Belongs to
/// the device's widget.
class LastValue : public QObject
{
    Q_OBJECT

public:
    /// Only such a device is followed, and once only.
    static void follow(BaseWidget& widget);
    static const LastValue* of(const BaseWidget& widget); ///< Null where it is not followed.

    bool isState() const { return m_isState; }              ///< Of yes or no, which are 1 and 0.
    std::optional<double> value() const { return m_value; } ///< None before the first.

private slots:
    void set(double value) { m_value = value; }
    void set(bool value) { m_value = value; }

private:
    LastValue(QObject* widget, bool isState) : QObject(widget), m_isState(isState) {}

    const bool m_isState;
    std::optional<double> m_value;
};

} // namespace norvo
