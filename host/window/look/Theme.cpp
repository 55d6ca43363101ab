// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/look/Theme.h"

#include <QGuiApplication>

namespace norvo {

namespace {

const Theme& light()
{
    static const Theme theme{QColor("#d9dcdf"), QColor("#eceeef"), QColor("#fbfcfc"),
                             QColor("#14181c"), QColor("#545e67"), QColor("#fafbfb"),
                             QColor("#7d8892"), QColor("#0b5fa8"), QColor("#ffffff"),
                             QColor("#0b5fa8"), QColor("#ffffff"), QColor("#fbfcfc"),
                             QColor("#14181c")};
    return theme;
}

const Theme& dark()
{
    static const Theme theme{QColor("#1b1f23"), QColor("#252a30"), QColor("#15181c"),
                             QColor("#e8ebee"), QColor("#98a2ab"), QColor("#39424b"),
                             QColor("#5f6b76"), QColor("#4aa8e8"), QColor("#0b1116"),
                             QColor("#2a78b8"), QColor("#ffffff"), QColor("#e9ecee"),
                             QColor("#14181c")};
    return theme;
}

/// Asked for before a panel's own palette is set, and then remembered.
bool isPlatformDark()
{
    static const bool isDark = QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
    return isDark;
}

} // namespace

const Theme& Theme::of(PanelLook::Theme theme)
{
    const bool isSystemDark = isPlatformDark();
    const bool isDark =
        theme == PanelLook::Theme::System ? isSystemDark : theme == PanelLook::Theme::Dark;
    return isDark ? dark() : light();
}

QColor Theme::faultOn(const QPalette& palette)
{
    const bool isDark = palette.color(QPalette::Window).lightness() < 128;
    return isDark ? QColor("#ff8a80") : QColor("#b3261e");
}

QPalette Theme::palette() const
{
    QPalette palette(text, button, edge, edge, edge, text, text, field, page);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::AlternateBase, card);
    palette.setColor(QPalette::Midlight, card);
    palette.setColor(QPalette::Shadow, edge);
    palette.setColor(QPalette::Highlight, selection);
    palette.setColor(QPalette::HighlightedText, textOnSelection);
    palette.setColor(QPalette::Link, accent);
    palette.setColor(QPalette::LinkVisited, accent);
    palette.setColor(QPalette::PlaceholderText, quiet);
    palette.setColor(QPalette::ToolTipBase, field);
    palette.setColor(QPalette::ToolTipText, text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, quiet);
    }
    palette.setColor(QPalette::Disabled, QPalette::Button, page);
    return palette;
}

QPalette Theme::plotPalette() const
{
    QPalette own = palette();
    for (const auto role : {QPalette::Base, QPalette::Window}) {
        own.setColor(role, plot);
    }
    for (const auto role : {QPalette::Text, QPalette::WindowText}) {
        own.setColor(role, textOnPlot);
    }
    return own;
}

} // namespace norvo
