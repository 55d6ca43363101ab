// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

#include <optional>

namespace norvo {

class EditSession;

/// The file of a panel that is edited: written when somebody says so, as a whole or not at all, and
/// never over what others have written meanwhile.
class EditedFile : public QObject
{
    Q_OBJECT

public:
    /// `path` is absolute. A file that is not there yet is written at the first save. Else the
    /// session's text is the one that was read from it.
    EditedFile(const QString& path, EditSession& session);

    const QString& path() const { return m_path; }
    /// Nothing where it is done, else why not. Where others have written the file since it was
    /// read, it asks by conflict() instead.
    QString save();
    QString saveOver(); ///< Whatever others have written.

    /// To be called when the file may have changed. What others have written is taken where
    /// nothing is unsaved, as a step that can be undone; else conflict() is emitted. False: the
    /// file is as it was.
    bool look();
    QString takeTheirs(); ///< Gives what is unsaved up, as a step that can be undone.
    QByteArray theirs() const { return m_theirs.value_or(QByteArray()); } ///< What others wrote.

signals:
    void conflict();
    void problem(QString text); ///< What others have written cannot run, or be read.
    void saved();

private:
    std::optional<QByteArray> read() const;
    QString write();

    const QString m_path;
    EditSession& m_session;
    std::optional<QByteArray> m_known;  ///< The file's content when it was last read or written.
    std::optional<QByteArray> m_theirs; ///< What others have written that was not taken yet.
};

} // namespace norvo
