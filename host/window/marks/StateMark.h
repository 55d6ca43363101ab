// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>

#include <optional>

namespace norvo {

/// What the host adds to a display that cannot say it by itself: over a readout, that no value has
/// come yet; beside a lamp whether it is on, off or without a value, by shape and not by
/// colour.
///
/// Follows its display on the page and lets everything through that is meant for it.
class StateMark : public QWidget
{
    Q_OBJECT

public:
    enum class Kind { Value, Lamp };

    static constexpr int kLampSize = 22;            ///< Pixels, across.
    static constexpr int kLampRoom = kLampSize + 4; ///< That the lamp leaves free for it.

    /// Owned by the page that the display stands on.
    StateMark(QWidget& display, Kind kind, std::optional<bool> state);

public slots:
    void take();          ///< A value has come: the mark over a readout goes for good.
    void take(bool isOn); ///< The state of a lamp.

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void follow();
    void describe();
    void paintLamp(QPainter& painter) const;
    void paintValue(QPainter& painter) const;

    const QPointer<QWidget> m_display;
    const Kind m_kind;
    std::optional<bool> m_state;
};

} // namespace norvo
