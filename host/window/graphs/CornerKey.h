// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractButton>

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
    void paintEvent(QPaintEvent* event) override;

private:
    const int m_size;
    bool m_isBare = false;
};

} // namespace norvo
