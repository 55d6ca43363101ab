// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/catalogue/IncludedFiles.h"

#include "host/catalogue/Catalogue.h"

#include <QDir>
#include <QFileInfo>

namespace norvo {

void rebaseIncludedFiles(PanelDescription& description, const Catalogue& catalogue)
{
    // All files are named from the same folder, whichever that was: what leads from one to the
    // other is the same from any.
    const QString panelFolder = QFileInfo(description.file).path();
    for (DeviceSetting& device : description.devices) {
        const TypeWords* const words = catalogue.words(device.type.text);
        for (ParamSetting& param : device.params) {
            QString& name = param.value.text;
            const QString file =
                param.value.place.origin ? param.value.place.origin->file : QString();
            const QString folder = QFileInfo(file).path();
            const ParamWords* const known = words ? words->param(param.name.text) : nullptr;
            if (!file.isEmpty() && folder != panelFolder && known && known->isFile() &&
                !name.isEmpty() && QFileInfo(name).isRelative()) {
                name = QDir(panelFolder)
                           .relativeFilePath(QFileInfo(folder + '/' + name).absoluteFilePath());
            }
        }
    }
}

} // namespace norvo
