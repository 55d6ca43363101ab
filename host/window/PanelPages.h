#pragma once

#include <QStringList>
#include <QWidget>

class QGridLayout;

namespace norvo {

struct Cells;

/// Where a panel's widgets stand: one grid, or tabs with a grid each.
class PanelPages : public QWidget
{
    Q_OBJECT

public:
    /// One grid without a tab when `areas` is empty, else a tab for each.
    explicit PanelPages(const QStringList& areas, QWidget* parent = nullptr);

    /// Null for an unknown area; the one grid where there are no tabs.
    QGridLayout* grid(const QString& area) const;
    void place(QWidget* widget, const Cells& cells); ///< The area must exist.
    /// Gives the grids up, so that widgets can be deleted one by one without a search for each.
    void dissolve();

private:
    const QStringList m_areas;
    QList<QGridLayout*> m_grids;
};

} // namespace norvo
