// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/dialogs/KeyPages.h"

#include "host/gui/dialogs/TouchKey.h"

#include <QGridLayout>

namespace norvo {

KeyPages::KeyPages(const QSize& cells, const QList<TouchKey*>& steady)
    : m_cells(cells), m_grid(new QGridLayout(this)), m_more(new TouchKey("keyMore", QString()))
{
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_more->setAccessibleName(tr("More keys"));
    connect(m_more, &QPushButton::clicked, this, &KeyPages::turn);
    placeSteady(QList<TouchKey*>{m_more} + steady);
    for (int column = 0; column < m_cells.width(); ++column) {
        m_grid->setColumnStretch(column, 1);
    }
    for (int row = 0; row < m_cells.height(); ++row) {
        m_grid->setRowStretch(row, 1);
    }
}

void KeyPages::placeSteady(const QList<TouchKey*>& steady)
{
    int spare = qMax(0, m_cells.width() - steady.size());
    int end = steady.size() + spare;
    for (int i = steady.size() - 1; i >= 0; --i) {
        const int fromEnd = steady.size() - 1 - i;
        const int more = fromEnd < 2 ? qMin(spare, 1) : spare;
        spare -= more;
        end -= 1 + more;
        m_grid->addWidget(steady[i], m_cells.height() - 1, end, 1, 1 + more);
    }
}

void KeyPages::setKeys(const QList<TouchKey*>& keys)
{
    clearPage();
    if (keys != m_keys) {
        m_page = 0;
    }
    m_keys = keys;
    for (TouchKey* const key : keys) {
        key->setParent(this);
        key->hide();
    }
    showPage();
}

void KeyPages::clearPage()
{
    for (TouchKey* const key : qAsConst(m_keys)) {
        m_grid->removeWidget(key);
        key->hide();
    }
}

void KeyPages::showPage()
{
    const int onPage = keysOnPage();
    const QList<TouchKey*> shown = m_keys.mid(m_page * onPage, onPage);
    for (int i = 0; i < shown.size(); ++i) {
        m_grid->addWidget(shown[i], i / m_cells.width(), i % m_cells.width());
        shown[i]->show();
    }
    const int pages = (m_keys.size() + onPage - 1) / onPage;
    m_more->setPlainText(QString("%1\n%2/%3").arg(tr("More")).arg(m_page + 1).arg(pages));
    m_more->setVisible(pages > 1);
}

void KeyPages::turn()
{
    clearPage();
    m_page = (m_page + 1) * keysOnPage() < m_keys.size() ? m_page + 1 : 0;
    showPage();
}

} // namespace norvo
