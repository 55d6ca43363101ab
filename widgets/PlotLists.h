// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qcustomplot.h>

#include <optional>

namespace norvo::plot {

/// While it lives, a list holds only what comes into it meanwhile. That follows then on what was
/// there before.
template <class List>
class SetAside
{
public:
    explicit SetAside(List& list) : m_list(list) { m_list.swap(m_before); }
    ~SetAside()
    {
        m_before += m_list;
        m_list.swap(m_before);
    }
    Q_DISABLE_COPY(SetAside)

private:
    List& m_list;
    List m_before;
};

/// A plot's children, set aside so that what comes and goes among them is found at once.
class ChildrenSetAside : public SetAside<QObjectList>
{
public:
    explicit ChildrenSetAside(QCustomPlot& plot);
};

/// The lists that the plot library looks through from the first entry on for each curve that comes
/// into a plot and its legend. Set aside, they make that cost the same however many there are.
///
/// While this lives, nothing but new curves and their rows of the legend may come or go.
class ListsSetAside
{
public:
    explicit ListsSetAside(QCustomPlot& plot);

private:
    ChildrenSetAside m_children;
    SetAside<QList<QCPAbstractPlottable*>> m_plottables;
    SetAside<QList<QCPGraph*>> m_graphs;
    SetAside<QList<QCPLayerable*>> m_curveLayer;
    SetAside<QList<QCPLayerable*>> m_legendLayer;
    std::optional<SetAside<QList<QList<QCPLayoutElement*>>>> m_rows; ///< Unless there are columns.
    std::optional<SetAside<QList<double>>> m_rowStretches;           ///< Of these rows.
};

} // namespace norvo::plot
