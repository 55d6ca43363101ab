// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/CanvasEdits.h"

#include "host/editor/EditSession.h"
#include "host/editor/templates/DeviceGroup.h"
#include "host/editor/templates/TemplateSet.h"
#include "host/panel/edit/DeviceEdit.h"
#include "host/panel/edit/PageEdit.h"

namespace norvo {

namespace {

QString nameOf(const QStringList& ids)
{
    return ids.size() == 1 ? ids.first() : CanvasEdits::tr("%1 devices").arg(ids.size());
}

} // namespace

QString CanvasEdits::whyFixed(const QStringList& ids) const
{
    for (const QString& id : ids) {
        const QString reason = m_session.whyFixed(id);
        if (!reason.isEmpty()) {
            return id + ": " + reason;
        }
    }
    return {};
}

QString CanvasEdits::move(const CellMap::Places& places, const QString& joinKey)
{
    return place(tr("Move %1").arg(nameOf(places.keys())), places, joinKey);
}

QString CanvasEdits::resize(const CellMap::Places& places, const QString& joinKey)
{
    return place(tr("Resize %1").arg(nameOf(places.keys())), places, joinKey);
}

QString CanvasEdits::place(const QString& what, const CellMap::Places& places,
                           const QString& joinKey)
{
    QString fixed = whyFixed(places.keys());
    if (!fixed.isEmpty()) {
        return fixed;
    }
    return m_session.change(
        what,
        [&](YamlEdit& edit) {
            YamlEdit::Error error;
            for (auto one = places.cbegin(); one != places.cend() && !error; ++one) {
                error = DeviceEdit::place(edit, one.key(), *one);
            }
            return error ? error : m_session.keepPlaces(edit, places.keys());
        },
        joinKey);
}

QString CanvasEdits::remove(const QStringList& ids)
{
    return removeAs(tr("Delete %1").arg(nameOf(ids)), ids);
}

QString CanvasEdits::cut(const QStringList& ids)
{
    return removeAs(tr("Cut %1").arg(nameOf(ids)), ids);
}

QString CanvasEdits::removeAs(const QString& what, const QStringList& ids)
{
    QString fixed = whyFixed(ids);
    if (!fixed.isEmpty()) {
        return fixed;
    }
    return m_session.change(what, [&](YamlEdit& edit) {
        YamlEdit::Error error;
        for (int i = 0; i < ids.size() && !error; ++i) {
            error = DeviceEdit::remove(edit, ids[i]);
        }
        return error ? error : m_session.keepPlaces(edit, ids);
    });
}

QByteArray CanvasEdits::copy(const QStringList& ids) const
{
    return DeviceEdit::copy(m_session.document(), ids);
}

QString CanvasEdits::paste(const QByteArray& copied, const Cells& target)
{
    return DeviceGroup::put(m_session, tr("Paste"), copied, target);
}

QString CanvasEdits::putTemplate(const PanelTemplate& group, const Cells& target)
{
    if (!group.fault.isEmpty()) {
        return group.fault;
    }
    return DeviceGroup::put(m_session, tr("Put %1").arg(group.title), group.text, target);
}

QString CanvasEdits::duplicate(const QStringList& ids)
{
    QString fixed = whyFixed(ids);
    if (!fixed.isEmpty()) {
        return fixed;
    }
    const CellMap::Places places = CellMap(m_session.live().cells()).moved(ids, {}, 0, 0);
    Cells target = CellMap::block(places);
    target.area = m_session.live().cells().value(ids.value(0)).area;
    return DeviceGroup::put(m_session, tr("Duplicate %1").arg(nameOf(ids)), copy(ids), target);
}

QString CanvasEdits::insertRow(const QString& page, int row)
{
    return m_session.change(tr("Insert a row"), [&](YamlEdit& edit) {
        return PageEdit::insertRow(edit, m_session.live().cells(), page, row);
    });
}

QString CanvasEdits::insertColumn(const QString& page, int column)
{
    return m_session.change(tr("Insert a column"), [&](YamlEdit& edit) {
        return PageEdit::insertColumn(edit, m_session.live().cells(), page, column);
    });
}

QString CanvasEdits::removeRow(const QString& page, int row)
{
    return m_session.change(tr("Remove a row"), [&](YamlEdit& edit) {
        return PageEdit::removeRow(edit, m_session.live().cells(), page, row);
    });
}

QString CanvasEdits::removeColumn(const QString& page, int column)
{
    return m_session.change(tr("Remove a column"), [&](YamlEdit& edit) {
        return PageEdit::removeColumn(edit, m_session.live().cells(), page, column);
    });
}

} // namespace norvo
