// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/palette/TypeList.h"

#include "host/editor/palette/TypeDelegate.h"

#include <QDrag>
#include <QKeyEvent>
#include <QMimeData>
#include <QScroller>

#include <memory>

namespace norvo {

TypeList::TypeList()
{
    setItemDelegate(new TypeDelegate(this));
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setResizeMode(Adjust);
    setDragEnabled(true);
    setDragDropMode(DragOnly);
    QScroller::grabGesture(viewport(), QScroller::TouchGesture);
    connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        const QString key = item->data(TypeDelegate::KeyRole).toString();
        if (!key.isEmpty()) {
            emit picked(key);
        }
    });
}

void TypeList::setEntries(const QVector<Entry>& entries)
{
    const QString before = currentKey();
    clear();
    QString category;
    for (const Entry& entry : entries) {
        if (entry.category != category) {
            category = entry.category;
            auto* const heading = new QListWidgetItem(category, this);
            heading->setFlags(Qt::ItemIsEnabled);
        }
        auto* const item = new QListWidgetItem(entry.title, this);
        item->setData(TypeDelegate::KeyRole, entry.key);
        item->setData(TypeDelegate::PurposeRole,
                      entry.fault.isEmpty() ? entry.purpose : entry.fault);
        item->setData(TypeDelegate::FaultyRole, !entry.fault.isEmpty());
        item->setData(Qt::DecorationRole, entry.picture);
        item->setData(Qt::AccessibleDescriptionRole, item->data(TypeDelegate::PurposeRole));
        if (entry.key == before || (!currentItem() && before.isEmpty())) {
            setCurrentItem(item);
        }
    }
    if (!currentItem() && count() > 1) {
        setCurrentRow(1); // Behind the heading.
    }
}

void TypeList::setPicture(const QString& key, const QImage& picture)
{
    for (int i = 0; i < count(); ++i) {
        if (item(i)->data(TypeDelegate::KeyRole).toString() == key) {
            item(i)->setData(Qt::DecorationRole, picture);
        }
    }
}

void TypeList::setChosen(const QString& key)
{
    for (int i = 0; i < count(); ++i) {
        const QString itsKey = item(i)->data(TypeDelegate::KeyRole).toString();
        item(i)->setData(TypeDelegate::ChosenRole, !itsKey.isEmpty() && itsKey == key);
    }
}

QString TypeList::currentKey() const
{
    return currentItem() ? currentItem()->data(TypeDelegate::KeyRole).toString() : QString();
}

void TypeList::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                         event->key() == Qt::Key_Space;
    if (isEnter && !currentKey().isEmpty()) {
        emit picked(currentKey());
    } else if (event->key() == Qt::Key_Escape) {
        event->ignore(); // The palette's affair.
    } else {
        QListWidget::keyPressEvent(event);
    }
}

void TypeList::startDrag(Qt::DropActions)
{
    if (currentKey().isEmpty()) {
        return;
    }
    auto* const drag = new QDrag(this);
    drag->setMimeData(mimeData({currentItem()}));
    const auto picture = currentItem()->data(Qt::DecorationRole).value<QImage>();
    drag->setPixmap(QPixmap::fromImage(picture));
    drag->exec(Qt::CopyAction);
}

QStringList TypeList::mimeTypes() const
{
    return {kMimeType};
}

QMimeData* TypeList::mimeData(const QList<QListWidgetItem*> items) const
{
    auto* const carried = new QMimeData;
    if (!items.isEmpty()) {
        carried->setData(kMimeType, items.first()->data(TypeDelegate::KeyRole).toString().toUtf8());
    }
    return carried;
}

} // namespace norvo
