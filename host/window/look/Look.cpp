// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/look/Look.h"

#include "host/window/look/PanelStyle.h"
#include "host/window/look/Theme.h"
#include "host/window/look/TouchSize.h"

#include <QApplication>

namespace norvo {

namespace {

/// By class, so that they reach widgets below one with a style sheet, too. Outlines that fit the
/// pixels of the page's own size are cut where the page is drawn larger.
void setFonts(PanelLook::Fit fit)
{
    const auto font = [fit](int points) {
        QFont sized("Liberation Sans", points);
        if (fit == PanelLook::Fit::Scale) {
            sized.setHintingPreference(QFont::PreferNoHinting);
        }
        return sized;
    };
    QApplication::setFont(font(13));
    QApplication::setFont(font(14), "QTabBar");
    QApplication::setFont(font(18), "QLabel");
    QApplication::setFont(font(22), "QLineEdit");
}

} // namespace

void Look::apply(QApplication& application, const PanelLook& look)
{
    const Theme& theme = Theme::of(look.theme);
    QApplication::setStyle(
        new PanelStyle(theme, TouchSize::pixels(look.touch, *application.primaryScreen())));
    QApplication::setPalette(theme.palette());
    QApplication::setPalette(theme.plotPalette(), "QCustomPlot");
    setFonts(look.fit);
}

} // namespace norvo
