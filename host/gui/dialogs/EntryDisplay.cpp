// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/dialogs/EntryDisplay.h"

namespace norvo {

EntryDisplay::EntryDisplay()
{
    constexpr int fontPixels = 32;
    constexpr int height = 60;
    QFont large = font();
    large.setPixelSize(fontPixels);
    setFont(large);
    setMinimumHeight(height);
    setObjectName("display");
}

void EntryDisplay::setError(bool isError)
{
    if (isError == m_isError) {
        return;
    }
    m_isError = isError;
    QPalette colours;
    if (isError) {
        colours.setColor(QPalette::Base, QColor("#c62828"));
        colours.setColor(QPalette::Text, Qt::white);
        colours.setColor(QPalette::PlaceholderText, QColor("#ffd0d0"));
    }
    setPalette(colours);
}

} // namespace norvo
