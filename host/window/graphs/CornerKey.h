// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>
#include <QPixmap>

namespace norvo {

/// The key in the lower corner of a graph: its plate is small and covers little, but all of the key
/// takes touches.
class CornerKey : public QAbstractButton
{
    Q_OBJECT

public:
    CornerKey(QWidget* parent, int size); ///< `size` in pixels, of what takes touches.

    void setBare(bool isBare); ///< Only the frame of the focus is seen.

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override; ///< With each frame of the plot below.

private:
    int side() const; ///< Of the plate, in pixels.
    void paintPlate(QPainter& painter) const;

    const int m_size;
    bool m_isBare = false;
    QPixmap m_plate;   ///< As it was last painted.
    int m_painted = 0; ///< In which state.
};

} // namespace norvo
