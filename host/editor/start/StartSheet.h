// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/sheet/Sheet.h"

namespace norvo {

/// What a new panel may begin with: nothing, or an example that is chosen by its picture. Closed,
/// it begins with nothing.
///
/// The keys can be found by their object names: "empty", or the name of the example.
class StartSheet : public Sheet
{
    Q_OBJECT

public:
    explicit StartSheet(QWidget& opener);

    static QStringList examples();                    ///< Their names.
    static QByteArray textOf(const QString& example); ///< Of the panel file.

signals:
    void chosen(QByteArray text);

protected:
    void resizeEvent(QResizeEvent* event) override;
};

} // namespace norvo
