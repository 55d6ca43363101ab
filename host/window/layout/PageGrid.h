// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGridLayout>
#include <QVector>

namespace norvo {

class PanelCell;

/// The grid of a page. Rows grow where something in them wants height, else the height that is
/// left stays below; columns are of one width as far as nothing is cut.
class PageGrid : public QGridLayout
{
    Q_OBJECT

public:
    /// Weights: shares of what is left, from the first row or column; empty: as said above.
    PageGrid(QWidget* page, const QVector<int>& rowWeights, const QVector<int>& columnWeights);

    void setWeights(const QVector<int>& rowWeights, const QVector<int>& columnWeights);
    void place(QWidget* widget, int row, int column, int rowspan, int colspan);
    QVector<QRect> cards() const; ///< Behind the cells that stand on one.

    /// Where a row or a column stands on the page.
    struct Line
    {
        int begin = 0;
        int size = 0;
    };
    /// As they were laid out last; empty before. cellRect() tells of whatever size was tried last.
    const QVector<Line>& rowLines() const { return m_rowLines; }
    const QVector<Line>& columnLines() const { return m_columnLines; }

    QSize sizeHint() const override;
    QSize minimumSize() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override; ///< The least, from which the page grows.
    void setGeometry(const QRect& area) override;
    void invalidate() override;

signals:
    void arranged(); ///< Rows and columns lie where they belong now.

private:
    void arrange();
    void noteLines();
    void noteCards();
    QVector<int> rowStretches() const;
    QVector<int> columnStretches() const;

    QVector<int> m_rowWeights;
    QVector<int> m_columnWeights;
    QVector<Line> m_rowLines;
    QVector<Line> m_columnLines;
    QVector<QRect> m_cards; ///< As they were laid out last.
    bool m_isArranged = false;
    bool m_isLaidOut = false; ///< As it is now.
};

} // namespace norvo
