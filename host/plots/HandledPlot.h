// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/plots/PlotLibrary.h"

class QCustomPlot;

namespace norvo {

class Cursor;
class PlotCopy;

/// A copy of a plot with what a hand does on it.
class HandledPlot : public QObject, public GraphView
{
public:
    HandledPlot(QCustomPlot& source, const ReadEarlier& readEarlier,
                const std::function<void()>& changed);

    QWidget& widget() const override;
    bool isHeld() const override;
    bool areValuesFixed() const override;
    bool showsTimes() const override;
    QDateTime heldAt() const override;
    bool isReading() const override;
    bool isAtBeginning() const override;
    bool isAtUnreadable() const override;
    bool isAtCut() const override;
    QString range() const override;
    QByteArray table() const override;
    void hold() override;
    void goLive() override;
    void fixValues(bool areFixed) override;

private:
    PlotCopy* const m_plot;
    Cursor* const m_cursor;
};

} // namespace norvo
