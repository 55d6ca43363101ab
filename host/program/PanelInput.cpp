// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/PanelInput.h"

#include "host/panel/file/PanelFile.h"
#include "host/services/access/PinHash.h"
#include "host/yaml/SourceText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace norvo {

namespace {

/// No more than shows that it is too much. A pipe gives what it has at a time.
QByteArray readStandardInput()
{
    QFile input;
    input.open(stdin, QIODevice::ReadOnly);
    QByteArray text;
    QByteArray part;
    do {
        part = input.read(kMaxTextSize + 1 - text.size());
        text += part;
    } while (!part.isEmpty());
    return text;
}

} // namespace

PanelInput::PanelInput(const QString& argument)
    : m_isStandardInput(argument == kStandardInput),
      m_name(m_isStandardInput ? QStringLiteral("<stdin>") : argument),
      m_startFolder(QDir::currentPath())
{}

PanelDescription PanelInput::read(Diagnostics& diagnostics) const
{
    QDir::setCurrent(m_startFolder);
    PanelDescription description = m_isStandardInput
                                       ? PanelFile::parse(readStandardInput(), m_name, diagnostics)
                                       : PanelFile::read(m_name, diagnostics);
    if (!m_isStandardInput) {
        QDir::setCurrent(QFileInfo(m_name).absolutePath());
    }
    if (description.access.isGiven() && !PinHash::isAvailable()) {
        diagnostics.error(description.access.place, PinHash::kUnavailable);
    }
    return description;
}

} // namespace norvo
