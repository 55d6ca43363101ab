// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/PageEdit.h"

#include "host/panel/edit/DeviceEdit.h"
#include "host/panel/edit/LineEdits.h"
#include "host/panel/edit/OwnDevices.h"
#include "host/panel/edit/PanelTree.h"
#include "host/panel/edit/ParamEdit.h"
#include "host/yaml/Quote.h"

#include "norvo/Categories.h"

#include <QSet>

namespace norvo {

namespace {

using Error = PageEdit::Error;
using Path = YamlEdit::Path;

const QString kPages = QStringLiteral("pages");

Error fixedInTemplate(const QString& id, const QString& use)
{
    return TextError{{},
                     QString("%1 comes from the template that %2 uses; change it there")
                         .arg(inQuotes(id), inQuotes(use))};
}

/// Writes the list of pages, keeping of the old one what stays.
Error writePages(YamlEdit& edit, const QStringList& pages)
{
    const QStringList old = PanelTree::pages(edit);
    if (old.isEmpty() && !PanelTree::valueOf(&edit.root(), kPages)) {
        QVector<YamlNodePtr> names;
        for (const QString& page : pages) {
            names.append(YamlTree::text(page));
        }
        return PanelTree::insertKey(edit, kPages, PanelTree::list(names, true));
    }
    for (int i = 0; i < pages.size(); ++i) {
        const QString index = QString::number(i);
        Error error;
        if (i >= old.size()) {
            error = edit.add({kPages}, YamlTree::text(pages[i]));
        } else if (old[i] != pages[i]) {
            error = edit.setText({kPages, index}, pages[i]);
        }
        if (error) {
            return error;
        }
    }
    for (int i = old.size() - 1; i >= pages.size(); --i) {
        if (Error error = edit.remove({kPages, QString::number(i)})) {
            return error;
        }
    }
    return std::nullopt;
}

QString checkedName(const YamlEdit& edit, const CellsById& cells, const QString& name)
{
    if (name.trimmed().isEmpty()) {
        return "a page needs a name";
    }
    bool isKnown = PanelTree::pages(edit).contains(name);
    for (const Cells& one : cells) {
        isKnown = isKnown || one.area == name;
    }
    return isKnown ? QString("there is a page %1 already").arg(inQuotes(name)) : QString();
}

/// The weights of its rows and columns follow the page.
Error renameWeights(YamlEdit& edit, const QString& page, const QString& newName)
{
    for (const QString& key : {QString("rows"), QString("columns")}) {
        const YamlNode* const weights = PanelTree::valueOf(&edit.root(), key);
        if (!page.isEmpty() && PanelTree::valueOf(weights, page)) {
            const bool isLast = newName.isEmpty() && weights->entries.size() == 1;
            const Path path = isLast ? Path{key} : Path{key, page};
            if (Error error =
                    newName.isEmpty() ? edit.remove(path) : edit.renameKey(path, newName)) {
                return error;
            }
        }
    }
    return std::nullopt;
}

Error setArea(YamlEdit& edit, const QString& id, const QString& area)
{
    const YamlNode& device = *PanelTree::device(edit, id);
    if (!PanelTree::isUse(device)) {
        return ParamEdit::setParam(edit, id, kWidgetArea, area);
    }
    const Path at{"devices", id, "at"};
    if (!PanelTree::valueOf(&device, "at")) {
        return edit.insert({"devices", id}, "at", YamlTree::map({{"area", YamlTree::text(area)}}));
    }
    return PanelTree::valueOf(PanelTree::valueOf(&device, "at"), "area")
               ? edit.setText(at + Path{"area"}, area)
               : edit.insert(at, "area", YamlTree::text(area));
}

/// Names the page at those of its devices that it did not need to be named at so far.
Error nameFirstPage(YamlEdit& edit, const CellsById& cells, const QString& first)
{
    const OwnDevices devices(edit);
    QSet<QString> there;
    for (auto one = cells.cbegin(); one != cells.cend(); ++one) {
        if (one->area == first) {
            there.insert(devices.ownerOf(one.key()));
        }
    }
    for (const QString& id : PanelTree::deviceIds(edit)) {
        if (there.contains(id) && PanelTree::areaOf(*devices.find(id)).isEmpty()) {
            if (Error error = setArea(edit, id, first)) {
                return error;
            }
        }
    }
    return std::nullopt;
}

} // namespace

Error PageEdit::add(YamlEdit& edit, const QStringList& pages, const QString& name)
{
    if (edit.error()) {
        return edit.error();
    }
    const QStringList before = pages.isEmpty() ? QStringList{"Main"} : pages;
    if (name.trimmed().isEmpty() || before.contains(name)) {
        return TextError{{},
                         name.trimmed().isEmpty()
                             ? "a page needs a name"
                             : QString("there is a page %1 already").arg(inQuotes(name))};
    }
    YamlEdit next = edit;
    Error error = writePages(next, before + QStringList{name});
    if (!error) {
        edit = next;
    }
    return error;
}

Error PageEdit::rename(YamlEdit& edit, const CellsById& cells, const QString& page,
                       const QString& newName)
{
    if (edit.error() || page == newName) {
        return edit.error();
    }
    const QString fault = checkedName(edit, cells, newName);
    if (!fault.isEmpty()) {
        return TextError{{}, fault};
    }
    YamlEdit next = edit;
    QStringList pages = PanelTree::pages(edit);
    const bool isFirst = page == PanelTree::firstArea(edit);
    const OwnDevices devices(edit);
    Error error;
    if (page.isEmpty()) {
        error = writePages(next, {newName});
    } else if (pages.contains(page)) {
        pages[pages.indexOf(page)] = newName;
        error = writePages(next, pages);
    }
    for (auto one = cells.cbegin(); one != cells.cend() && !error; ++one) {
        const QString owner = devices.ownerOf(one.key());
        if (page.isEmpty() || one->area != page || owner.isEmpty()) {
            continue;
        }
        const QString given = PanelTree::areaOf(*PanelTree::device(next, owner));
        if (given == page) {
            error = setArea(next, owner, newName);
        } else if (given.isEmpty() && !isFirst) {
            error = fixedInTemplate(one.key(), owner);
        }
    }
    error = error ? error : renameWeights(next, page, newName);
    if (!error) {
        edit = next;
    }
    return error;
}

Error PageEdit::remove(YamlEdit& edit, const CellsById& cells, const QString& page)
{
    if (edit.error()) {
        return edit.error();
    }
    QStringList removed;
    QStringList left;
    bool isOnly = PanelTree::pages(edit) == QStringList{page};
    const OwnDevices devices(edit);
    for (auto one = cells.cbegin(); one != cells.cend(); ++one) {
        (one->area == page ? removed : left) += devices.ownerOf(one.key());
        isOnly = isOnly && one->area == page;
    }
    if (page.isEmpty() || isOnly) {
        return TextError{{}, "the only page of a panel cannot be removed"};
    }
    removed.removeDuplicates();
    YamlEdit next = edit;
    QStringList pages = PanelTree::pages(edit);
    Error error;
    for (const QString& id : PanelTree::deviceIds(edit)) {
        if (error || !removed.contains(id)) {
            continue;
        }
        error = left.contains(id)
                    ? Error(TextError{{},
                                      QString("%1 has devices on other pages, too; change its "
                                              "template first")
                                          .arg(inQuotes(id))})
                    : DeviceEdit::remove(next, id);
    }
    if (!error && pages.removeOne(page)) {
        error = pages.isEmpty() ? next.remove({kPages}) : writePages(next, pages);
    }
    error = error ? error : renameWeights(next, page, {});
    if (!error) {
        edit = next;
    }
    return error;
}

Error PageEdit::order(YamlEdit& edit, const CellsById& cells, const QStringList& pages)
{
    if (edit.error()) {
        return edit.error();
    }
    YamlEdit next = edit;
    const QString first = PanelTree::firstArea(edit);
    Error error = pages.value(0) != first && !first.isEmpty() ? nameFirstPage(next, cells, first)
                                                              : std::nullopt;
    error = error ? error : writePages(next, pages);
    if (!error) {
        edit = next;
    }
    return error;
}

Error PageEdit::insertRow(YamlEdit& edit, const CellsById& cells, const QString& page, int row)
{
    return shiftLines(edit, cells, {page, true, row, 1});
}

Error PageEdit::insertColumn(YamlEdit& edit, const CellsById& cells, const QString& page,
                             int column)
{
    return shiftLines(edit, cells, {page, false, column, 1});
}

Error PageEdit::removeRow(YamlEdit& edit, const CellsById& cells, const QString& page, int row)
{
    return shiftLines(edit, cells, {page, true, row, -1});
}

Error PageEdit::removeColumn(YamlEdit& edit, const CellsById& cells, const QString& page,
                             int column)
{
    return shiftLines(edit, cells, {page, false, column, -1});
}

} // namespace norvo
