// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QFont>
#include <QPen>
#include <QString>
#include <QWidget>

#include <algorithm>
#include <iterator>

/// Every colour, style sheet and font that the widgets name themselves, type by type. What is not
/// named here comes from the palette.
namespace norvo::Looks {

constexpr int kVeryLight = 3; ///< A font weight.

inline QFont captionFont(int pointSize)
{
    return QFont("Arial", pointSize, kVeryLight, false);
}

/// Sets the style sheet where it is another one: setting it costs as much as a hundred values.
inline void apply(QWidget* widget, const QString& styleSheet)
{
    if (widget->styleSheet() != styleSheet) {
        widget->setStyleSheet(styleSheet);
    }
}

// Readouts and lamps

inline QFont digitsFont(int pointSize)
{
    return QFont("Digital-7", pointSize);
}

/// A rounded plate with one text.
inline QString plate(const QString& background, const QString& text)
{
    return QStringLiteral("QLabel { background-color : %1; color : %2; border: 1px solid #222222; "
                          "border-radius: 5px; }")
        .arg(background, text);
}

inline QString barChunk(const QString& background)
{
    return QStringLiteral("QProgressBar::chunk {background: %1; border: 1px solid #222222; "
                          "border-top-left-radius: 5px;border-bottom-left-radius: 5px;}")
        .arg(background);
}

inline QString readoutCaption(const QString& background)
{
    return QStringLiteral("QWidget { background-color: %1; border: 1px solid #222222; "
                          "border-radius: 5px; }")
        .arg(background);
}

/// One state of a readout.
struct Readout
{
    QString digits;
    QString bar; ///< For readouts that have one.
};

inline const Readout kInRange{plate("green", "white"), barChunk("green")};
inline const Readout kOutOfRange{plate("red", "white"), barChunk("red")};
inline const Readout kTimedOut{plate("gray", "white"), barChunk("gray")};

inline const QString kCaptionDark = readoutCaption("#333333");
inline const QString kCaptionRed = readoutCaption("red");

struct Lamp
{
    QString color; ///< As the parameter names it.
    QString lit;
    QString dark;
};

inline const Lamp kLamps[] = {
    {"green", plate("green", "white"), plate("#2e4e18", "gray")},
    {"red", plate("red", "white"), plate("#420000", "gray")},
    {"yellow", plate("#e5e500", "black"), plate("#8d6b0f ", "gray")},
};

/// Null for a colour that is not one of the three.
inline const Lamp* lamp(const QString& color)
{
    const auto* const found =
        std::find_if(std::begin(kLamps), std::end(kLamps),
                     [&color](const Lamp& look) { return look.color == color; });
    return found == std::end(kLamps) ? nullptr : found;
}

// Labels

inline const QString kWarningText = QStringLiteral("<font color='red'>%1</font>");

// Controls

/// An indicator of that many pixels, at most 4096: a larger one would only ask for memory.
inline QString checkBox(int size)
{
    const int pixels = std::min(size, 4096);
    return QStringLiteral("QCheckBox::indicator {width: %1px; height: %2px;}")
        .arg(pixels)
        .arg(pixels);
}

/// Of the spin box; a line editor is left as it is.
inline constexpr char kInputField[] = R"(
    QAbstractSpinBox {
        background-color: green;
        color: white;
        border: 1px solid #222;
        border-radius: 6px;
        font-size: 60px;
        height: 64px;
        min-width: 180px;
        padding-right: 40px;
        
    }

    QAbstractSpinBox::up-arrow,
    QAbstractSpinBox::down-arrow {
        subcontrol-origin: content;
        width: 40px;
        height: 32px;
    }

    QAbstractSpinBox::up-arrow {
        image: url(:/icons/norvogui_collapse);
    }

    QAbstractSpinBox::down-arrow {
        image: url(:/icons/norvogui_expand);
    }

    QAbstractSpinBox::up-button,
    QAbstractSpinBox::down-button {
        subcontrol-origin: border;
        background: #eaebec;
        border: 1px solid #555;
        width: 40px;
        height: 32px;
        margin: 0;
        padding: 0;
        position: absolute;
    }

    QAbstractSpinBox::up-button {
        subcontrol-position: top right;
        border-top-left-radius: 4px;
        border-bottom-left-radius: 0px;
        border-top-right-radius: 4px;
        border-bottom-right-radius: 0px;
    }

    QAbstractSpinBox::down-button {
        subcontrol-position: bottom right;
        right: 0px;
        border-top: none;
        border-top-left-radius: 0px;
        border-bottom-left-radius: 4px;
        border-top-right-radius: 0px;
        border-bottom-right-radius: 4px;
    }

    QAbstractSpinBox::up-button:hover,
    QAbstractSpinBox::down-button:hover {
        background: #ccc;
    }

    QAbstractSpinBox::up-button:pressed,
    QAbstractSpinBox::down-button:pressed {
        background: #aaa;
    }
)";

// Gauges

inline const QColor kPanel("#F5F5E6");
inline const QColor kPanelEdge("#808080");
inline const QColor kBandEdge("#C8C8C8");
inline const QColor kRedBand("#FD454D");
inline const QColor kGreenZone("#049143");
inline const QColor kPointer(Qt::black);
inline const QPen kPointerEdge(QColor("#3C3C3C"), 2);
inline const QPen kTicks(QColor("#F0F0F0"), 2); ///< And the numbers.

inline QFont scaleFont()
{
    return QFont("Arial", 14, QFont::Bold);
}

/// Of that many pixels, from 1 to 4096.
inline QFont gaugeFont(int pixelSize)
{
    QFont font("Roboto");
    font.setPixelSize(std::clamp(pixelSize, 1, 4096));
    return font;
}

// Graphs

inline const QString kGraphCaption =
    QStringLiteral("QWidget { background-color: palette(alternate-base); "
                   "border: 1px solid palette(base); border-radius: 5px; }");

/// A line as axes and thresholds have it.
inline QPen plotLine(const QColor& color, Qt::PenStyle style = Qt::SolidLine)
{
    return QPen(color, 1.0, style, Qt::SquareCap, Qt::BevelJoin);
}

inline const QPen kThresholdLine = plotLine(Qt::darkRed);

inline QPen curveLine(const QColor& color)
{
    QPen pen(color);
    pen.setCosmetic(true);
    return pen;
}

inline QBrush curveArea(QColor color)
{
    color.setAlpha(128);
    return QBrush(color);
}

/// The color of a time graph's nth sender, counted from 1.
inline QColor curveColor(int n)
{
    constexpr int colors = 12;
    constexpr int firstColor = 6;
    return n == 1 ? QColor(250, 140, 0) : QColor(Qt::GlobalColor(n % colors + firstColor));
}

} // namespace norvo::Looks
