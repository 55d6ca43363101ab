// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/PanelInput.h"

#include "host/panel/file/PanelFile.h"
#include "host/services/access/PinHash.h"
#include "host/yaml/SourceText.h"
#include "host/yaml/YamlEdit.h"

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

QString PanelInput::path() const
{
    return m_isStandardInput ? m_startFolder
                             : QDir::cleanPath(QDir(m_startFolder).absoluteFilePath(m_name));
}

QString PanelInput::folder() const
{
    return m_isStandardInput ? m_startFolder : QFileInfo(path()).path();
}

PanelDescription PanelInput::read(Diagnostics& diagnostics) const
{
    if (m_isStandardInput) {
        return parse(readStandardInput(), diagnostics);
    }
    QDir::setCurrent(m_startFolder);
    QString reason;
    const auto text = readTextFile(m_name, reason);
    if (text) {
        return parse(*text, diagnostics);
    }
    diagnostics.error({}, reason);
    QDir::setCurrent(folder());
    return {m_name, {}, {}, {}, {}, {}};
}

PanelDescription PanelInput::parse(const QByteArray& text, Diagnostics& diagnostics) const
{
    return parse(YamlEdit(text), diagnostics);
}

PanelDescription PanelInput::parse(const YamlEdit& text, Diagnostics& diagnostics) const
{
    QDir::setCurrent(m_startFolder);
    PanelDescription description = PanelFile::parse(text, m_name, diagnostics);
    QDir::setCurrent(folder());
    if (description.access.isGiven() && !PinHash::isAvailable()) {
        diagnostics.error(description.access.place, PinHash::kUnavailable);
    }
    return description;
}

} // namespace norvo
