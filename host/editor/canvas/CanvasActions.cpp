// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/canvas/CanvasActions.h"

#include "host/editor/EditSession.h"
#include "host/editor/canvas/CanvasModel.h"
#include "host/editor/canvas/PageCover.h"
#include "host/editor/canvas/PageCovers.h"
#include "host/editor/templates/TemplateSheet.h"
#include "host/window/PanelPages.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QSize>

namespace norvo {

namespace {

constexpr QSize kNameSheet(620, 360); // pixels

} // namespace

CanvasActions::CanvasActions(CanvasModel& model, PageCovers& covers)
    : m_model(model), m_covers(covers)
{
    add(tr("Move"), Qt::Key_M, Needs::Devices, [this] { m_model.carry(); });
    addSpans();
    addClipboard();
    addPages();
    addLines();
    connect(&model, &CanvasModel::changed, this, &CanvasActions::keepEnabled);
    keepEnabled();
}

QAction* CanvasActions::add(const QString& text, const QKeySequence& key, Needs needs,
                            const std::function<void()>& act)
{
    auto* const action = new QAction(text, this);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, act);
    m_all.append(action);
    m_entries.append({action, needs});
    return action;
}

void CanvasActions::addSpans()
{
    const auto grow = [this](const QString& text, int key, int rows, int columns) {
        add(text, Qt::SHIFT + key, Needs::Devices,
            [this, rows, columns] { m_model.growSelected(rows, columns); });
    };
    grow(tr("Wider"), Qt::Key_Right, 0, 1);
    grow(tr("Narrower"), Qt::Key_Left, 0, -1);
    grow(tr("Higher"), Qt::Key_Down, 1, 0);
    grow(tr("Lower"), Qt::Key_Up, -1, 0);
}

void CanvasActions::addClipboard()
{
    add(tr("Cut"), QKeySequence::Cut, Needs::Devices, [this] {
        if (copy()) {
            m_model.report(m_model.edits().cut(m_model.view().selection));
        }
    });
    add(tr("Copy"), QKeySequence::Copy, Needs::Devices, [this] { copy(); });
    add(tr("Paste"), QKeySequence::Paste, Needs::Nothing, [this] { paste(); });
    add(tr("Duplicate"), Qt::CTRL + Qt::Key_D, Needs::Devices,
        [this] { m_model.report(m_model.edits().duplicate(m_model.view().selection)); });
    add(tr("Save as a template"), Qt::CTRL + Qt::Key_T, Needs::Devices,
        [this] { keepAsTemplate(); });
    add(tr("Delete"), QKeySequence::Delete, Needs::Devices,
        [this] { m_model.report(m_model.edits().remove(m_model.view().selection)); });
    add(tr("Select all"), QKeySequence::SelectAll, Needs::Nothing, [this] {
        if (const PageCover* const cover = m_covers.shown()) {
            m_model.selectAll(cover->area());
        }
    });
}

void CanvasActions::addLines()
{
    CanvasEdits& edits = m_model.edits();
    const auto act = [this](const auto& edit) {
        return [this, edit] { m_model.report(edit(line())); };
    };
    const auto key = [](int code) { return QKeySequence(Qt::CTRL + Qt::SHIFT + code); };
    m_ofRow = {
        add(tr("Insert row above"), key(Qt::Key_Up), Needs::Line,
            act([&edits](const Cells& at) { return edits.insertRow(at.area, at.row); })),
        add(tr("Insert row below"), key(Qt::Key_Down), Needs::Line, act([&edits](const Cells& at) {
                return edits.insertRow(at.area, at.row + at.rowspan);
            })),
        add(tr("Remove row"), Qt::CTRL + Qt::Key_Delete, Needs::Line,
            act([&edits](const Cells& at) { return edits.removeRow(at.area, at.row); }))};
    m_ofColumn = {
        add(tr("Insert column before"), key(Qt::Key_Left), Needs::Line,
            act([&edits](const Cells& at) { return edits.insertColumn(at.area, at.column); })),
        add(tr("Insert column behind"), key(Qt::Key_Right), Needs::Line,
            act([&edits](const Cells& at) {
                return edits.insertColumn(at.area, at.column + at.colspan);
            })),
        add(tr("Remove column"), key(Qt::Key_Delete), Needs::Line,
            act([&edits](const Cells& at) { return edits.removeColumn(at.area, at.column); }))};
}

void CanvasActions::addPages()
{
    QAction* const action = add(tr("Move to page"), {}, Needs::Devices, [] {});
    action->setMenu(&m_pages);
    connect(&m_model.session(), &EditSession::changed, this, &CanvasActions::fillPages);
    fillPages();
}

void CanvasActions::fillPages()
{
    m_pages.clear();
    for (const QString& area : m_model.session().live().pages().areas()) {
        connect(m_pages.addAction(QString(area).replace('&', "&&")), &QAction::triggered, this,
                [this, area] { m_model.moveToPage(area); });
    }
}

QList<QAction*> CanvasActions::ofLine(Qt::Orientation along) const
{
    return along == Qt::Vertical ? m_ofRow : m_ofColumn;
}

Cells CanvasActions::line() const
{
    const CanvasView& view = m_model.view();
    if (view.cursor.row >= 0 || view.selection.isEmpty()) {
        return view.cursor;
    }
    const Cells first = view.map.places().value(view.selection.first());
    Cells block = CellMap::block(view.map.moved(view.selection, first.area, 0, 0));
    block.area = first.area;
    return first.row < 0 ? first : block;
}

void CanvasActions::keepEnabled()
{
    const bool hasDevices = !m_model.view().selection.isEmpty();
    const bool hasLine = line().row >= 0;
    for (const Entry& entry : qAsConst(m_entries)) {
        const bool isMissing = (entry.needs == Needs::Devices && !hasDevices) ||
                               (entry.needs == Needs::Line && !hasLine) ||
                               (entry.action->menu() && m_pages.isEmpty());
        entry.action->setEnabled(!isMissing);
    }
}

bool CanvasActions::copy()
{
    const QStringList& ids = m_model.view().selection;
    const bool canBe = m_model.report(m_model.edits().whyFixed(ids));
    if (canBe) {
        QGuiApplication::clipboard()->setText(QString::fromUtf8(m_model.edits().copy(ids)));
    }
    return canBe;
}

void CanvasActions::keepAsTemplate()
{
    const QStringList& ids = m_model.view().selection;
    PageCover* const cover = m_covers.shown();
    if (cover && m_model.report(m_model.edits().whyFixed(ids))) {
        auto* const sheet =
            new TemplateSheet(*cover, m_model.session().templates(), m_model.edits().copy(ids));
        sheet->present(kNameSheet);
    }
}

/// At the cursor, beside what is selected, or on the page that is seen.
void CanvasActions::paste()
{
    Cells target = line();
    if (target.row < 0) {
        const PageCover* const cover = m_covers.shown();
        target = {};
        target.area = cover ? cover->area() : QString();
        target.row = 0;
        target.column = 0;
    }
    m_model.report(m_model.edits().paste(QGuiApplication::clipboard()->text().toUtf8(), target));
}

} // namespace norvo
