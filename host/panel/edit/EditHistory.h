// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace norvo {

/// What has been done to a text, to be undone and done again without limit. It keeps of each step
/// what it has replaced, not the whole text.
class EditHistory
{
public:
    /// A step that has led from one text to the other; what was undone before it is gone. It joins
    /// the step before where both have the same `joinKey`, and that is not empty.
    void add(const QString& name, const QByteArray& before, const QByteArray& after,
             const QString& joinKey = {});
    void endJoin(); ///< The next step stands alone, whatever its key.

    bool canUndo() const { return m_done > 0; }
    bool canRedo() const { return m_done < m_steps.size(); }
    QString undoName() const; ///< What undo() undoes; empty: nothing.
    QString redoName() const;
    QByteArray undo(const QByteArray& now); ///< The text before the step; `now` is the one behind.
    QByteArray redo(const QByteArray& now);

    void setSaved() { m_saved = m_done; } ///< The text of now is the saved one.
    void setNeverSaved() { m_saved.reset(); }
    bool isSaved() const { return m_saved == m_done; }

private:
    struct Step
    {
        QString name;
        QString joinKey;
        int begin = 0;
        QByteArray before;
        QByteArray after;
    };

    std::vector<Step> m_steps;
    size_t m_done = 0; ///< How many of them are done.
    std::optional<size_t> m_saved = 0;
};

} // namespace norvo
