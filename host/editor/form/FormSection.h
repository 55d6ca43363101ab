// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/form/ParamRow.h"

#include <QVector>

#include <functional>

class QPushButton;
class QVBoxLayout;

namespace norvo {

/// Some rows of a form, which are made when they are first seen; behind a key where it has a title.
class FormSection : public QWidget
{
    Q_OBJECT

public:
    using StateOf = std::function<ParamState(const ParamWords&)>;

    /// Without a title it is always open.
    explicit FormSection(const QString& title, const QString& name);

    /// Rows that can show the same stay; else all are made anew, and it is closed.
    void setParams(const QVector<ParamWords>& params, const StateOf& stateOf);
    void refresh();
    void search(const QString& text); ///< Shows what matches, open or not; empty: all.
    bool isEmpty() const { return m_params.isEmpty(); }
    const QVector<ParamRow*>& rows() const { return m_rows; }

signals:
    void changeWanted(norvo::ParamRow* row, QString text);
    void resetWanted(norvo::ParamRow* row);
    void entryEnded();

private:
    bool fitsAll(const QVector<ParamWords>& params) const;
    void clear();
    void makeRows();
    void showRows();
    void nameKey();
    ParamRow* makeRow(const ParamWords& words);

    const QString m_title;
    QPushButton* m_key = nullptr; ///< Null without a title.
    QVBoxLayout* m_column;
    QVector<ParamWords> m_params;
    QVector<ParamRow*> m_rows; ///< None, or one for each parameter.
    StateOf m_stateOf;
    QString m_search;
    bool m_isOpen = false; ///< By its key.
};

} // namespace norvo
