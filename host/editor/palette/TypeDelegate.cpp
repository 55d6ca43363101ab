// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/palette/TypeDelegate.h"

#include "host/editor/palette/TypePictures.h"

#include <QImage>
#include <QPainter>
#include <QTextLayout>

namespace norvo {

namespace {

constexpr int kGap = 6; // pixels
constexpr int kHeading = 30;
constexpr int kSmaller = 3; ///< Points, of the purpose.

/// As many lines as fit; the last one says that there is more.
void drawWrapped(QPainter& painter, const QRect& area, const QString& text)
{
    const QFontMetrics metrics = painter.fontMetrics();
    const int lines = area.height() / metrics.lineSpacing();
    QTextLayout layout(text, painter.font());
    layout.beginLayout();
    for (int i = 0; i < lines; ++i) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(area.width());
        const bool isCut = i == lines - 1 && line.textStart() + line.textLength() < text.size();
        const QString shown =
            isCut ? metrics.elidedText(text.mid(line.textStart()), Qt::ElideRight, area.width())
                  : text.mid(line.textStart(), line.textLength());
        painter.drawText(area.left(), area.top() + i * metrics.lineSpacing() + metrics.ascent(),
                         shown);
    }
    layout.endLayout();
}

} // namespace

QSize TypeDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const
{
    const bool isHeading = index.data(KeyRole).toString().isEmpty();
    return {TypePictures::kSize.width(),
            isHeading ? kHeading : TypePictures::kSize.height() + 2 * kGap};
}

void TypeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    painter->save();
    const bool isChosen = index.data(ChosenRole).toBool();
    const QPalette& palette = option.palette;
    QFont font = option.font;
    font.setBold(true);
    painter->setFont(font);
    const bool isFaulty = index.data(FaultyRole).toBool();
    painter->setPen(palette.color(isFaulty ? QPalette::Disabled : QPalette::Normal,
                                  isChosen ? QPalette::HighlightedText : QPalette::Text));
    const QRect area = option.rect.adjusted(kGap, kGap, -kGap, -kGap);
    if (index.data(KeyRole).toString().isEmpty()) {
        painter->drawText(option.rect.adjusted(kGap, 0, -kGap, 0), Qt::AlignVCenter,
                          index.data().toString());
        return painter->restore();
    }
    if (isChosen) {
        painter->fillRect(option.rect, palette.brush(QPalette::Highlight));
    }
    if (option.state & QStyle::State_Selected && option.state & QStyle::State_Active) {
        painter->drawRect(option.rect.adjusted(1, 1, -2, -2));
    }
    painter->drawImage(area.topLeft(), index.data(Qt::DecorationRole).value<QImage>());
    const QRect texts = area.adjusted(TypePictures::kSize.width() + kGap, 0, 0, 0);
    const QFontMetrics metrics = painter->fontMetrics();
    painter->drawText(texts, Qt::AlignTop,
                      metrics.elidedText(index.data().toString(), Qt::ElideRight, texts.width()));
    font.setBold(false);
    font.setPointSize(qMax(8, option.font.pointSize() - kSmaller));
    painter->setFont(font);
    if (!isChosen) {
        painter->setPen(palette.color(QPalette::PlaceholderText));
    }
    drawWrapped(*painter, texts.adjusted(0, metrics.lineSpacing(), 0, 0),
                index.data(PurposeRole).toString());
    painter->restore();
}

} // namespace norvo
