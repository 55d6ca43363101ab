// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/palette/ExampleRun.h"

#include "host/catalogue/Catalogue.h"
#include "host/panel/file/Diagnostics.h"

#include "norvo/BaseWidget.h"

#include <QPainter>

namespace norvo {

namespace {

const QSize kPage(260, 160);      // pixels, of the page that one device stands on
const QSize kNarrow(150, 160);    // likewise, for a flat widget
const QSize kGroupPage(360, 240); // of a page with several
constexpr int kFlat = 80;         // pixels

} // namespace

ExampleRun::ExampleRun(const PicturedPanel& shown, const Catalogue& catalogue) : m_panel(m_pages)
{
    Diagnostics unread(shown.description.file);
    const bool isOne = shown.description.devices.size() == 1;
    m_pages.setAttribute(Qt::WA_DontShowOnScreen);
    m_pages.setAttribute(Qt::WA_QuitOnClose, false);
    m_pages.setFocusPolicy(Qt::NoFocus);
    m_pages.resize(isOne ? kPage : kGroupPage);
    m_panel.apply(PanelPlan::make(shown.description, catalogue.manager(), {}, unread), unread);
    for (const DeviceSetting& device : shown.description.devices) {
        m_ids += device.id.text;
        m_values.setObjectName(device.id.text);
        for (const PicturedPanel::Feed& feed : shown.feeds) {
            BaseDevice* const fed = m_panel.device(device.id.text);
            if (fed && feed.device == device.id.text) {
                m_values.feed(*fed, *catalogue.words(device.type.text), feed.input);
            }
        }
    }
    m_pages.show();
    // A flat one would be small in the picture if it were wide.
    const BaseWidget* const widget = isOne ? m_panel.widget(m_ids.first()) : nullptr;
    if (widget && widget->sizeHint().height() < kFlat) {
        m_pages.resize(kNarrow.expandedTo(m_pages.minimumSizeHint()));
    }
}

QRect ExampleRun::area() const
{
    QRect area;
    for (const QString& id : m_ids) {
        if (const BaseWidget* const widget = m_panel.widget(id)) {
            area |= QRect(widget->mapTo(&m_pages, QPoint()), widget->size());
        }
    }
    return area;
}

/// The widgets alone, on the ground of the page, as large as fits and no larger than they are.
QImage ExampleRun::picture(const QSize& size) const
{
    const QRect shown = area();
    if (shown.isEmpty()) {
        return {};
    }
    auto& pages = const_cast<PanelPages&>(m_pages);
    const QImage seen = pages.grab(shown).toImage();
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(m_pages.palette().color(QPalette::Window));
    const QSize fitting = seen.size().scaled(size, Qt::KeepAspectRatio);
    const QImage scaled = seen.scaled(fitting.boundedTo(seen.size()), Qt::IgnoreAspectRatio,
                                      Qt::SmoothTransformation);
    QPainter painter(&picture);
    painter.drawImage(
        QRect(QPoint(), scaled.size())
            .translated((size.width() - scaled.width()) / 2, (size.height() - scaled.height()) / 2)
            .topLeft(),
        scaled);
    return picture;
}

} // namespace norvo
