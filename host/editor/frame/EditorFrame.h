// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <map>

class QAction;
class QWidget;

namespace norvo {

class EditCanvas;
class EditedFile;
class EditorBar;
class EditSession;
class PanelWindow;
class SidePane;
class WireCanvas;

/// The editor around a panel that runs, from when editing begins to when it ends: a bar with keys
/// above the page, what is edited over it, and a pane beside it.
class EditorFrame : public QObject
{
    Q_OBJECT

public:
    /// All of them must outlive it.
    EditorFrame(EditSession& session, EditedFile& file, PanelWindow& window);
    ~EditorFrame() override; ///< Gives the window back as it was.

    EditorBar& bar() const;

    /// Ends the editing: at once where all is saved, else when that has been asked. False: it was
    /// asked.
    bool finish();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override; ///< Sees a change of language.

signals:
    void stayed();   ///< Asked whether to save, somebody wants to edit on.
    void finished(); ///< It is to be deleted. What is unsaved then is not wanted.

private:
    enum class Pane { None, Device, Add, Wires, Panel };

    QAction* addAction(const char* name, const QString& text, const QKeySequence& key);
    void addActions();
    void addKeys();
    void addPaneActions();
    void renew();
    void showPane(Pane pane);
    void tellOfShelf();
    QWidget* makePane(Pane pane);
    void showCanvas(bool isWiring);
    void follow();
    void endEntry();
    void tell(const QString& problem);
    void openMenu();
    void askWhetherToSave();

    EditSession& m_session;
    EditedFile& m_file;
    PanelWindow& m_window;
    QPointer<EditorBar> m_bar;         ///< The window owns it, and may die first.
    QPointer<SidePane> m_side;         ///< Likewise.
    QPointer<EditCanvas> m_canvas;     ///< While devices are arranged; likewise.
    QPointer<WireCanvas> m_wireCanvas; ///< While they are wired; likewise.
    QAction* m_save = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QAction* m_menu = nullptr;
    QAction* m_done = nullptr;
    std::map<Pane, QAction*> m_paneActions;
    Pane m_pane = Pane::None;
    QTimer m_renewal; ///< Runs from a change of language until its texts are made anew.
};

} // namespace norvo
