// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/palette/PicturedPanel.h"

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/TypeExample.h"
#include "host/catalogue/TypeWords.h"
#include "host/editor/ExampleParams.h"

#include <algorithm>
#include <optional>

namespace norvo {

namespace {

using Feeds = QVector<PicturedPanel::Feed>;

/// Whether it names something outside of the program.
bool reachesOut(const ParamSetting& param, const TypeWords& words)
{
    const ParamWords* const known = words.param(param.name.text);
    const bool isResource = param.value.text.startsWith(":/");
    return !known || known->kind == ParamKind::Command || (known->isFile() && !isResource);
}

QVector<ParamSetting> harmless(const QVector<ParamSetting>& params, const TypeWords& words)
{
    QVector<ParamSetting> kept;
    std::copy_if(params.cbegin(), params.cend(), std::back_inserter(kept),
                 [&words](const ParamSetting& param) { return !reachesOut(param, words); });
    return kept;
}

/// What the type's example feeds of it.
Feeds usualFeeds(const TypeWords& words, const QString& id)
{
    Feeds feeds;
    const std::optional<DeviceSetting> example = TypeExample::device(words);
    for (const ConnectionSetting& one : TypeExample::panel(words).connections) {
        if (example && one.to.device.text == example->id.text) {
            feeds.append({id, one.to.method.text});
        }
    }
    return feeds;
}

} // namespace

PicturedPanel PicturedPanel::ofType(const TypeWords& words)
{
    PicturedPanel shown;
    shown.description.file = TypeExample::panel(words).file;
    const std::optional<DeviceSetting> found = TypeExample::device(words);
    DeviceSetting device;
    device.id.text = found ? found->id.text : words.key;
    device.type.text = words.key;
    device.params = harmless(exampleParams(words), words);
    shown.feeds = usualFeeds(words, device.id.text);
    shown.description.devices.append(device);
    return shown;
}

PicturedPanel PicturedPanel::ofGroup(const PanelDescription& group, const Catalogue& catalogue)
{
    PicturedPanel shown;
    shown.description.file = group.file;
    QStringList seen;
    for (const DeviceSetting& device : group.devices) {
        const TypeWords* const words = catalogue.words(device.type.text);
        if (words && words->hasWidget) {
            DeviceSetting copied;
            copied.id = device.id;
            copied.type = device.type;
            copied.params = harmless(device.params, *words);
            shown.description.devices.append(copied);
            seen += device.id.text;
        }
    }
    QStringList fed;
    for (const ConnectionSetting& one : group.connections) {
        const QString to = one.to.device.text;
        if (!seen.contains(to)) {
            continue;
        }
        fed += to;
        if (seen.contains(one.from.device.text)) {
            shown.description.connections.append(one);
        } else {
            shown.feeds.append({to, one.to.method.text});
        }
    }
    for (const DeviceSetting& device : qAsConst(shown.description.devices)) {
        if (!fed.contains(device.id.text)) {
            shown.feeds += usualFeeds(*catalogue.words(device.type.text), device.id.text);
        }
    }
    return shown;
}

} // namespace norvo
