// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/templates/DeviceGroup.h"

#include "host/editor/EditSession.h"
#include "host/editor/TextCells.h"
#include "host/panel/edit/DeviceEdit.h"
#include "host/panel/file/Diagnostics.h"
#include "host/panel/file/PanelFile.h"

namespace norvo {

namespace {

constexpr QChar kMark = u' '; // before an id that is another's in the panel

CellMap::Places placesOf(const PanelDescription& group, const Catalogue& catalogue)
{
    const CellsById cells = cellsOfText(group, catalogue);
    CellMap::Places places;
    for (auto one = cells.cbegin(); one != cells.cend(); ++one) {
        places.insert(kMark + one.key(), *one);
    }
    return places;
}

} // namespace

CellMap::Places DeviceGroup::placesAt(const PanelDescription& group, const Catalogue& catalogue,
                                      const Cells& target)
{
    return CellMap::shifted(placesOf(group, catalogue), target);
}

QString DeviceGroup::put(EditSession& session, const QString& what, const QByteArray& text,
                         const Cells& target)
{
    Diagnostics diagnostics({});
    const PanelDescription group = PanelFile::parse(text, {}, diagnostics);
    if (const auto error = diagnostics.firstError()) {
        return tr("These are no devices of a panel: %1").arg(error->text);
    }
    if (group.devices.isEmpty()) {
        return tr("No devices have been copied");
    }
    const CellMap::Places places =
        CellMap(session.live().cells()).atFree(placesOf(group, session.catalogue()), target);
    QStringList ids;
    QString fault = session.change(what, [&](YamlEdit& edit) {
        Cells page; // None moves here: each is given its cells below.
        page.row = 0;
        page.column = 0;
        page.area = target.area;
        DeviceEdit::NewIds added;
        YamlEdit::Error error = DeviceEdit::paste(edit, text, page, added);
        for (const auto& [before, id] : qAsConst(added)) {
            const auto there = places.constFind(kMark + before);
            if (there != places.cend() && !error) {
                error = DeviceEdit::place(edit, id, *there);
            }
            ids += id;
        }
        return error ? error : session.keepPlaces(edit, ids);
    });
    if (fault.isEmpty()) {
        session.select(ids);
    }
    return fault;
}

} // namespace norvo
