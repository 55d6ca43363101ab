// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/LivePanel.h"
#include "host/panel/edit/EditHistory.h"
#include "host/yaml/YamlEdit.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

namespace norvo {

class Catalogue;
class TemplateSet;

/// A panel file that is edited while its panel runs: its text of now, what is selected, and every
/// change with its way back. Each change is a splice of the text, and shows on the panel at once.
class EditSession : public QObject
{
    Q_OBJECT

public:
    using Edit = std::function<YamlEdit::Error(YamlEdit&)>;

    /// `text` is what `live` runs. Both others must outlive the session.
    EditSession(LivePanel& live, const Catalogue& catalogue, const QByteArray& text);
    ~EditSession() override;

    const YamlEdit& document() const { return m_document; }
    LivePanel& live() const { return m_live; }
    const Catalogue& catalogue() const { return m_catalogue; }

    /// Null where there is none of that id.
    const DeviceSetting* device(const QString& id) const;
    /// Why the device cannot be edited here, such as "it comes from the template pump"; empty: it
    /// can.
    QString whyFixed(const QString& id) const;

    const QStringList& selection() const { return m_selection; } ///< Ids, as they were selected.
    void select(const QStringList& ids); ///< Ids that the panel does not have are left out.

    /// Does one step. `what` names it in the menu, as "Move lamp". Returns why it cannot be
    /// done, in which case nothing has changed; empty: it is done. Steps one after the other with
    /// the same `joinKey` are undone together.
    QString change(const QString& what, const Edit& edit, const QString& joinKey = {});

    /// To be called at the end of an edit that changes cells of the devices `meant`: writes those
    /// of others that would move along, because they have no row or column of their own.
    YamlEdit::Error keepPlaces(YamlEdit& edit, const QStringList& meant) const;

    bool canUndo() const { return m_history.canUndo(); }
    bool canRedo() const { return m_history.canRedo(); }
    QString undoName() const { return m_history.undoName(); }
    QString redoName() const { return m_history.redoName(); }
    QString undo(); ///< Returns as change() does.
    QString redo();

    bool isSaved() const { return m_history.isSaved(); }
    bool hasUnsaved() const; ///< Something was done that is not saved.
    void setSaved();         ///< The text of now is that of the file.
    void setNeverSaved();    ///< There is no file yet.
    QString runAgain();      ///< What the text names has changed. Returns as change() does.
    /// Takes another text, such as the file's that others have changed: a step as any other.
    QString replaceText(const QString& what, const QByteArray& text);

    TemplateSet& templates() const { return *m_templates; }

    /// What the next tap on free cells puts there: a type by its key, or a template by its file;
    /// empty: nothing.
    const QString& toPlace() const { return m_toPlace; }
    void setToPlace(const QString& what);
    /// Adds a device of the type, at the cells where it is seen, and selects it. Where it does not
    /// start without parameters it has those of the type's example. Returns as change() does.
    QString addDevice(const QString& typeKey, const Cells& cells = {});

signals:
    void changed();          ///< The text, and what runs.
    void selectionChanged(); ///< Also where a selected device went.
    void savedChanged();
    void toPlaceChanged();

private:
    using Step = QByteArray (EditHistory::*)(const QByteArray&);

    QString take(YamlEdit next, LivePanel::Accept accept);
    QString step(Step there, Step back);
    void pruneSelection();

    LivePanel& m_live;
    const Catalogue& m_catalogue;
    const std::unique_ptr<TemplateSet> m_templates;
    YamlEdit m_document;
    EditHistory m_history;
    QStringList m_selection;
    QString m_toPlace;
};

} // namespace norvo
