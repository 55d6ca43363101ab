// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <optional>

namespace norvo {

class EditSession;

/// Keeps what is edited and not saved beside the file, so that a power cut or a crash loses no more
/// than the last second of it.
class UnsavedCopy : public QObject
{
    Q_OBJECT

public:
    /// `panelFile` is absolute.
    UnsavedCopy(const QString& panelFile, EditSession& session);
    ~UnsavedCopy() override; ///< Leaves a copy that stands.

    /// What an earlier editing has left, if anything.
    static std::optional<QByteArray> left(const QString& panelFile);
    static QString nameFor(const QString& panelFile);

    void drop(); ///< What is unsaved is not wanted.

signals:
    void problem(QString text); ///< It cannot be kept; told once.

private:
    void write();
    void follow();

    const QString m_file;
    EditSession& m_session;
    QTimer m_timer;
    bool m_hasFailed = false;
    bool m_isKept = false; ///< There is a copy of this editing.
};

} // namespace norvo
