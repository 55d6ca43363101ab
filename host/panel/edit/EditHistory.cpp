// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/EditHistory.h"

#include "host/yaml/SourceText.h"

namespace norvo {

namespace {

/// Gives `text`, which holds `old` at the place, with `replacement` there instead.
QByteArray replaced(QByteArray text, int begin, const QByteArray& old,
                    const QByteArray& replacement)
{
    Q_ASSERT(text.mid(begin, old.size()) == old);
    return text.replace(begin, old.size(), replacement);
}

} // namespace

void EditHistory::add(const QString& name, const QByteArray& before, const QByteArray& after,
                      const QString& joinKey)
{
    m_steps.resize(m_done);
    if (m_saved && *m_saved > m_done) {
        m_saved.reset();
    }
    QByteArray start = before;
    const bool isJoined =
        !joinKey.isEmpty() && m_done > 0 && m_steps.back().joinKey == joinKey && m_saved != m_done;
    if (isJoined) {
        start = undo(before);
        m_steps.pop_back();
    }
    const TextChange change = TextChange::between(start, after);
    m_steps.push_back({name, joinKey, change.begin,
                       start.mid(change.begin, change.oldEnd - change.begin),
                       after.mid(change.begin, change.newEnd - change.begin)});
    m_done = m_steps.size();
}

void EditHistory::endJoin()
{
    if (m_done > 0) {
        m_steps[m_done - 1].joinKey.clear();
    }
}

QString EditHistory::undoName() const
{
    return canUndo() ? m_steps[m_done - 1].name : QString();
}

QString EditHistory::redoName() const
{
    return canRedo() ? m_steps[m_done].name : QString();
}

QByteArray EditHistory::undo(const QByteArray& now)
{
    Q_ASSERT(canUndo());
    const Step& step = m_steps[--m_done];
    return replaced(now, step.begin, step.after, step.before);
}

QByteArray EditHistory::redo(const QByteArray& now)
{
    Q_ASSERT(canRedo());
    const Step& step = m_steps[m_done++];
    return replaced(now, step.begin, step.before, step.after);
}

} // namespace norvo
