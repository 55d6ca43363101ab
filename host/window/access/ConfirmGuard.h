// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/access/Intent.h"

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QWidget>

#include <functional>

class BaseWidget;

namespace norvo {

/// Takes what a hand does to the devices that are to be asked for, finds out what it would change,
/// and hands that on as a question. Nothing of it reaches the device before the answer; what comes
/// by wire does. For as long as it lives.
class ConfirmGuard : public QObject
{
    Q_OBJECT

public:
    using IsAsked = std::function<bool(const BaseWidget& device)>;
    using Ask = std::function<void(BaseWidget& device, const Intent& intent)>;

    ConfirmGuard(IsAsked isAsked, Ask ask);

    void perform(const Intent& intent); ///< After a Yes: it passes.
    bool isPerforming() const { return m_isPassing; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool take(BaseWidget& device, QObject& watched, QEvent& event);
    bool takeMouse(BaseWidget& device, QWidget& part, const QMouseEvent& event);
    void release(BaseWidget& device, QWidget& part, const QPoint& position);
    bool takeWheel(BaseWidget& device, QWidget& control, QEvent& event);
    bool takeKey(BaseWidget& device, QWidget& part, QKeyEvent& event);
    bool takeOfList(BaseWidget& device, QWidget& part, QEvent& event);
    void askLater(BaseWidget& device, QWidget& field);
    void askFor(BaseWidget& device, const std::optional<Intent>& intent);

    const IsAsked m_isAsked;
    const Ask m_ask;
    QPointer<QWidget> m_pressed; ///< The part that the hand is on.
    QPoint m_from;               ///< In that part; on the screen for a drop-down list.
    bool m_isPassing = false;    ///< What comes is tried or performed.
    bool m_isEntering = false;   ///< A dialog for a field is open.
};

} // namespace norvo
