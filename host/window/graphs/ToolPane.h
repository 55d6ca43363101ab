// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/graphs/ToolSetting.h"
#include "host/window/marks/Overlay.h"

#include <QPointer>

#include <memory>

class BaseWidget;
class QHBoxLayout;
class QLabel;

namespace norvo {

class GraphView;
class ToolKey;

/// The tools over a graph: what it shows, to be looked at, a line above that says whether it is
/// live, and the keys below. It lies over the graph, larger than it where the keys need that, and
/// moves nothing on the page.
class ToolPane : public Overlay
{
    Q_OBJECT

public:
    /// `plot` is of graphs only, in `display`, and may be deleted before.
    ToolPane(BaseWidget& display, QWidget& plot, const ToolSetting& setting);
    ~ToolPane() override;

    QWidget& plot() const; ///< The copy.

    /// Where a plot lies on the page that its device stands on.
    static QRect placeOnPage(const QWidget& plot, const QWidget& page);

signals:
    void closed();

protected:
    QRect area(const QRect& display) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override; ///< Goes no further.
    void paintEvent(QPaintEvent* event) override;      ///< Draws the edge.

private:
    void addKeys(QHBoxLayout& row);
    void followView();
    void save(ToolKey& key, const QString& end, const QByteArray& content);
    QByteArray picture() const;

    const QPointer<QWidget> m_shown;
    const ToolSetting m_setting;
    const std::unique_ptr<GraphView> m_view;
    QLabel* const m_state;
    ToolKey* m_pause = nullptr;
    ToolKey* m_range = nullptr;
};

} // namespace norvo
