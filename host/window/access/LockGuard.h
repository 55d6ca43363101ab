// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/access/Hands.h"

#include <QObject>
#include <QPoint>
#include <QPointer>

#include <functional>

class BaseWidget;

namespace norvo {

/// Keeps everything that comes from a hand from the devices that are locked, whatever their widgets
/// are made of; what comes by wire reaches them. For as long as it lives.
///
/// The wheel and the keys that a device does not get go on to the page. Tab moves the focus on.
class LockGuard : public QObject
{
    Q_OBJECT

public:
    using IsLocked = std::function<bool(const BaseWidget& device)>;

    explicit LockGuard(IsLocked isLocked);

    /// To be called when devices were locked: takes hands off them, and closes what was open over
    /// the panel without taking what stands in it.
    void enforce();

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void touched(BaseWidget* device); ///< A locked one, by a tap, Space, Enter or a shortcut.
    void input();                     ///< A hand has done something, wherever.
    void handOn(bool isAny);          ///< Whether one is on a device now.

private:
    bool refuse(BaseWidget& device, QEvent& event);
    void refuseMouse(BaseWidget& device, const QEvent& event);

    const IsLocked m_isLocked;
    Hands m_hands;
    QPointer<BaseWidget> m_tapped; ///< A press on it was refused; its release makes it a tap.
    QPoint m_tapPosition;
    bool m_isEnforcing = false;
};

} // namespace norvo
