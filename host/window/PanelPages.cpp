#include "host/window/PanelPages.h"

#include "host/panel/plan/Placement.h"

#include <QGridLayout>
#include <QTabWidget>

namespace norvo {

PanelPages::PanelPages(const QStringList& areas, QWidget* parent) : QWidget(parent), m_areas(areas)
{
    if (areas.isEmpty()) {
        m_grids.append(new QGridLayout(this));
        return;
    }
    auto* tabs = new QTabWidget;
    for (const QString& area : areas) {
        auto* tab = new QWidget;
        m_grids.append(new QGridLayout(tab));
        QString label = area;
        tabs->addTab(tab, label.replace("&", "&&"));
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tabs);
}

QGridLayout* PanelPages::grid(const QString& area) const
{
    return m_areas.isEmpty() ? m_grids.value(0, nullptr)
                             : m_grids.value(m_areas.indexOf(area), nullptr);
}

void PanelPages::place(QWidget* widget, const Cells& cells)
{
    QGridLayout* layout = grid(cells.area);
    Q_ASSERT(layout);
    layout->addWidget(widget, cells.row, cells.column, cells.rowspan, cells.colspan);
}

void PanelPages::dissolve()
{
    hide();
    qDeleteAll(m_grids);
    m_grids.clear();
}

} // namespace norvo
