// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/graphs/ToolSetting.h"
#include "host/window/marks/Overlay.h"

#include <QSet>
#include <QTimer>

#include <functional>

class BaseWidget;

namespace norvo {

class CornerKey;
class Panel;
class ToolPane;

/// Opens the tools of a graph: a small key in its lower corner, or, where the graph is too small
/// for one, a long press on it. The tab key reaches it either way. While they are closed the graph
/// is as its device has it.
class GraphTools : public Overlay
{
    Q_OBJECT

public:
    static constexpr int kLongPressMs = 600;

    /// Over each of the displays that shows curves; each owned by the page that it is on.
    static void addTo(const Panel& panel, const QSet<QString>& devices,
                      const std::function<ToolSetting(const QString& device)>& settingOf);

    GraphTools(BaseWidget& display, const ToolSetting& setting);

    ToolPane* pane() const; ///< Null while they are closed.
    void open();
    void close();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    QRect area(const QRect& display) const override;
    bool isWanted() const override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* plot() const; ///< The one that is seen. Null: it was deleted.
    bool hasRoomForKey() const;
    void watchPress(const QEvent& event);

    const ToolSetting m_setting;
    CornerKey* const m_key;
    QPointer<ToolPane> m_pane;
    QTimer m_longPress;
    QPoint m_pressed; ///< On the screen.
};

} // namespace norvo
