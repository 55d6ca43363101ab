// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMap>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVector>

namespace norvo {

/// How a panel asks to be shown; nothing of it concerns what its devices do.
struct PanelLook
{
    enum class Theme { System, Light, Dark }; ///< System: as dark as the desktop's windows are.
    enum class Touch { Fingers, Gloves };     ///< How large what is touched is made at least.
    enum class Fit { Grow, Scale };           ///< Scale: the page is drawn larger or smaller.

    static constexpr int kMaxWeight = 100;

    /// Shares of the height or width that is left over, one for each row or column from the first;
    /// 0: no more than it needs. By tab; "" stands for those that are not named.
    using Weights = QMap<QString, QVector<int>>;

    Theme theme = Theme::System;
    Touch touch = Touch::Fingers;
    Fit fit = Fit::Grow;
    QSize design;      ///< In pixels, for which the page was laid out; empty: none was named.
    QStringList pages; ///< Names of tabs, in their order; those that only devices name follow.
    QString language;  ///< Such as "de" or "pt_BR"; empty: the system's.
    Weights rows;      ///< None for a tab: rows grow where something in them wants height.
    Weights columns;   ///< None for a tab: of one width, as far as nothing is cut.
};

} // namespace norvo
