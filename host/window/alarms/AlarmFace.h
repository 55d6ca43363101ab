// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/alarms/AlarmPage.h"

#include <QObject>

#include <memory>

namespace norvo {

class AlarmDots;
class AlarmStrip;
class Panel;
class PanelPages;
class PanelWindow;

/// Puts the alarms of a panel into its window: the part of the strip, the list behind it, the marks
/// at the pages, and F8, which gives the strip the focus.
class AlarmFace : public QObject
{
    Q_OBJECT

public:
    /// Before the panel starts. `tableFile` is where the history is saved as a table.
    AlarmFace(AlarmService& service, PanelWindow& window, PanelPages& pages,
              const QString& tableFile);
    ~AlarmFace() override;

    void complete(const Panel& panel); ///< Once each plan is applied; the panel outlives this.

private:
    void openList();
    void goTo(const QString& device);

    AlarmService& m_service;
    PanelWindow& m_window;
    PanelPages& m_pages;
    const Panel* m_panel = nullptr;
    AlarmPlaces m_places;
    AlarmStrip* m_strip; ///< The window owns it.
    std::unique_ptr<AlarmDots> m_dots;
};

} // namespace norvo
