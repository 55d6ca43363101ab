// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/KeepPlaces.h"

#include "host/panel/edit/DeviceEdit.h"
#include "host/panel/edit/OwnDevices.h"
#include "host/panel/edit/PanelTree.h"

#include <tuple>

namespace norvo {

namespace {

bool isSame(const Cells& a, const Cells& b)
{
    const auto all = [](const Cells& one) {
        return std::tie(one.area, one.row, one.column, one.rowspan, one.colspan);
    };
    return all(a) == all(b);
}

} // namespace

YamlEdit::Error keepPlaces(YamlEdit& edit, const CellsById& before, const QStringList& meant,
                           const std::function<CellsById(const YamlEdit&)>& cellsOf)
{
    YamlEdit next = edit;
    const QStringList ids = PanelTree::deviceIds(next);
    // What has got cells of its own may move others.
    for (bool isMoved = true; isMoved;) {
        isMoved = false;
        const CellsById now = cellsOf(next);
        for (const QString& id : ids) {
            if (meant.contains(id) || !before.contains(id) || !now.contains(id) ||
                isSame(before[id], now[id])) {
                continue;
            }
            const QByteArray text = next.text();
            if (YamlEdit::Error error = DeviceEdit::place(next, id, before[id])) {
                return error;
            }
            isMoved = isMoved || text != next.text();
        }
    }
    edit = next;
    return std::nullopt;
}

CellsById cellsByText(const YamlEdit& edit, const CellsById& known)
{
    QVector<Cells> wanted;
    QStringList ids;
    const OwnDevices devices(edit);
    for (const QString& id : PanelTree::deviceIds(edit)) {
        const YamlNode* const device = devices.find(id);
        if (device && known.contains(id)) {
            ids += id;
            wanted.append(readCells([device](const QString& param) {
                return PanelTree::paramOf(*device, param).value_or(QString());
            }));
        }
    }
    const Placement placement(wanted, PanelTree::pages(edit));
    CellsById cells;
    for (int i = 0; i < ids.size(); ++i) {
        cells.insert(ids[i], placement.cells()[i]);
    }
    return cells;
}

} // namespace norvo
