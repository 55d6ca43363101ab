// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QWidget>

namespace norvo {

/// Two texts side by side, with the lines that the other one does not have marked.
///
/// The parts can be found by their object names: "left", "right".
class TwoTexts : public QWidget
{
    Q_OBJECT

public:
    TwoTexts(const QString& leftTitle, const QByteArray& left, const QString& rightTitle,
             const QByteArray& right);
};

} // namespace norvo
