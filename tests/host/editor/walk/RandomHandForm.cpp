// SPDX-License-Identifier: GPL-3.0-or-later

#include "RandomHand.h"

#include "host/editor/canvas/PageCover.h"
#include "host/editor/form/DeviceForm.h"
#include "host/editor/form/ParamRow.h"
#include "host/editor/frame/DevicePane.h"
#include "host/editor/palette/TypeList.h"
#include "host/editor/palette/TypePalette.h"
#include "host/editor/templates/TemplateSet.h"
#include "host/editor/wiring/PortsForm.h"
#include "host/editor/wiring/ports/PortRow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>

using norvo::ParamKind;
using norvo::ParamRow;

namespace {

/// Of what a panel shows, and of what sends nothing by itself: values are no part of the walk.
const QStringList kTypes{"button",         "calc",           "checkbox",     "dropdownlist",
                         "graph_settings", "hold",           "image",        "indicator",
                         "input",          "label",          "multiline",    "output_bar",
                         "settle",         "output_digital", "output_graph", "output_with_progress",
                         "picture",        "slider",         "stop",         "output_lumeno",
                         "output_vector"};

/// Likewise.
const QStringList kTemplates{
    ":/norvo/templates/event-log.yaml", ":/norvo/templates/gauge-with-limit.yaml",
    ":/norvo/templates/readout-with-trend.yaml", ":/norvo/templates/switch-with-lamp.yaml"};

} // namespace

QString RandomHand::fillForm()
{
    m_editor.openPane("device");
    const QString id = anyId();
    if (!id.isEmpty() && oneIn(2)) {
        m_editor.session.select(oneIn(6) ? QStringList{id, anyId()} : QStringList(id));
    }
    auto* const form = m_editor.shown<norvo::DeviceForm>();
    if (!form) {
        return "no form";
    }
    LiveEditor::click(form->findChild<QPushButton*>(
        anyOf(QStringList{"allParameters", "allParameters", "place", "keys"})));
    QList<ParamRow*> rows = form->findChildren<ParamRow*>();
    // How often a device sends, and a program that is to run, are no part of the walk.
    const QStringList left{"interval", "command", "time", "source"};
    rows.erase(std::remove_if(rows.begin(), rows.end(),
                              [&](const ParamRow* row) {
                                  return !row->isVisible() || !row->isEnabled() ||
                                         left.contains(row->words().name);
                              }),
               rows.end());
    ParamRow* const row = anyOf(rows);
    return row ? fill(*row) : "nothing to fill in";
}

QString RandomHand::textFor(const ParamRow& row)
{
    const norvo::ParamWords& words = row.words();
    if (words.name.startsWith("widget/row") || words.name.startsWith("widget/col")) {
        return anyOf(QStringList{"0", "1", "2", "3", "5", "-1", "x"});
    }
    if (words.name == "widget/area") {
        return anyOf(QStringList{"", "Run", "Stop", "Main"});
    }
    if (words.name == "design") {
        return anyOf(QStringList{"640x400", "1000x700", "", "large"});
    }
    if (words.isNumber()) {
        return anyOf(QStringList{"0", "1", "7", "12.5", "-3", "1e2", "none", "", "no"});
    }
    if (words.isFile()) {
        return anyOf(QStringList{"none.png", ":/icons/norvogui_expand", ""});
    }
    return anyOf(QStringList{"Go", "", "no", "1.0", "a: b", "# x", "ä 'quoted' \"both\"", "red",
                             "a|b|c", "{x}", " blank ", "-", "%1 V"});
}

QString RandomHand::fill(ParamRow& row)
{
    const QString what = "fill in " + row.words().name;
    auto* const reset = row.findChild<QPushButton*>(row.words().name + " reset");
    if (reset->isVisible() && oneIn(4)) {
        LiveEditor::click(reset);
        return "reset " + row.words().name;
    }
    QWidget* const entry = row.findChild<QWidget*>(row.words().name);
    if (auto* const line = qobject_cast<QLineEdit*>(entry)) {
        const QStringList keys{row.words().name + " more", row.words().name + " less"};
        auto* const key = row.findChild<QPushButton*>(anyOf(keys));
        if (key && oneIn(3)) {
            LiveEditor::click(key);
            return what;
        }
        type(*line, textFor(row));
        QTest::keyClick(line, oneIn(5) ? Qt::Key_Escape : oneIn(2) ? Qt::Key_Tab : Qt::Key_Return);
    } else if (auto* const box = qobject_cast<QComboBox*>(entry)) {
        box->setFocus();
        QTest::keyClick(box, oneIn(2) ? Qt::Key_Down : Qt::Key_Up);
    } else if (auto* const check = qobject_cast<QCheckBox*>(entry)) {
        QTest::keyClick(check, Qt::Key_Space);
    } else if (auto* const lines = qobject_cast<QPlainTextEdit*>(entry)) {
        lines->moveCursor(QTextCursor::End);
        QTest::keyClick(lines, Qt::Key_Return);
        QTest::keyClicks(lines, anyOf(QStringList{"// more", "", "  // two", "//: x # y"}));
        QTest::keyClick(lines, Qt::Key_Return, Qt::ControlModifier);
    }
    LiveEditor::settle();
    return what;
}

QString RandomHand::rename()
{
    m_editor.openPane("device");
    const QString id = anyId();
    m_editor.session.select({id});
    auto* const field = m_editor.shown<QLineEdit>("deviceId");
    if (!field || field->isReadOnly()) {
        return "an id that is fixed";
    }
    const QString newId = anyOf(QStringList{"a", "b2", "long-name_3", "no good", "go", id + "x"});
    type(*field, newId.left(20));
    QTest::keyClick(field, Qt::Key_Return);
    LiveEditor::settle();
    return QString("rename %1 to %2").arg(id, newId);
}

QString RandomHand::editPorts()
{
    m_editor.openPane("device");
    QStringList ids;
    for (const norvo::DeviceSetting& device : m_editor.panel.reload->description().devices) {
        if (norvo::PortsForm::isFor(m_editor.session, device.id.text)) {
            ids.append(device.id.text);
        }
    }
    if (ids.isEmpty()) {
        return "no ports";
    }
    m_editor.session.select({anyOf(ids)});
    m_editor.window().findChild<norvo::DevicePane*>()->setCurrentIndex(1);
    LiveEditor::settle();
    auto* const form = m_editor.shown<norvo::PortsForm>();
    norvo::PortRow* const row = anyOf(form->findChildren<norvo::PortRow*>());
    const QString name = row->name();
    if (!row->isNew() && oneIn(3)) {
        LiveEditor::click(row->findChild<QPushButton*>("key"));
        return "remove port " + name;
    }
    auto* const definition = row->findChild<QLineEdit*>("definition");
    auto* const field = row->isNew() || oneIn(3) ? row->findChild<QLineEdit*>("name") : definition;
    if (row->isNew() && row->isOutput()) {
        type(*definition, anyOf(QStringList{"1 + 1", "x", "t * 2", ")"}));
    }
    type(*field, field == definition ? anyOf(QStringList{"2 * 3", "t + 1", "(", "t > 1"})
                                     : anyOf(QStringList{"t", "x", "y", "double", "a b"}));
    QTest::keyClick(field, Qt::Key_Return);
    LiveEditor::settle();
    return "port " + name;
}

QString RandomHand::placeType()
{
    if (m_editor.panel.reload->description().devices.size() > 20) {
        return "enough";
    }
    m_editor.openPane("add");
    auto* const palette = m_editor.shown<norvo::TypePalette>();
    auto* const list = palette->findChild<norvo::TypeList*>();
    const QString key = oneIn(4) ? anyOf(kTemplates) : anyOf(kTypes);
    const norvo::PanelTemplate* const group = m_editor.session.templates().find(key);
    type(*palette->findChild<QLineEdit*>("typeSearch"), group ? group->title : key);
    for (int i = 0; i < list->count(); ++i) {
        if (list->item(i)->data(Qt::UserRole).toString() == key) {
            list->scrollToItem(list->item(i));
            tap(list->viewport(), list->visualItemRect(list->item(i)).center());
            break;
        }
    }
    if (m_editor.session.toPlace() == key) {
        tap(cover(), anyCell());
    }
    m_editor.session.setToPlace({});
    return "add a " + key;
}
