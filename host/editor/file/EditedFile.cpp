// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/file/EditedFile.h"

#include "host/editor/EditSession.h"
#include "host/panel/state/AtomicFile.h"
#include "host/yaml/SourceText.h"

#include <utility>

namespace norvo {

EditedFile::EditedFile(const QString& path, EditSession& session)
    : m_path(path), m_session(session), m_known(read())
{}

/// None where there is no such file, or none that can be read.
std::optional<QByteArray> EditedFile::read() const
{
    QString reason;
    return readTextFile(m_path, reason);
}

QString EditedFile::save()
{
    const std::optional<QByteArray> now = read();
    if (now && now != m_known && now != m_session.document().text()) {
        m_theirs = *now;
        emit conflict();
        return {};
    }
    return write();
}

QString EditedFile::saveOver()
{
    return write();
}

QString EditedFile::write()
{
    const QByteArray text = m_session.document().text();
    QString reason;
    if (!writeFileAtomically(m_path, text, reason)) {
        return tr("%1 cannot be written: %2").arg(m_path, reason);
    }
    m_known = text;
    m_theirs.reset();
    m_session.setSaved();
    emit saved();
    return {};
}

bool EditedFile::look()
{
    const std::optional<QByteArray> now = read();
    // One that is being written anew is gone for a moment. Nobody is asked twice.
    if (!now || now == m_known || now == m_theirs) {
        return false;
    }
    m_theirs = *now;
    if (*now == m_session.document().text()) {
        m_known = now;
        m_session.setSaved();
    } else if (!m_session.isSaved()) {
        emit conflict();
    } else {
        const QString fault = takeTheirs();
        if (!fault.isEmpty()) {
            emit problem(tr("The file was changed by others, and does not run: %1").arg(fault));
        }
    }
    return true;
}

QString EditedFile::takeTheirs()
{
    QString fault = m_session.replaceText(tr("Take over what others have changed"), theirs());
    if (fault.isEmpty()) {
        m_known = std::exchange(m_theirs, std::nullopt);
        m_session.setSaved();
    }
    return fault;
}

} // namespace norvo
