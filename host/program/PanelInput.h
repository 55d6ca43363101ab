// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"

#include <QString>

namespace norvo {

class YamlEdit;

/// A panel file as the command line names it; "-" is standard input.
class PanelInput
{
public:
    static constexpr char kStandardInput[] = "-";

    /// `argument` is relative to the working folder of now, whatever that is later.
    explicit PanelInput(const QString& argument);

    const QString& name() const { return m_name; } ///< As messages name it.
    bool isStandardInput() const { return m_isStandardInput; }

    /// Reads the file, and makes its folder the working folder: names of files in it are relative
    /// to that, for devices, their libraries and their child programs alike. In a panel
    /// from standard input they are relative to the working folder of the start.
    PanelDescription read(Diagnostics& diagnostics) const;
    /// The same from a text in the place of the file's.
    PanelDescription parse(const QByteArray& text, Diagnostics& diagnostics) const;
    PanelDescription parse(const YamlEdit& text, Diagnostics& diagnostics) const;

    QString path() const;   ///< Absolute; of standard input that of its working folder.
    QString folder() const; ///< That names in the panel are relative to.

private:
    bool m_isStandardInput;
    QString m_name;
    QString m_startFolder; ///< The working folder of the start.
};

} // namespace norvo
