// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The style sheets of the readouts, verbatim.
namespace ReadoutLooks {

inline const QString kGreen = "QLabel { background-color : green; color : white; "
                              "border: 1px solid #222222; border-radius: 5px; }";
inline const QString kRed = "QLabel { background-color : red; color : white; "
                            "border: 1px solid #222222; border-radius: 5px; }";
inline const QString kGray = "QLabel { background-color : gray; color : white; "
                             "border: 1px solid #222222; border-radius: 5px; }";
inline const QString kGreenBar =
    "QProgressBar::chunk {background: green; border: 1px solid #222222; "
    "border-top-left-radius: 5px;border-bottom-left-radius: 5px;}";
inline const QString kRedBar = "QProgressBar::chunk {background: red; border: 1px solid #222222; "
                               "border-top-left-radius: 5px;border-bottom-left-radius: 5px;}";
inline const QString kGrayBar = "QProgressBar::chunk {background: gray; border: 1px solid #222222; "
                                "border-top-left-radius: 5px;border-bottom-left-radius: 5px;}";
inline const QString kDarkCaption =
    "QWidget { background-color: #333333; border: 1px solid #222222; border-radius: 5px; }";
inline const QString kRedCaption =
    "QWidget { background-color: red; border: 1px solid #222222; border-radius: 5px; }";

} // namespace ReadoutLooks
