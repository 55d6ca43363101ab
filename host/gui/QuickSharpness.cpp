// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/QuickSharpness.h"

#include "host/gui/qml/QmlLoader.h"

#include "norvo/LibraryPart.h"

#include <QWidget>

void norvo::sharpenQuickWidget(QWidget& quickWidget, double factor)
{
    static const char here = 0;
    QString error;
    const auto sharpen = reinterpret_cast<SharpenQuickWidget>(
        symbolOfPart(&here, "libNorvoGUIQml.so", kSharpenFunction, error));
    if (sharpen) {
        sharpen(&quickWidget, factor);
    }
}
