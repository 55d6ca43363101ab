// SPDX-License-Identifier: GPL-3.0-or-later

#include "RandomPanelEdits.h"

#include "host/panel/edit/ConnectionEdit.h"
#include "host/panel/edit/DeviceEdit.h"
#include "host/panel/edit/PageEdit.h"
#include "host/panel/edit/ParamEdit.h"
#include "host/panel/edit/PortEdit.h"

#include <QRegularExpression>

#include <algorithm>

using norvo::Cells;
using norvo::CellsById;
using norvo::YamlEdit;
namespace ConnectionEdit = norvo::ConnectionEdit;
namespace DeviceEdit = norvo::DeviceEdit;
namespace PageEdit = norvo::PageEdit;
namespace ParamEdit = norvo::ParamEdit;
namespace PortEdit = norvo::PortEdit;

namespace {

QStringList linesOf(const CellsById& cells)
{
    QStringList lines;
    for (auto one = cells.cbegin(); one != cells.cend(); ++one) {
        lines += QString("%1 %2 %3 %4 %5 %6")
                     .arg(one.key(), one->area)
                     .arg(one->row)
                     .arg(one->column)
                     .arg(one->rowspan)
                     .arg(one->colspan);
    }
    lines.sort();
    return lines;
}

} // namespace

CellsById cellsOf(const YamlEdit& edit)
{
    CellsById known;
    for (const QString& id : EditedModel::read(edit.text()).ids) {
        known.insert(id, {});
    }
    return norvo::cellsByText(edit, known);
}

QString RandomPanelEdits::anyText()
{
    static const QStringList pieces{"no", "1.0", "~", " ", "a", ": ", " #", "%1", "-",  "'",
                                    "\"", "\\",  ",", "[", "}", "&",  "*",  "°",  "{2", "Go"};
    QString text;
    for (int i = pick(5); i > 0; --i) {
        text += pieces[pick(pieces.size())];
    }
    return text;
}

RandomPanelEdits::Error RandomPanelEdits::editDevices(YamlEdit& edit, EditedModel& model,
                                                      QString& what)
{
    const int kind = model.ids.isEmpty() ? 0 : pick(3);
    const QString id = pickOf(model.ids);
    if (kind == 0) {
        const QString after = pick(2) == 0 ? id : QString();
        const QString newId = DeviceEdit::freeId(edit, pick(2) == 0 ? id : QString("button"));
        what = "add " + newId + " behind " + after;
        norvo::NewDevice device{newId, "button", {{"text", anyText()}, {"mode", "click"}}};
        if (pick(2) == 0) {
            device.params += {{"widget/row", "3"}, {"widget/column", "1"}};
        }
        EditedModel::Device added{"button", {}, {}, {}, 0};
        for (const auto& param : device.params) {
            added.params.insert(param.first, param.second);
        }
        model.devices.insert(newId, added);
        model.ids.insert(after.isEmpty() ? model.ids.size() : model.ids.indexOf(after) + 1, newId);
        return DeviceEdit::add(edit, device, after.isEmpty() ? QString() : after);
    }
    if (kind == 1 && pick(2) == 0) {
        what = "remove " + id;
        model.ids.removeOne(id);
        model.devices.remove(id);
        model.forget(id, {}, true, true);
        return DeviceEdit::remove(edit, id);
    }
    const QString newId = DeviceEdit::freeId(edit, "n" + QString::number(pick(50)));
    what = "rename " + id + " to " + newId;
    model.ids[model.ids.indexOf(id)] = newId;
    model.devices.insert(newId, model.devices.take(id));
    model.rename(id, {}, newId, true, true);
    return DeviceEdit::rename(edit, id, newId);
}

RandomPanelEdits::Error RandomPanelEdits::editParams(YamlEdit& edit, EditedModel& model,
                                                     QString& what)
{
    const QString id = pickOf(model.ids);
    EditedModel::Device& device = model.devices[id];
    const QStringList known = device.params.keys();
    const QString name = known.isEmpty() || pick(2) == 0
                             ? pickOf({"text", "Widget/fontSize", "widget/units", "name", "a/b"})
                             : pickOf(known);
    if (pick(4) == 0) {
        const bool isSending = pick(2) == 0;
        what = "key keep of " + id;
        device.keep = isSending ? int(norvo::Keep::Sending) : int(norvo::Keep::Unsaid);
        return DeviceEdit::setKey(edit, id, "keep", isSending ? "send" : "");
    }
    if (pick(3) == 0) {
        what = "remove parameter " + name + " of " + id;
        device.params.remove(name.toLower());
        return ParamEdit::removeParam(edit, id, name);
    }
    const QString value = anyText();
    what = QString("set %1 of %2 to %3").arg(name, id, value);
    device.params.insert(name.toLower(), value);
    return ParamEdit::setParam(edit, id, name, value);
}

RandomPanelEdits::Error RandomPanelEdits::editConnections(YamlEdit& edit, EditedModel& model,
                                                          QString& what)
{
    const QString from = pickOf(model.ids) + ".o" + QString::number(pick(3));
    const QString to = pickOf(model.ids) + ".i(double)";
    const int count = model.connections.size();
    const int index = count == 0 ? 0 : pick(count);
    const int kind = count == 0 ? 0 : pick(3);
    what = QString("connection %1 %2 %3").arg(kind).arg(index).arg(from);
    if (kind == 0) {
        model.connections += from + " -> " + to;
        return ConnectionEdit::add(edit, from, to);
    }
    if (kind == 1) {
        model.connections[index] = from + " -> " + to;
        return ConnectionEdit::replace(edit, index, from, to);
    }
    model.connections.removeAt(index);
    return ConnectionEdit::remove(edit, index);
}

RandomPanelEdits::Error RandomPanelEdits::editPorts(YamlEdit& edit, EditedModel& model,
                                                    QString& what)
{
    const QString id = pickOf(model.ids);
    const bool isOutput = pick(2) == 0;
    EditedModel::Device& device = model.devices[id];
    QMap<QString, QString>& ports = isOutput ? device.outputs : device.inputs;
    const QString known = pickOf(ports.keys());
    const QString name = QString(isOutput ? "o%1" : "i%1").arg(pick(10));
    const bool isNew = !device.outputs.contains(name) && !device.inputs.contains(name);
    const QString text = anyText();
    const int kind = known.isEmpty() ? 0 : pick(4);
    what = QString("port %1 of %2: %3 %4 %5").arg(kind).arg(id, known, name, text);
    if (kind == 0) {
        if (isNew) {
            ports.insert(name, text);
        }
        const Error error = PortEdit::add(edit, id, isOutput, name, text);
        return error && isNew ? error : std::nullopt;
    }
    if (kind == 1) {
        ports[known] = text;
        return PortEdit::setDefinition(edit, id, isOutput, known, text);
    }
    if (kind == 2) {
        ports.remove(known);
        model.forget(id, known, isOutput, !isOutput);
        return PortEdit::remove(edit, id, isOutput, known);
    }
    if (isNew) {
        ports.insert(name, ports.take(known));
        model.rename(id, known, name, isOutput, !isOutput);
    }
    const Error error = PortEdit::rename(edit, id, isOutput, known, name);
    return error && isNew ? error : std::nullopt;
}

RandomPanelEdits::Error RandomPanelEdits::place(YamlEdit& edit, EditedModel& model, QString& what)
{
    const QString id = pickOf(model.ids);
    const CellsById before = cellsOf(edit);
    Cells cells = before[id];
    cells.row = pick(6);
    cells.column = pick(6);
    cells.rowspan = 1 + pick(2);
    cells.colspan = 1 + pick(2);
    cells.area = pick(3) == 0 && !cells.area.isEmpty() ? QString("P%1").arg(pick(3)) : cells.area;
    what =
        QString("place %1 at %2,%3 of %4").arg(id).arg(cells.row).arg(cells.column).arg(cells.area);
    Error error = DeviceEdit::place(edit, id, cells);
    error = error ? error : norvo::keepPlaces(edit, before, {id}, cellsOf);
    CellsById expected = before;
    expected[id] = cells;
    if (!error && linesOf(cellsOf(edit)) != linesOf(expected)) {
        return norvo::TextError{{}, "WRONG: " + linesOf(cellsOf(edit)).join(", ")};
    }
    // Where each stands has been looked at; how that is written is free.
    const EditedModel now = EditedModel::read(edit.text());
    for (const QString& one : model.ids) {
        for (const char* param : {"row", "column", "rowspan", "colspan", "area"}) {
            const QString name = QString("widget/") + param;
            model.devices[one].params.remove(name);
            if (now.devices[one].params.contains(name)) {
                model.devices[one].params.insert(name, now.devices[one].params[name]);
            }
        }
    }
    return error;
}

RandomPanelEdits::Error RandomPanelEdits::paste(YamlEdit& edit, EditedModel& model, QString& what)
{
    QStringList ids;
    for (const QString& id : model.ids) {
        if (pick(3) == 0 && ids.size() < 4) {
            ids += id;
        }
    }
    what = "paste " + ids.join(',');
    Cells by;
    by.row = pick(3);
    by.column = pick(3);
    norvo::DeviceEdit::NewIds pasted;
    const QByteArray copied = DeviceEdit::copy(edit, ids);
    if (ids.isEmpty()) {
        return DeviceEdit::paste(edit, copied, by, pasted) ? std::nullopt
                                                           : Error(norvo::TextError{{}, "WRONG"});
    }
    if (Error error = DeviceEdit::paste(edit, copied, by, pasted)) {
        return error;
    }
    const QStringList old = model.connections;
    for (int i = 0; i < ids.size(); ++i) {
        EditedModel::Device device = model.devices[ids[i]];
        for (const auto& [name, lines] :
             {std::make_pair("widget/row", by.row), std::make_pair("widget/column", by.column)}) {
            bool ok = false;
            const int number = device.params.value(name).trimmed().toInt(&ok);
            if (ok && number >= 0) {
                device.params[name] = QString::number(number + lines);
            }
        }
        device.params.remove("widget/area");
        model.ids += pasted.value(i).second;
        model.devices.insert(pasted.value(i).second, device);
    }
    for (const QString& one : old) {
        const int from = ids.indexOf(one.section('.', 0, 0));
        const int to = ids.indexOf(one.section(" -> ", 1).section('.', 0, 0));
        if (from >= 0 && to >= 0) {
            model.connections += pasted[from].second + '.' +
                                 one.section(" -> ", 0, 0).section('.', 1) + " -> " +
                                 pasted[to].second + '.' + one.section(" -> ", 1).section('.', 1);
        }
    }
    return std::nullopt;
}

RandomPanelEdits::Error RandomPanelEdits::editPages(YamlEdit& edit, EditedModel& model,
                                                    QString& what)
{
    const CellsById before = cellsOf(edit);
    QStringList pages = model.pages;
    for (const QString& id : model.ids) {
        if (!before[id].area.isEmpty() && !pages.contains(before[id].area)) {
            pages += before[id].area;
        }
    }
    const QString page = pickOf(pages);
    const QString name = QString("P%1").arg(pick(8));
    const int kind = pages.isEmpty() ? 0 : pick(3);
    what = QString("page %1 %2 %3").arg(kind).arg(page, name);
    CellsById expected = before;
    Error error;
    if (kind == 0) {
        error = PageEdit::add(edit, pages, name);
        if (error && pages.contains(name)) {
            return std::nullopt;
        }
        pages = (pages.isEmpty() ? QStringList{"Main"} : pages) + QStringList{name};
        for (Cells& one : expected) {
            one.area = one.area.isEmpty() ? "Main" : one.area;
        }
        model.pages = pages;
    } else if (kind == 1) {
        error = PageEdit::rename(edit, before, page, name);
        if (error && pages.contains(name)) {
            return std::nullopt;
        }
        for (Cells& one : expected) {
            one.area = one.area == page ? name : one.area;
        }
        model.pages.replaceInStrings(QRegularExpression('^' + page + '$'), name);
    } else {
        std::shuffle(pages.begin(), pages.end(), m_random);
        error = PageEdit::order(edit, before, pages);
        model.pages = pages;
    }
    if (!error && linesOf(cellsOf(edit)) != linesOf(expected)) {
        return norvo::TextError{{}, "WRONG: " + linesOf(cellsOf(edit)).join(", ")};
    }
    const EditedModel now = EditedModel::read(edit.text());
    for (const QString& id : model.ids) {
        model.devices[id].params.remove("widget/area");
        if (now.devices[id].params.contains("widget/area")) {
            model.devices[id].params.insert("widget/area", now.devices[id].params["widget/area"]);
        }
    }
    return error;
}

RandomPanelEdits::Error RandomPanelEdits::editLines(YamlEdit& edit, EditedModel& model,
                                                    QString& what)
{
    const CellsById before = cellsOf(edit);
    const QString page = before[pickOf(model.ids)].area;
    const bool isRow = pick(2) == 0;
    const int line = pick(4);
    const int by = pick(3) == 0 ? -1 : 1;
    what = QString("line %1 %2 %3 %4").arg(page).arg(isRow).arg(line).arg(by);
    CellsById expected = before;
    bool isHeld = false;
    for (Cells& one : expected) {
        int& begin = isRow ? one.row : one.column;
        int& span = isRow ? one.rowspan : one.colspan;
        if (one.area == page) {
            isHeld = isHeld || (by < 0 && begin == line);
            span += begin < line && begin + span > line ? by : 0;
            begin += begin >= line ? by : 0;
        }
    }
    const Error error =
        isRow
            ? (by > 0 ? PageEdit::insertRow : PageEdit::removeRow)(edit, before, page, line)
            : (by > 0 ? PageEdit::insertColumn : PageEdit::removeColumn)(edit, before, page, line);
    if (isHeld) {
        return error ? std::nullopt : Error(norvo::TextError{{}, "WRONG: it is not empty"});
    }
    if (!error && linesOf(cellsOf(edit)) != linesOf(expected)) {
        return norvo::TextError{{}, "WRONG: " + linesOf(cellsOf(edit)).join(", ")};
    }
    model = EditedModel::read(edit.text());
    return error;
}

RandomPanelEdits::Error RandomPanelEdits::editAny(YamlEdit& edit, EditedModel& model, QString& what)
{
    const int kind = model.ids.isEmpty() ? 0 : pick(8);
    return kind == 1   ? editParams(edit, model, what)
           : kind == 2 ? editConnections(edit, model, what)
           : kind == 3 ? editPorts(edit, model, what)
           : kind == 4 ? place(edit, model, what)
           : kind == 5 ? paste(edit, model, what)
           : kind == 6 ? editPages(edit, model, what)
           : kind == 7 ? editLines(edit, model, what)
                       : editDevices(edit, model, what);
}
