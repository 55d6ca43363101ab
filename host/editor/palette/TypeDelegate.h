// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>

namespace norvo {

/// Draws the lines of a TypeList: a heading, or what can be placed.
class TypeDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    enum Role { KeyRole = Qt::UserRole, PurposeRole, ChosenRole, FaultyRole };

    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace norvo
