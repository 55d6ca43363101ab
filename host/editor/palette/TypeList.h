// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QListWidget>

namespace norvo {

/// Device types and templates, each with its picture, its title and what it is for, under their
/// categories.
/// They can be dragged, too.
class TypeList : public QListWidget
{
    Q_OBJECT

public:
    /// Of what a drag carries: the entry's key.
    static constexpr char kMimeType[] = "application/x-norvo-type";

    struct Entry
    {
        QString key; ///< As EditSession::toPlace().
        QString title;
        QString purpose;
        QString category;
        QImage picture;
        QString fault = {}; ///< Why it cannot be placed; empty: it can.
    };

    TypeList();

    void setEntries(const QVector<Entry>& entries); ///< In the order of their categories.
    void setPicture(const QString& key, const QImage& picture);
    void setChosen(const QString& key); ///< The one that looks chosen; empty: none.
    QString currentKey() const;         ///< Empty: none is current.

signals:
    void picked(QString key); ///< By a tap, or by Enter.

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QList<QListWidgetItem*> items) const override;
};

} // namespace norvo
