// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>

namespace norvo {

/// A key of the graph tools: a symbol, and under it what it does.
class ToolKey : public QAbstractButton
{
    Q_OBJECT

public:
    enum class Symbol { Tools, Pause, Live, Range, Table, Picture, Close };

    ToolKey(Symbol symbol, const QString& text, int size, QWidget* parent = nullptr);

    void show(Symbol symbol, const QString& text); ///< From now on.
    QSize sizeHint() const override;               ///< At least `size` pixels each way.
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// A symbol that fills the square.
    static void paint(QPainter& painter, const QRectF& square, Symbol symbol);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Symbol m_symbol;
    const int m_size;
};

} // namespace norvo
