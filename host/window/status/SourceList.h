// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QTableWidget>

namespace norvo {

class SourceWatch;

/// The sources of a panel: state, since when, the last message, values per second. Read again at
/// each change and every second.
class SourceList : public QTableWidget
{
    Q_OBJECT

public:
    explicit SourceList(const SourceWatch& watch);

private:
    void refresh();
    void measure();

    const SourceWatch& m_watch;
    QElapsedTimer m_sinceMeasured;
    QHash<QString, quint64> m_measured; ///< Values of each source when it was measured.
    QHash<QString, double> m_rates;     ///< Values per second.
};

} // namespace norvo
