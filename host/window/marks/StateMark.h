// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/marks/Overlay.h"

#include <optional>

namespace norvo {

/// What the host adds to a display that cannot say it by itself: over a readout, that no value has
/// come yet; beside a lamp whether it is on, off or without a value, by shape and not by
/// colour.
class StateMark : public Overlay
{
    Q_OBJECT

public:
    enum class Kind { Value, Lamp };

    static constexpr int kLampSize = 22;            ///< Pixels, across.
    static constexpr int kLampRoom = kLampSize + 4; ///< That the lamp leaves free for it.

    StateMark(QWidget& display, Kind kind, std::optional<bool> state);

public slots:
    void take();          ///< A value has come: the mark over a readout goes for good.
    void take(bool isOn); ///< The state of a lamp.

protected:
    QRect area(const QRect& display) const override;
    void paintEvent(QPaintEvent* event) override;

private:
    void describe();
    void paintLamp(QPainter& painter) const;
    void paintValue(QPainter& painter) const;

    const Kind m_kind;
    std::optional<bool> m_state;
};

} // namespace norvo
