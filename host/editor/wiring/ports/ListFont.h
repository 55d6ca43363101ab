// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QApplication>
#include <QWidget>

namespace norvo {

/// Gives a text or a field beside a list the size of the list's own texts; the look makes those of
/// a panel larger.
inline void setListFont(QWidget& widget)
{
    QFont font = QApplication::font("QListView");
    font.setPointSizeF(QFontInfo(font).pointSizeF());
    widget.setFont(font);
}

} // namespace norvo
