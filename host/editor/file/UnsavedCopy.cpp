// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/file/UnsavedCopy.h"

#include "host/editor/EditSession.h"
#include "host/panel/state/AtomicFile.h"
#include "host/yaml/SourceText.h"

#include <QFile>

#include <chrono>

namespace norvo {

namespace {

constexpr std::chrono::seconds kDelay(1);

} // namespace

UnsavedCopy::UnsavedCopy(const QString& panelFile, EditSession& session)
    : m_file(nameFor(panelFile)), m_session(session)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(kDelay);
    m_timer.callOnTimeout(this, &UnsavedCopy::write);
    connect(&session, &EditSession::changed, this, &UnsavedCopy::follow);
    connect(&session, &EditSession::savedChanged, this, &UnsavedCopy::follow);
}

UnsavedCopy::~UnsavedCopy()
{
    if (m_timer.isActive()) {
        write();
    }
}

QString UnsavedCopy::nameFor(const QString& panelFile)
{
    return panelFile + ".unsaved";
}

std::optional<QByteArray> UnsavedCopy::left(const QString& panelFile)
{
    QString reason;
    return readTextFile(nameFor(panelFile), reason);
}

void UnsavedCopy::follow()
{
    if (!m_session.hasUnsaved()) {
        drop();
    } else if (!m_timer.isActive()) { // Without pause it is kept once a second, not never.
        m_timer.start();
    }
}

void UnsavedCopy::drop()
{
    m_timer.stop();
    if (m_isKept) {
        m_isKept = false;
        QFile::remove(m_file);
    }
}

void UnsavedCopy::write()
{
    m_timer.stop();
    QString reason;
    if (writeFileAtomically(m_file, m_session.document().text(), reason)) {
        m_isKept = true;
    } else if (!m_hasFailed) {
        m_hasFailed = true;
        emit problem(tr("What is not saved cannot be kept as %1: %2").arg(m_file, reason));
    }
}

} // namespace norvo
