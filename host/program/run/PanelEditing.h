// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/EditSession.h"
#include "host/editor/file/EditedFile.h"
#include "host/editor/file/UnsavedCopy.h"
#include "host/editor/frame/EditorFrame.h"

#include <QObject>

#include <memory>
#include <optional>

class QShortcut;

namespace norvo {

class Catalogue;
class FileReload;
class PanelInput;
class RunningPanel;

/// The editor of a running panel, from when an engineer asks for it to when he ends it.
class PanelEditing : public QObject
{
    Q_OBJECT

public:
    /// What the program has made, and outlives this.
    struct Parts
    {
        const PanelInput& input;
        const Catalogue& catalogue;
        LivePanel& live;
        RunningPanel& running;
        /// It leaves changes of the file to the editor while there is one. Null: nobody follows
        /// them.
        FileReload* file;
    };

    explicit PanelEditing(const Parts& parts);
    ~PanelEditing() override; ///< What is unsaved is kept beside the file.

    void begin(); ///< Nothing where the panel is edited already.

    /// What a panel is begun with that is edited and has no file yet, or an empty one; none where
    /// there is a file.
    static std::optional<QByteArray> newText(const QString& panelFile);

signals:
    void beginning(); ///< The editor is about to be made, and looks at all types.

private:
    /// Of one editing.
    struct Editor
    {
        Editor(const Parts& parts, const QByteArray& text);

        EditSession session;
        EditedFile file;
        UnsavedCopy unsaved;
        EditorFrame frame;
    };

    bool takeChange();
    void offerStart();
    void offerWhatWasLeft(const QByteArray& left);
    bool mayClose();
    void end();
    void endUnasked();

    const Parts m_parts;
    QList<QShortcut*> m_keys; ///< That begin it.
    std::unique_ptr<Editor> m_editor;
    bool m_isClosing = false; ///< The window is to close once the editing has ended.
};

} // namespace norvo
