// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/frame/EditorFrame.h"

#include "host/editor/EditSession.h"
#include "host/editor/canvas/EditCanvas.h"
#include "host/editor/file/ConflictSheet.h"
#include "host/editor/file/EditedFile.h"
#include "host/editor/frame/DevicePane.h"
#include "host/editor/frame/EditorBar.h"
#include "host/editor/frame/MenuSheet.h"
#include "host/editor/frame/PanelPane.h"
#include "host/editor/frame/SaveSheet.h"
#include "host/editor/frame/SidePane.h"
#include "host/editor/pages/PagesList.h"
#include "host/editor/palette/TypePalette.h"
#include "host/editor/wiring/ConnectionTable.h"
#include "host/editor/wiring/WireCanvas.h"
#include "host/window/PanelPages.h"
#include "host/window/PanelWindow.h"

#include <QAction>
#include <QFileInfo>
#include <QTabWidget>

#include <functional>
#include <type_traits>

namespace norvo {

EditorFrame::EditorFrame(EditSession& session, EditedFile& file, PanelWindow& window)
    : m_session(session),
      m_file(file),
      m_window(window),
      m_bar(new EditorBar(&window)),
      m_side(new SidePane(&window))
{
    window.addBar(m_bar);
    window.addSide(m_side);
    addActions();
    addPaneActions();
    addKeys();
    connect(&session, &EditSession::changed, this, &EditorFrame::follow);
    connect(&session, &EditSession::savedChanged, this, &EditorFrame::follow);
    connect(&session, &EditSession::selectionChanged, this, [this] {
        if (!m_session.selection().isEmpty() && m_pane == Pane::Add) {
            showPane(Pane::Device);
            tellOfShelf();
        }
    });
    connect(&file, &EditedFile::problem, this, &EditorFrame::tell);
    connect(&file, &EditedFile::conflict, this, [this] {
        auto* const sheet = new ConflictSheet(*m_bar, m_file, m_session.document().text());
        connect(sheet, &ConflictSheet::problem, this, &EditorFrame::tell);
        sheet->present();
    });
    m_bar->installEventFilter(this);
    m_renewal.setSingleShot(true);
    connect(&m_renewal, &QTimer::timeout, this, &EditorFrame::renew);
    showCanvas(false);
    showPane(session.live().description().devices.isEmpty() ? Pane::Add : Pane::Device);
    follow();
}

EditorFrame::~EditorFrame()
{
    delete m_canvas;
    delete m_wireCanvas;
    delete m_side;
    delete m_bar;
}

EditorBar& EditorFrame::bar() const
{
    return *m_bar;
}

QAction* EditorFrame::addAction(const char* name, const QString& text, const QKeySequence& key)
{
    auto* const action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(key);
    m_bar->addAction(action); // So that its key is heard in the whole window.
    return action;
}

void EditorFrame::addActions()
{
    m_menu = addAction("menu", tr("Menu"), Qt::Key_F10);
    m_undo = addAction("undo", tr("Undo"), QKeySequence::Undo);
    m_redo = addAction("redo", tr("Redo"), QKeySequence("Ctrl+Shift+Z"));
    m_save = addAction("save", tr("Save"), QKeySequence::Save);
    m_done = addAction("done", tr("End editing"), QKeySequence("Ctrl+E"));
    connect(m_menu, &QAction::triggered, this, &EditorFrame::openMenu);
    const auto act = [this](QAction* action, const std::function<QString()>& step) {
        connect(action, &QAction::triggered, this, [this, step] {
            endEntry();
            tell(step());
        });
    };
    act(m_undo, [this] { return m_session.undo(); });
    act(m_redo, [this] { return m_session.redo(); });
    act(m_save, [this] { return m_file.save(); });
    connect(m_done, &QAction::triggered, this, &EditorFrame::finish);
}

void EditorFrame::addPaneActions()
{
    const auto add = [this](Pane pane, const char* name, const QString& text,
                            const QKeySequence& key) {
        QAction* const action = addAction(name, text, key);
        action->setCheckable(true);
        connect(action, &QAction::triggered, this, [this, pane] {
            showPane(m_pane == pane ? Pane::None : pane); // The second tap makes room.
            if (m_pane == Pane::Add) {
                m_side->enter("typeSearch"); // Typing finds a type at once.
            }
        });
        m_paneActions[pane] = action;
    };
    add(Pane::Device, "device", tr("Settings of the selected device"), Qt::Key_F2);
    add(Pane::Add, "add", tr("Add a device"), Qt::Key_F3);
    add(Pane::Wires, "wires", tr("Connections"), Qt::Key_F4);
    add(Pane::Panel, "panel", tr("Settings and pages of the panel"), Qt::Key_F6);
}

void EditorFrame::addKeys()
{
    m_bar->addKey(*m_menu, tr("Menu"));
    m_bar->addKey(*m_undo, tr("Undo"));
    m_bar->addSpareKey(*m_redo, tr("Redo"));
    m_bar->addKey(*m_save, tr("Save"));
    m_bar->addGap();
    m_bar->addKey(*m_paneActions[Pane::Add], tr("Add"));
    m_bar->addKey(*m_paneActions[Pane::Device], tr("Device"));
    m_bar->addKey(*m_paneActions[Pane::Wires], tr("Wires"));
    m_bar->addSpareKey(*m_paneActions[Pane::Panel], tr("Panel"));
    m_bar->addGap();
    m_bar->addKey(*m_done, tr("Done"));
}

/// A panel may change the language of the program while it is edited; a field may have asked for
/// that which goes here.
bool EditorFrame::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_renewal.start(0);
    }
    return QObject::eventFilter(watched, event);
}

/// All that has texts. The field that has the focus keeps it, and the tab in front stays there.
void EditorFrame::renew()
{
    const QWidget* const entered = m_window.focusWidget();
    const QString field =
        entered && m_side->isAncestorOf(entered) ? entered->objectName() : QString();
    m_bar->removeKeys();
    qDeleteAll(m_bar->actions());
    m_paneActions.clear();
    addActions();
    addPaneActions();
    addKeys();
    follow();
    showCanvas(m_wireCanvas);
    const auto* const tabs = qobject_cast<QTabWidget*>(m_side->content());
    const int tab = tabs ? tabs->currentIndex() : 0;
    showPane(m_pane);
    if (auto* const renewed = qobject_cast<QTabWidget*>(m_side->content())) {
        renewed->setCurrentIndex(tab);
    }
    if (!field.isEmpty()) {
        m_side->enter(field);
    }
}

void EditorFrame::showPane(Pane pane)
{
    m_pane = pane;
    for (const auto& [one, action] : m_paneActions) {
        action->setChecked(one == pane);
    }
    m_side->show(makePane(pane));
    const bool isWiring = pane == Pane::Wires;
    if (isWiring != bool(m_wireCanvas)) {
        showCanvas(isWiring);
    }
    auto* const table = isWiring ? m_side->findChild<ConnectionTable*>() : nullptr;
    if (table) {
        connect(table, &ConnectionTable::connectionChosen, m_wireCanvas,
                &WireCanvas::chooseConnection);
        connect(m_wireCanvas, &WireCanvas::connectionChosen, table,
                &ConnectionTable::chooseConnection);
    }
    m_bar->setHint(isWiring ? tr("Tap a device for its outputs and inputs, then what to connect")
                   : pane == Pane::Add ? tr("Tap a type, then the cell that it goes to")
                                       : tr("Tap a device to select it, draw it to move it"));
}

/// What has just been added has nothing to be seen on a page.
void EditorFrame::tellOfShelf()
{
    const QString id = m_session.selection().constFirst();
    if (!m_session.live().cells().contains(id)) {
        m_bar->setHint(tr("%1 shows nothing: it is on the shelf, below the page in Wires").arg(id));
    }
}

QWidget* EditorFrame::makePane(Pane pane)
{
    const auto heard = [this](auto* content) {
        using Content = std::remove_pointer_t<decltype(content)>;
        connect(content, &Content::problem, this, &EditorFrame::tell);
        return content;
    };
    switch (pane) {
    case Pane::Device:
        return heard(new DevicePane(m_session, m_side));
    case Pane::Add:
        return heard(new TypePalette(m_session, m_side));
    case Pane::Wires:
        return heard(new ConnectionTable(m_session, m_side));
    case Pane::Panel:
        return heard(new PanelPane(m_session, m_side));
    default:
        return nullptr;
    }
}

void EditorFrame::showCanvas(bool isWiring)
{
    QWidget* const pages = &m_session.live().pages();
    delete m_canvas;
    delete m_wireCanvas;
    if (isWiring) {
        m_wireCanvas = new WireCanvas(m_session, pages);
        connect(m_wireCanvas, &WireCanvas::problem, this, &EditorFrame::tell);
    } else {
        m_canvas = new EditCanvas(m_session, pages);
        connect(m_canvas, &EditCanvas::problem, this, &EditorFrame::tell);
        connect(m_canvas, &EditCanvas::opened, this, [this] { showPane(Pane::Device); });
    }
}

void EditorFrame::follow()
{
    m_undo->setEnabled(m_session.canUndo());
    m_undo->setText(m_session.canUndo() ? tr("Undo: %1").arg(m_session.undoName()) : tr("Undo"));
    m_redo->setEnabled(m_session.canRedo());
    m_redo->setText(m_session.canRedo() ? tr("Redo: %1").arg(m_session.redoName()) : tr("Redo"));
    m_save->setEnabled(!m_session.isSaved());
}

/// What is being typed counts: a tap on a key leaves the focus in its field.
void EditorFrame::endEntry()
{
    const QPointer<QWidget> field = m_window.focusWidget();
    if (field && m_side && m_side->isAncestorOf(field)) {
        field->clearFocus();
        if (field) { // The entry may have led to another form.
            field->setFocus();
        }
    }
}

void EditorFrame::tell(const QString& problem)
{
    m_bar->tellProblem(problem);
}

void EditorFrame::openMenu()
{
    QList<QAction*> panes;
    for (const auto& [pane, action] : m_paneActions) {
        panes.append(action);
    }
    QList<QAction*> wires = m_wireCanvas ? m_wireCanvas->actions() : QList<QAction*>();
    if (const auto* const table = m_side->findChild<ConnectionTable*>()) {
        wires += table->actions();
    }
    const auto* const pages = m_side->findChild<PagesList*>();
    const auto* const palette = m_side->findChild<TypePalette*>();
    auto* const sheet =
        new MenuSheet(*m_bar, {{tr("File"), {m_save, m_undo, m_redo, m_done}},
                               {tr("Device"), m_canvas ? m_canvas->actions() : QList<QAction*>()},
                               {tr("Connections"), wires},
                               {tr("Pages"), pages ? pages->actions() : QList<QAction*>()},
                               {tr("Templates"), palette ? palette->actions() : QList<QAction*>()},
                               {tr("Show"), panes}});
    sheet->present();
}

bool EditorFrame::finish()
{
    endEntry();
    if (m_session.hasUnsaved()) {
        askWhetherToSave();
        return false;
    }
    emit finished();
    return true;
}

void EditorFrame::askWhetherToSave()
{
    auto* const sheet = new SaveSheet(*m_bar, QFileInfo(m_file.path()).fileName());
    connect(sheet, &SaveSheet::saveChosen, this, [this] {
        tell(m_file.save());
        if (m_session.isSaved()) {
            emit finished();
        }
    });
    connect(sheet, &SaveSheet::discardChosen, this, &EditorFrame::finished);
    connect(sheet, &QDialog::rejected, this, &EditorFrame::stayed);
    sheet->present();
}

} // namespace norvo
