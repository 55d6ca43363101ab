// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/TextCells.h"

#include "host/catalogue/Catalogue.h"
#include "host/panel/file/PanelDescription.h"

#include <algorithm>

namespace norvo {

namespace {

QString valueOf(const DeviceSetting& device, const QString& param)
{
    const auto found =
        std::find_if(device.params.cbegin(), device.params.cend(), [&param](const auto& one) {
            return one.name.text.compare(param, Qt::CaseInsensitive) == 0;
        });
    return found == device.params.cend() ? QString() : found->value.text;
}

} // namespace

CellsById cellsOfText(const PanelDescription& panel, const Catalogue& catalogue)
{
    QVector<Cells> requests;
    QStringList ids;
    for (const DeviceSetting& device : panel.devices) {
        const TypeWords* const words = catalogue.words(device.type.text);
        if (words && words->hasWidget) {
            requests.append(
                readCells([&device](const QString& param) { return valueOf(device, param); }));
            ids.append(device.id.text);
        }
    }
    const Placement placement(requests, panel.look.pages);
    CellsById cells;
    for (int i = 0; i < ids.size(); ++i) {
        cells.insert(ids[i], placement.cells()[i]);
    }
    return cells;
}

} // namespace norvo
