// SPDX-License-Identifier: GPL-3.0-or-later

#include "devices/QmlParts.h"

#include "norvo/QmlDeviceImpl.h"
#include "widgets/QmlWidget.h"

#include <QDir>
#include <QQmlEngine>

namespace {

QObject* makeEngine(std::unique_ptr<QmlDeviceImpl>& impl)
{
    auto* const engine = new QQmlEngine;
    // Behind the system's own; addImportPath() would put it in front.
    engine->setImportPathList(engine->importPathList() << QDir::currentPath());
    impl = std::make_unique<QmlDeviceImpl>(engine);
    return engine;
}

BaseWidget* makeWidget(QmlDeviceImpl* impl, BaseGuiDevice* device)
{
    return new QmlWidget(impl, device, nullptr);
}

} // namespace

extern "C" Q_DECL_EXPORT const QmlParts* norvoQmlParts()
{
    static constexpr QmlParts parts{makeEngine, makeWidget};
    return &parts;
}
