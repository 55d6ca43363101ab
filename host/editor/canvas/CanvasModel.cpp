// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/CanvasModel.h"

#include "host/editor/EditSession.h"
#include "host/editor/templates/DeviceGroup.h"
#include "host/editor/templates/TemplateSet.h"
#include "host/panel/edit/PanelTree.h"

#include <QHash>
#include <QPair>

#include <algorithm>
#include <optional>
#include <utility>

namespace norvo {

namespace {

bool areSame(const Cells& a, const Cells& b)
{
    return a.area == b.area && a.row == b.row && a.column == b.column && a.rowspan == b.rowspan &&
           a.colspan == b.colspan;
}

bool areSame(const CellMap::Places& a, const CellMap::Places& b)
{
    if (a.size() != b.size()) {
        return false;
    }
    for (auto one = a.cbegin(); one != a.cend(); ++one) {
        const auto other = b.constFind(one.key());
        if (other == b.cend() || !areSame(*one, *other)) {
            return false;
        }
    }
    return true;
}

/// Two that share a cell, such as devices of two pages that go to one; none: all have their own.
std::optional<std::pair<QString, QString>> overlap(const CellMap::Places& places)
{
    QHash<QPair<QString, QPair<int, int>>, QString> taken;
    for (auto one = places.cbegin(); one != places.cend(); ++one) {
        for (int row = one->row; row < one->row + one->rowspan; ++row) {
            for (int column = one->column; column < one->column + one->colspan; ++column) {
                const auto cell = qMakePair(one->area, qMakePair(row, column));
                const auto other = taken.constFind(cell);
                if (other != taken.cend()) {
                    return std::minmax(*other, one.key());
                }
                taken.insert(cell, one.key());
            }
        }
    }
    return std::nullopt;
}

} // namespace

CanvasModel::CanvasModel(EditSession& session, int target) : m_session(session), m_edits(session)
{
    m_view.target = target;
    connect(&session, &EditSession::changed, this, [this] {
        m_isCarrying = false;
        follow();
    });
    connect(&session, &EditSession::selectionChanged, this,
            [this] { change([this] { m_view.selection = m_session.selection(); }); });
    connect(&session, &EditSession::toPlaceChanged, this, [this] {
        m_isCarrying = false;
        hideGhost();
        if (isPlacing() && m_view.cursor.row >= 0) {
            hover(m_view.cursor);
        }
    });
    follow();
}

void CanvasModel::change(const std::function<void()>& how)
{
    emit aboutToChange();
    how();
    emit changed();
}

void CanvasModel::setTarget(int target)
{
    change([this, target] { m_view.target = target; });
}

void CanvasModel::follow()
{
    change([this] {
        m_view.map = CellMap(m_session.live().cells());
        m_view.selection = m_session.selection();
        m_view.ghost.reset();
        m_view.fixed.clear();
        const QStringList own = PanelTree::deviceIds(m_session.document());
        const QStringList all = m_view.map.places().keys();
        m_view.fixed = QSet<QString>(all.cbegin(), all.cend());
        m_view.fixed.subtract(QSet<QString>(own.cbegin(), own.cend()));
    });
}

bool CanvasModel::isPlacing() const
{
    return m_isCarrying || !m_session.toPlace().isEmpty();
}

void CanvasModel::select(const QStringList& ids, bool isAdded)
{
    QStringList all = isAdded ? m_view.selection : QStringList();
    for (const QString& id : ids) {
        if (all.removeAll(id) == 0) {
            all.append(id);
        }
    }
    if (!ids.isEmpty()) {
        change([this] { m_view.cursor = {}; });
    }
    m_session.select(all);
}

void CanvasModel::selectAll(const QString& area)
{
    select(m_view.map.on(area));
}

void CanvasModel::selectNext(const QString& area, bool forward)
{
    const QStringList ids = m_view.map.on(area);
    const int now = m_view.selection.isEmpty() ? -1 : ids.indexOf(m_view.selection.last());
    const int next = forward ? now + 1 : (now < 0 ? ids.size() : now) - 1;
    select(ids.mid(next < 0 ? ids.size() : next, 1));
}

void CanvasModel::pointAt(const Cells& cell)
{
    if (!areSame(cell, m_view.cursor)) {
        change([&] { m_view.cursor = cell; });
    }
    hover(cell);
}

void CanvasModel::hover(const Cells& cell)
{
    if (m_isCarrying) {
        showGhost(CellMap::shifted(m_view.map.moved(m_view.selection, cell.area, 0, 0), cell));
    } else if (!m_session.toPlace().isEmpty()) {
        showGhost(placesOf(m_session.toPlace(), cell));
    }
}

void CanvasModel::setBand(const QString& area, const QRect& band)
{
    change([&] {
        m_view.bandArea = area;
        m_view.band = band;
    });
}

QString CanvasModel::refusal(const CellMap::Places& cells) const
{
    if (!CellMap::isOnPage(cells)) {
        return tr("Not on the page");
    }
    const QString other = m_view.map.inTheWay(cells);
    if (!other.isEmpty()) {
        return tr("%1 is there").arg(other);
    }
    const auto pair = overlap(cells);
    return pair ? tr("%1 and %2 would be in one place").arg(pair->first, pair->second) : QString();
}

void CanvasModel::showGhost(const CellMap::Places& cells)
{
    if (!m_view.ghost || !areSame(m_view.ghost->cells, cells)) {
        change([&] { m_view.ghost = Ghost{cells, refusal(cells)}; });
    }
}

void CanvasModel::hideGhost()
{
    if (m_view.ghost) {
        change([this] { m_view.ghost.reset(); });
    }
}

void CanvasModel::drop()
{
    if (!m_view.ghost) {
        return;
    }
    const Ghost ghost = *m_view.ghost;
    hideGhost();
    if (!report(ghost.refusal)) {
        return;
    }
    CellMap::Places moved;
    bool isResized = false;
    for (auto one = ghost.cells.cbegin(); one != ghost.cells.cend(); ++one) {
        const Cells before = m_view.map.places().value(one.key());
        isResized |= before.rowspan != one->rowspan || before.colspan != one->colspan;
        if (!areSame(before, *one)) {
            moved.insert(one.key(), *one);
        }
    }
    if (!moved.isEmpty()) {
        report(isResized ? m_edits.resize(moved) : m_edits.move(moved));
    }
}

void CanvasModel::carry()
{
    m_session.setToPlace({});
    if (!m_view.selection.isEmpty() && report(m_edits.whyFixed(m_view.selection))) {
        m_isCarrying = true;
        const CellMap::Places group = m_view.map.moved(m_view.selection, {}, 0, 0);
        Cells cell = CellMap::block(group);
        cell.area = m_view.map.places().value(m_view.selection.first()).area;
        cell.rowspan = 1;
        cell.colspan = 1;
        pointAt(cell);
    }
}

void CanvasModel::put(const Cells& cell)
{
    if (!m_isCarrying) {
        place(m_session.toPlace(), cell);
        return;
    }
    hover(cell);
    const bool isRefused = m_view.ghost && !m_view.ghost->refusal.isEmpty();
    if (isRefused) { // Another cell may do.
        report(m_view.ghost->refusal);
        return;
    }
    m_isCarrying = false;
    change([this] { m_view.cursor = {}; });
    drop();
}

CellMap::Places CanvasModel::placesOf(const QString& what, const Cells& cell) const
{
    const PanelTemplate* const group = m_session.templates().find(what);
    return group ? DeviceGroup::placesAt(group->panel, m_session.catalogue(), cell)
                 : CellMap::Places{{QString(), cell}};
}

void CanvasModel::place(const QString& what, const Cells& cell)
{
    hideGhost();
    if (!report(refusal(placesOf(what, cell)))) {
        return;
    }
    const PanelTemplate* const group = m_session.templates().find(what);
    const bool isDone =
        report(group ? m_edits.putTemplate(*group, cell) : m_session.addDevice(what, cell));
    if (isDone) {
        m_session.setToPlace({});
        change([this] { m_view.cursor = {}; });
    }
}

bool CanvasModel::leave()
{
    if (isPlacing()) {
        m_isCarrying = false;
        m_session.setToPlace({});
        change([this] {
            m_view.ghost.reset();
            m_view.cursor = {};
        });
        return true;
    }
    if (m_view.selection.isEmpty() && m_view.cursor.row < 0) {
        return false;
    }
    change([this] { m_view.cursor = {}; });
    m_session.select({});
    return true;
}

/// Presses of one key after the other are one step.
void CanvasModel::moveSelected(int rows, int columns)
{
    const CellMap::Places& places = m_view.map.places();
    CellMap::Places wanted;
    for (const QString& id : m_view.selection) {
        const auto there = m_view.map.moved({id}, places.value(id).area, rows, columns);
        wanted.insert(id, there.value(id));
    }
    if (!wanted.isEmpty() && report(refusal(wanted))) {
        report(m_edits.move(wanted, "move " + m_view.selection.join(' ')));
    }
}

void CanvasModel::growSelected(int rows, int columns)
{
    const CellMap::Places wanted = m_view.map.grown(m_view.selection, rows, columns);
    if (!wanted.isEmpty() && report(refusal(wanted))) {
        report(m_edits.resize(wanted, "resize " + m_view.selection.join(' ')));
    }
}

void CanvasModel::moveToPage(const QString& area)
{
    const CellMap::Places group = m_view.map.moved(m_view.selection, area, 0, 0);
    if (!group.isEmpty()) {
        const CellMap::Places there = m_view.map.atFree(group, CellMap::block(group));
        if (report(refusal(there))) {
            report(m_edits.move(there));
        }
    }
}

bool CanvasModel::report(const QString& fault)
{
    if (!fault.isEmpty()) {
        emit problem(fault);
    }
    return fault.isEmpty();
}

} // namespace norvo
