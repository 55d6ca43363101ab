// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "LiveEditor.h"

#include <random>

class QAction;
class QLineEdit;
class QListWidget;

namespace norvo {
class PageCover;
class ParamRow;
} // namespace norvo

/// A hand that does one thing after the other in all parts of an editor, at random.
class RandomHand
{
public:
    RandomHand(LiveEditor& editor, unsigned seed) : m_editor(editor), m_random(seed) {}

    /// Does something, and says what. Sheets that it opens it closes.
    QString act();

    int below(int limit) { return int(m_random() % unsigned(limit)); }

private:
    bool oneIn(int count) { return below(count) == 0; }
    template <class List>
    auto anyOf(const List& list)
    {
        return list.isEmpty() ? typename List::value_type() : list[below(list.size())];
    }
    QString anyId();

    QString arrange();
    QString act(const QList<QAction*>& actions);
    QString addOrRemove();
    QString turnPage();
    QString editPages();
    QString usePagesList();
    QString fillPanelForm();
    template <class T>
    T* partOfPanelPane() const;
    QString walkHistory();

    QString fillForm();
    QString fill(norvo::ParamRow& row);
    QString textFor(const norvo::ParamRow& row);
    QString rename();
    QString editPorts();
    QString placeType();

    QString wire();
    QString removeLine();
    QString useTable();
    QString fillSheet();
    void pickFrom(QListWidget* list);
    void tapDevice(const QString& id);

    norvo::PageCover* cover() const;
    QPoint anyCell();
    void tap(QWidget* widget, const QPoint& place, Qt::KeyboardModifiers modifiers = {}) const;
    void type(QLineEdit& field, const QString& text) const;
    void closeSheets() const;

    LiveEditor& m_editor;
    std::mt19937 m_random;
};
