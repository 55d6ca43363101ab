// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/plan/Node.h"
#include "host/panel/run/Panel.h"
#include "host/window/ErrorTile.h"
#include "host/window/PanelPages.h"
#include "host/window/layout/PageGrid.h"

#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"

#include <QCoreApplication>
#include <QSet>
#include <QStringList>

#include <algorithm>

/// What a panel is, to be compared with another one: devices in their order, parameters, who is
/// connected to them, where they stand and how large.
class PanelState
{
public:
    enum class Params {
        All,
        AsWritten ///< Without those that the devices themselves store.
    };

    /// With pages of that size, whatever stands around them. Devices are to have nothing to do.
    static PanelState of(const norvo::Panel& panel, norvo::PanelPages& pages, const QSize& size,
                         Params params = Params::All)
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        pages.setFixedSize(size);
        QCoreApplication::processEvents();
        PanelState state;
        state.m_pages = pages.areas().join(", ");
        for (const norvo::Node* const node : panel.nodes()) {
            state.m_devices.append(deviceOf(*node, panel, pages, params));
        }
        pages.setMinimumSize(0, 0);
        pages.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        return state;
    }

    /// Empty: none. Places are compared on pages where all ask for the same room in both: a cell
    /// asks for what its values have needed at any time.
    static QString difference(const PanelState& live, const PanelState& start)
    {
        if (live.m_pages != start.m_pages) {
            return "pages " + live.m_pages + "\nstart " + start.m_pages;
        }
        const int count = std::max(live.m_devices.size(), start.m_devices.size());
        const QSet<QString> valued = pagesOfOtherHints(live, start);
        for (int i = 0; i < count; ++i) {
            const Device one = live.m_devices.value(i);
            const Device other = start.m_devices.value(i);
            const bool isSized = !valued.contains(one.area);
            if (one.what != other.what || (isSized && one.place != other.place)) {
                return "live  " + one.what + toText(one.place) + "\nstart " + other.what +
                       toText(other.place);
            }
        }
        return {};
    }
    int devices() const { return m_devices.size(); }
    /// Of how many the places can be compared.
    static int comparable(const PanelState& live, const PanelState& start)
    {
        const QSet<QString> valued = pagesOfOtherHints(live, start);
        return int(std::count_if(
            live.m_devices.cbegin(), live.m_devices.cend(),
            [&valued](const Device& device) { return !valued.contains(device.area); }));
    }

private:
    struct Device
    {
        QString what;
        QString area;
        QRect place; ///< Of what is on no page that is seen it is not known.
        QString hints;
    };

    static QSet<QString> pagesOfOtherHints(const PanelState& live, const PanelState& start)
    {
        QSet<QString> pages;
        for (int i = 0; i < live.m_devices.size(); ++i) {
            if (live.m_devices[i].hints != start.m_devices.value(i).hints) {
                pages.insert(live.m_devices[i].area);
            }
        }
        return pages;
    }

    static Device deviceOf(const norvo::Node& node, const norvo::Panel& panel,
                           const norvo::PanelPages& pages, Params params)
    {
        const QString id = node.id();
        QStringList incoming = node.device()->getIncomingConnections();
        incoming.sort();
        const norvo::Cells cells = panel.cells().value(id);
        QWidget* const seen = node.isShowable() && !panel.widget(id)
                                  ? pages.findChild<norvo::ErrorTile*>(id)
                                  : static_cast<QWidget*>(panel.widget(id));
        Device device;
        device.what =
            QString("%1 [%2] from [%3] cells %4,%5,%6,%7; runs %8; ")
                .arg(id, paramsOf(*node.device(), params), incoming.join(' '))
                .arg(cells.row)
                .arg(cells.column)
                .arg(cells.rowspan)
                .arg(cells.colspan)
                .arg(node.state() == norvo::Node::State::Running && node.device()->isRunning());
        if (seen) {
            const bool isVisible = seen->isVisibleTo(&pages);
            device.area = pages.areaOf(*seen);
            device.what += QString("on \"%1\", seen %2, of %3 parts ")
                               .arg(device.area)
                               .arg(isVisible)
                               .arg(seen->findChildren<QWidget*>().size());
            if (isVisible) {
                const norvo::PageGrid& grid = *pages.grid(device.area);
                device.place = seen->geometry();
                device.hints = hintsOf(*seen, grid);
            }
        }
        return device;
    }

    static QString paramsOf(const BaseDevice& device, Params which)
    {
        QStringList texts;
        for (const Param& param : device.params()) {
            if (which == Params::All || !param.isPersistent()) {
                texts.append(param.name() + '=' + param.value());
            }
        }
        texts.sort();
        return texts.join(' ');
    }

    /// Of the cell, which remembers them, at its width.
    static QString hintsOf(QWidget& widget, const norvo::PageGrid& grid)
    {
        const QLayoutItem& cell = *grid.itemAt(grid.indexOf(&widget));
        return toText({QPoint(), cell.sizeHint()}) + toText({QPoint(), cell.minimumSize()}) +
               QString::number(cell.heightForWidth(cell.geometry().width()));
    }

    static QString toText(const QRect& rect)
    {
        return QString("%1,%2 %3x%4 ")
            .arg(QString::number(rect.x()), QString::number(rect.y()),
                 QString::number(rect.width()), QString::number(rect.height()));
    }

    QString m_pages;
    QList<Device> m_devices;
};
