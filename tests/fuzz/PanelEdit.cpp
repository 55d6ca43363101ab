// SPDX-License-Identifier: GPL-3.0-or-later

#include "EditAndUndo.h"
#include "FuzzInput.h"
#include "Harness.h"
#include "host/panel/edit/ConnectionEdit.h"
#include "host/panel/edit/DeviceEdit.h"
#include "host/panel/edit/PageEdit.h"
#include "host/panel/edit/PanelKeyEdit.h"
#include "host/panel/edit/PanelTree.h"
#include "host/panel/edit/ParamEdit.h"
#include "host/panel/edit/PortEdit.h"
#include "host/panel/file/PanelFile.h"

using norvo::FuzzInput;
using norvo::require;
using norvo::YamlEdit;
namespace PanelTree = norvo::PanelTree;
namespace DeviceEdit = norvo::DeviceEdit;

namespace {

norvo::Cells cellsFrom(FuzzInput& choices)
{
    norvo::Cells cells;
    cells.row = choices.choice(5) - 1;
    cells.column = choices.choice(5) - 1;
    cells.rowspan = 1 + choices.choice(3);
    cells.colspan = 1 + choices.choice(3);
    return cells;
}

YamlEdit::Error editDevice(YamlEdit& edit, FuzzInput& choices, const QString& id,
                           const QString& text)
{
    switch (choices.choice(7)) {
    case 0:
        return DeviceEdit::add(edit, {DeviceEdit::freeId(edit, "new"), text, {{"widget/row", "1"}}},
                               id);
    case 1:
        return DeviceEdit::remove(edit, id);
    case 2:
        return DeviceEdit::rename(edit, id, text);
    case 3:
        return DeviceEdit::place(edit, id, cellsFrom(choices));
    case 4:
        return DeviceEdit::setKey(edit, id, "access", text);
    case 5: {
        DeviceEdit::NewIds ids;
        return DeviceEdit::paste(edit, DeviceEdit::copy(edit, PanelTree::deviceIds(edit)),
                                 cellsFrom(choices), ids);
    }
    default:
        return norvo::PortEdit::add(edit, id, choices.choice(2) == 0, text, text);
    }
}

YamlEdit::Error editAny(YamlEdit& edit, FuzzInput& choices, const QString& text)
{
    const QStringList ids = PanelTree::deviceIds(edit);
    const QString id = ids.isEmpty() ? text : ids[choices.choice(ids.size())];
    switch (choices.choice(8)) {
    case 0:
        return norvo::ParamEdit::setParam(edit, id, text, text);
    case 1:
        return norvo::ParamEdit::removeParam(edit, id, text);
    case 2:
        return norvo::ConnectionEdit::add(edit, id + ".output", id + ".input");
    case 3:
        return norvo::ConnectionEdit::remove(edit, choices.choice(4));
    case 4:
        return norvo::PanelKeyEdit::set(edit, "title", text);
    case 5:
        return norvo::PageEdit::add(edit, PanelTree::pages(edit), text);
    default:
        return editDevice(edit, choices, id, text);
    }
}

} // namespace

/// First line: choices; second: the text to write; then a panel. An edit that is done leaves a text
/// that reads, one that is refused the text as it was, and undoing gives equal bytes.
NORVO_HARNESS(PanelEdit)
{
    FuzzInput parts(input);
    FuzzInput choices(parts.line());
    const QString text = QString::fromUtf8(parts.line());
    const QByteArray before = parts.rest();
    norvo::Diagnostics diagnostics("panel.yaml");
    norvo::PanelFile::parse(before, "panel.yaml", diagnostics);
    YamlEdit edit(before);
    if (edit.error() || diagnostics.hasErrors()) {
        return;
    }
    const auto editOnce = [&] { return editAny(edit, choices, text); };
    norvo::editAndUndo(edit, 1 + choices.choice(3), editOnce, [&](const QByteArray&) {
        require(!YamlEdit(edit.text()).error(), "an edit leaves a text that reads");
    });
}
