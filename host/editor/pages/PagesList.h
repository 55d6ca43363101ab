// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/editor/EditSession.h"

#include <QWidget>

#include <optional>

class QAction;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;

namespace norvo {

/// The pages of a panel in their order, to be named, moved, added and removed. The one that is
/// chosen is the one that the panel shows.
class PagesList : public QWidget
{
    Q_OBJECT

public:
    explicit PagesList(EditSession& session, QWidget* parent = nullptr);
    ~PagesList() override;

    QList<QAction*> actions() const { return {m_add, m_up, m_down, m_remove}; }

signals:
    void problem(const QString& text); ///< That has no field to stand at.

protected:
    void keyPressEvent(QKeyEvent* event) override; ///< Escape forgets a name that is being typed.

private:
    QAction* makeAction(const char* name, const QString& text, const QKeySequence& key);
    void addKey(QHBoxLayout& keys, QAction& action, const QString& text);
    void layOut();
    void fill();
    void follow(); ///< The page that the panel shows.
    void showName();
    void go(const QString& page);
    void takeName();
    void add();
    void move(int by);
    void askToRemove();
    void remove(const QString& page);
    QStringList pages() const; ///< One, without a name, where the panel names none.
    QString shown() const;     ///< On the panel.
    QStringList devicesOn(const QString& page) const;

    EditSession& m_session;
    QString m_page;                   ///< Whose name stands in the field.
    std::optional<QString> m_refused; ///< A name that stands in the field and was not taken.
    QListWidget* m_rows;
    QLineEdit* m_name;
    QLabel* m_fault;
    QAction* m_add;
    QAction* m_up;
    QAction* m_down;
    QAction* m_remove;
};

} // namespace norvo
