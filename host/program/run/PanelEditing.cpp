// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/run/PanelEditing.h"

#include "host/editor/file/RecoverySheet.h"
#include "host/editor/frame/EditorBar.h"
#include "host/editor/start/StartSheet.h"
#include "host/program/PanelInput.h"
#include "host/program/run/FileReload.h"
#include "host/program/run/RunningPanel.h"
#include "host/services/access/Access.h"
#include "host/window/PanelWindow.h"
#include "host/yaml/SourceText.h"
#include "host/yaml/YamlText.h"

#include <QFile>
#include <QFileInfo>
#include <QShortcut>
#include <QTimer>

namespace norvo {

PanelEditing::Editor::Editor(const Parts& parts, const QByteArray& text)
    : session(parts.live, parts.catalogue, text),
      file(parts.input.path(), session),
      unsaved(parts.input.path(), session),
      frame(session, file, parts.running.window())
{}

PanelEditing::PanelEditing(const Parts& parts) : m_parts(parts)
{
    PanelWindow& window = parts.running.window();
    for (const QKeySequence& keys : {QKeySequence(Qt::Key_E), QKeySequence(Qt::CTRL + Qt::Key_E)}) {
        auto* const shortcut = new QShortcut(keys, &window);
        connect(shortcut, &QShortcut::activated, this,
                [this] { m_parts.running.access().require(Role::Engineer, [this] { begin(); }); });
        m_keys.append(shortcut);
    }
    window.setMayClose([this] { return mayClose(); });
    if (parts.file) {
        parts.file->setTakeText([this](const QByteArray&) { return takeChange(); });
    }
    if (Access* const access = parts.running.access().access()) {
        connect(access, &Access::locked, this, &PanelEditing::endUnasked);
    }
}

PanelEditing::~PanelEditing()
{
    if (m_parts.file) {
        m_parts.file->setTakeText({});
    }
    m_parts.running.window().setMayClose({});
}

std::optional<QByteArray> PanelEditing::newText(const QString& panelFile)
{
    const QFileInfo file(panelFile);
    if (file.exists() && file.size() > 0) {
        return std::nullopt;
    }
    const QString title = YamlText::leastQuoted(file.completeBaseName(), false);
    return "title: " + title.toUtf8() + '\n';
}

/// Of the file, or of one that it includes.
bool PanelEditing::takeChange()
{
    if (m_editor && !m_editor->file.look()) {
        m_editor->frame.bar().tellProblem(m_editor->session.runAgain());
    }
    return bool(m_editor);
}

void PanelEditing::begin()
{
    if (m_editor) {
        return;
    }
    const QString path = m_parts.input.path();
    QString reason;
    const auto inNew = newText(path);
    const auto text = inNew ? inNew : readTextFile(path, reason);
    if (!text) {
        return; // The strip says what is wrong with the file.
    }
    emit beginning();
    const auto left = UnsavedCopy::left(path); // Before there is one of this editing.
    m_editor = std::make_unique<Editor>(m_parts, *text);
    if (inNew) {
        m_editor->session.setNeverSaved();
    }
    for (QShortcut* keys : qAsConst(m_keys)) {
        keys->setEnabled(false);
    }
    connect(&m_editor->frame, &EditorFrame::finished, this, &PanelEditing::end,
            Qt::QueuedConnection); // It has been asked by a key of its own.
    connect(&m_editor->unsaved, &UnsavedCopy::problem, &m_editor->frame.bar(),
            &EditorBar::tellProblem);
    connect(&m_editor->frame, &EditorFrame::stayed, this, [this] { m_isClosing = false; });
    if (left && *left != *text) {
        offerWhatWasLeft(*left);
    } else if (inNew) {
        offerStart();
    }
}

void PanelEditing::offerStart()
{
    auto* const sheet = new StartSheet(m_editor->frame.bar());
    connect(sheet, &StartSheet::chosen, &m_editor->session, [this](const QByteArray& text) {
        if (!text.isEmpty()) {
            m_editor->frame.bar().tellProblem(
                m_editor->session.replaceText(tr("Begin with an example"), text));
        }
    });
    // Once the window is on view.
    QTimer::singleShot(0, sheet, [sheet] { sheet->present(); });
}

void PanelEditing::offerWhatWasLeft(const QByteArray& left)
{
    auto* const sheet =
        new RecoverySheet(m_editor->frame.bar(), left, m_editor->session.document().text());
    connect(sheet, &RecoverySheet::takeOverChosen, &m_editor->session, [this, left] {
        m_editor->frame.bar().tellProblem(
            m_editor->session.replaceText(tr("Take over what was not saved"), left));
    });
    connect(sheet, &RecoverySheet::dropChosen, &m_editor->session,
            [this] { QFile::remove(UnsavedCopy::nameFor(m_parts.input.path())); });
    QTimer::singleShot(0, sheet, [sheet] { sheet->present(); });
}

bool PanelEditing::mayClose()
{
    m_isClosing = m_editor && m_editor->session.hasUnsaved();
    if (m_isClosing) {
        m_editor->frame.finish(); // Asks.
    }
    return !m_isClosing;
}

/// Whatever is unsaved by now is not wanted.
void PanelEditing::end()
{
    if (!m_editor) {
        return;
    }
    m_editor->unsaved.drop();
    const bool hasFile = QFileInfo::exists(m_parts.input.path());
    endUnasked();
    if (m_isClosing || !hasFile) {
        m_parts.running.window().close();
    }
}

/// Leaves the panel of the file.
void PanelEditing::endUnasked()
{
    if (!m_editor) {
        return;
    }
    const bool isOfFile = !m_editor->session.hasUnsaved();
    m_editor.reset();
    for (QShortcut* keys : qAsConst(m_keys)) {
        keys->setEnabled(true);
    }
    QString reason;
    const auto inFile = readTextFile(m_parts.input.path(), reason);
    if (!isOfFile && inFile) {
        m_parts.live.run(YamlEdit(*inFile), LivePanel::Accept::Runnable);
    }
}

} // namespace norvo
