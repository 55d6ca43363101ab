// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/palette/ExampleRun.h"

#include "host/catalogue/TypeExample.h"
#include "host/catalogue/TypeWords.h"
#include "host/panel/file/Diagnostics.h"

#include "norvo/BaseWidget.h"

#include <QPainter>

#include <algorithm>

namespace norvo {

namespace {

const QSize kPage(260, 160);   // pixels, of the page that it stands on
const QSize kNarrow(150, 160); // likewise, for a flat widget
constexpr int kFlat = 80;      // pixels

/// Whether it names something outside of the program.
bool reachesOut(const ParamSetting& param, const TypeWords& words)
{
    const ParamWords* const known = words.param(param.name.text);
    const bool isResource = param.value.text.startsWith(":/");
    return !known || known->kind == ParamKind::Command || (known->isFile() && !isResource);
}

} // namespace

PanelDescription ExampleRun::shown(const TypeWords& words)
{
    PanelDescription shown;
    shown.file = TypeExample::panel(words).file;
    const std::optional<DeviceSetting> found = TypeExample::device(words);
    DeviceSetting device;
    device.id.text = found ? found->id.text : words.key;
    device.type.text = words.key;
    if (found) {
        std::copy_if(found->params.cbegin(), found->params.cend(),
                     std::back_inserter(device.params), [&words](const ParamSetting& param) {
                         return !reachesOut(param, words) && !isPlacementParam(param.name.text);
                     });
    }
    shown.devices.append(device);
    return shown;
}

ExampleRun::ExampleRun(const TypeWords& words, const DeviceManager& manager) : m_panel(m_pages)
{
    const PanelDescription description = shown(words);
    m_id = description.devices.constFirst().id.text;
    Diagnostics unread(description.file);
    m_pages.setAttribute(Qt::WA_DontShowOnScreen);
    m_pages.setAttribute(Qt::WA_QuitOnClose, false);
    m_pages.setFocusPolicy(Qt::NoFocus);
    m_pages.resize(kPage);
    m_panel.apply(PanelPlan::make(description, manager, {}, unread), unread);
    BaseDevice* const device = m_panel.device(m_id);
    m_values.setObjectName(m_id);
    for (const ConnectionSetting& connection : TypeExample::panel(words).connections) {
        if (device && connection.to.device.text == m_id) {
            m_values.feed(*device, words, connection.to.method.text);
        }
    }
    m_pages.show();
    // A flat one would be small in the picture if it were wide.
    const BaseWidget* const widget = m_panel.widget(m_id);
    if (widget && widget->sizeHint().height() < kFlat) {
        m_pages.resize(kNarrow.expandedTo(m_pages.minimumSizeHint()));
    }
}

/// The widget alone, on the ground of the page, as large as fits and no larger than it is.
QImage ExampleRun::picture(const QSize& size) const
{
    const BaseWidget* const widget = m_panel.widget(m_id);
    if (!widget) {
        return {};
    }
    auto& pages = const_cast<PanelPages&>(m_pages);
    const QRect area(widget->mapTo(&pages, QPoint()), widget->size());
    const QImage seen = pages.grab(area).toImage();
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
