// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QSize>
#include <QString>

#include <memory>

class QWidget;

/// So many displays of one kind in a grid, on view.
class Stage
{
public:
    virtual ~Stage() = default;

    virtual QWidget& window() = 0;
    virtual void feed(int display, double value) = 0;
};

struct StagePlan
{
    QString type;   ///< Of the devices.
    QString params; ///< Of each, as in a panel file.
    int count;
    int columns;
    QSize size; ///< Of the window.
};

/// By a panel, as the program runs it.
std::unique_ptr<Stage> panelStage(const StagePlan& plan);

/// By Qt's own labels or progress bars, without a panel.
std::unique_ptr<Stage> labelStage(const StagePlan& plan);
std::unique_ptr<Stage> progressBarStage(const StagePlan& plan);

/// What the pixels cost at least: one widget that draws the text, or two rectangles, of what has
/// changed.
std::unique_ptr<Stage> drawnTextStage(const StagePlan& plan);
std::unique_ptr<Stage> drawnBarStage(const StagePlan& plan);
