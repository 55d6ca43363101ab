// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/window/sheet/Sheet.h"

#include <QVector>

namespace norvo {

/// A list to pick one thing from. What cannot be taken is shown dim with the reason.
class PickSheet : public Sheet
{
    Q_OBJECT

public:
    struct Row
    {
        QString text;
        QString detail; ///< In a second line; may be empty.
        QString whyNot; ///< Stands in the place of the detail; empty: it can be picked.
    };

    PickSheet(QWidget& opener, const QString& title, const QVector<Row>& rows);

signals:
    void picked(int row); ///< The sheet closes.

private:
    const QVector<Row> m_rows;
};

} // namespace norvo
