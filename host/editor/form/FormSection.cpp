// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/form/FormSection.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace norvo {

namespace {

constexpr int kSpacing = 12; // pixels, between two rows
const QChar kOpen(0x25BE);
const QChar kClosed(0x25B8);

} // namespace

FormSection::FormSection(const QString& title, const QString& name)
    : m_title(title), m_column(new QVBoxLayout(this))
{
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(kSpacing);
    if (!title.isEmpty()) {
        m_key = new QPushButton;
        m_key->setObjectName(name);
        m_key->setAutoDefault(false);
        m_column->addWidget(m_key);
        connect(m_key, &QPushButton::clicked, this, [this] {
            m_isOpen = !m_isOpen;
            nameKey();
            showRows();
        });
    }
}

bool FormSection::fitsAll(const QVector<ParamWords>& params) const
{
    if (params.size() != m_params.size()) {
        return false;
    }
    for (int i = 0; i < params.size(); ++i) {
        const bool fits = m_rows.isEmpty() ? params[i].name == m_params[i].name
                                           : m_rows[i]->fits(params[i], m_stateOf(params[i]));
        if (!fits) {
            return false;
        }
    }
    return true;
}

void FormSection::setParams(const QVector<ParamWords>& params, const StateOf& stateOf)
{
    m_stateOf = stateOf;
    if (!fitsAll(params)) {
        clear();
        m_params = params;
        m_isOpen = false;
        nameKey();
    } else {
        m_params = params;
        refresh();
    }
    setVisible(!params.isEmpty());
    showRows();
}

/// A row may be the one that has asked for it.
void FormSection::clear()
{
    for (ParamRow* const row : qAsConst(m_rows)) {
        row->disconnect(this);
        row->hide();
        m_column->removeWidget(row);
        row->deleteLater();
    }
    m_rows.clear();
}

void FormSection::refresh()
{
    for (ParamRow* const row : qAsConst(m_rows)) {
        row->setState(m_stateOf(row->words()));
    }
}

void FormSection::search(const QString& text)
{
    m_search = text;
    showRows();
}

void FormSection::showRows()
{
    const bool isOpen = !m_key || m_isOpen || !m_search.isEmpty();
    if (isOpen && m_rows.isEmpty()) {
        makeRows();
    }
    for (ParamRow* const row : qAsConst(m_rows)) {
        row->setVisible(isOpen && row->matches(m_search));
    }
    if (m_key) {
        m_key->setVisible(m_search.isEmpty());
    }
}

void FormSection::nameKey()
{
    if (m_key) {
        const QString name = QString("%1 (%2)").arg(m_title).arg(m_params.size());
        m_key->setText((m_isOpen ? kOpen : kClosed) + QString("  ") + name);
        m_key->setAccessibleName(name);
    }
}

void FormSection::makeRows()
{
    for (const ParamWords& words : qAsConst(m_params)) {
        ParamRow* const row = makeRow(words);
        m_rows.append(row);
        m_column->addWidget(row);
    }
}

ParamRow* FormSection::makeRow(const ParamWords& words)
{
    auto* const row = new ParamRow(words, m_stateOf(words));
    connect(row, &ParamRow::changeWanted, this,
            [this, row](const QString& text) { emit changeWanted(row, text); });
    connect(row, &ParamRow::resetWanted, this, [this, row] { emit resetWanted(row); });
    connect(row, &ParamRow::entryEnded, this, &FormSection::entryEnded);
    return row;
}

} // namespace norvo
