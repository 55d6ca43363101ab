// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include <optional>

namespace norvo {

class PlotCopy;

/// A line through the copy of a plot, with its time and what all curves have there. It stands at a
/// time: a live picture takes it along.
class Cursor : public QWidget
{
    Q_OBJECT

public:
    explicit Cursor(PlotCopy& plot); ///< Which owns it. Not seen at first.

    void put(double key);
    void moveBy(int columns); ///< In pixels; one that is not there comes in the middle.
    void remove();
    const QStringList& texts() const { return m_texts; } ///< The time first.

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();
    void paintValues(QPainter& painter, int x) const;

    PlotCopy& m_plot;
    std::optional<double> m_key;
    QStringList m_texts;
    QVector<QColor> m_colours; ///< Of the texts; the first has none.
};

} // namespace norvo
