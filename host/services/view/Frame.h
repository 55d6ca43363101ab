// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPoint>
#include <QSize>
#include <QVector>

namespace norvo {

/// A piece of a picture.
struct Tile
{
    QPoint at; ///< Of its left upper corner in the picture.
    QImage image;
};

/// What has changed in a picture since the last frame.
struct Frame
{
    QSize size; ///< Of the whole picture, in pixels; empty: the panel is not to be seen.
    QVector<Tile> tiles;
};

} // namespace norvo
