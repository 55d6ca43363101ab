// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/values/ValueTable.h"

#include <QWidget>

class QTableWidget;
class QLineEdit;

namespace norvo {

/// How long ago that is: "1.2 s", "5 min"; "never" below 0.
QString ageText(qint64 ms);

/// All values of a panel: device, output, last value, how long ago, how often. Read again every
/// second; a field above narrows the list to the rows that hold a text.
class ValuesPage : public QWidget
{
    Q_OBJECT

public:
    /// Of `table`, which outlives the page.
    explicit ValuesPage(ValueTable& table);

    QString text() const; ///< The rows that are seen, a line each, columns separated by tabs.

public slots:
    void copy() const; ///< The text, to the clipboard.

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void refresh();
    void narrow();

    ValueTable& m_table;
    QLineEdit* m_filter;
    QTableWidget* m_rows;
};

/// Opens the page over the window of `opener`, and has all outputs of the panel heard.
void openValues(QWidget& opener, ValueTable& table, const Panel& panel);

} // namespace norvo
