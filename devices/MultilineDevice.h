// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

/// A running log: each value that arrives becomes a line of text.
class MultilineDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kFontSize[] = "widget/fontSize";
    static constexpr char kDisableScrolling[] = "widget/disableScrolling";

    MultilineDevice();

    BaseWidget* createWidget() override;

signals:
    void output(QString value);

public slots:                        // each of them is ignored unless the device is running
    void input(unsigned char value); ///< The number, 0 to 255.
    void input(int value);
    void input(QString value);
    void input(double value);
    void input(QByteArray value); ///< Two upper-case hexadecimal digits and a space for each byte.
    void input(bool value);       ///< "true" or "false".
};
