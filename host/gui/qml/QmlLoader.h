// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

class DynamicPorts;
class QQmlEngine;
class QQuickItem;
class QWidget;

namespace norvo {

/// The part of QmlDeviceImpl that needs Qt Quick. It lies in a library of its own, because linking
/// Qt Quick takes 5 ms of every start, and few panels show any QML.
class QmlLoader : public QObject
{
public:
    /// As QmlDeviceImpl::init().
    virtual QString load(QObject* owner, bool isFile, const QString& data, const QString& code) = 0;
    virtual void unload() = 0;
    virtual QQmlEngine* engine() const = 0;  ///< The one it was made for, while that lives.
    virtual DynamicPorts* ports() const = 0; ///< Of the item; null when there is none.
    virtual QQuickItem* item() const = 0;
};

/// What the library exports, under the name kQmlLoaderFunction; the caller owns the loader.
using MakeQmlLoader = QmlLoader* (*)(QQmlEngine*);
constexpr char kQmlLoaderFunction[] = "norvoMakeQmlLoader";

/// Likewise; see QuickSharpness.h.
using SharpenQuickWidget = void (*)(QWidget* quickWidget, double factor);
constexpr char kSharpenFunction[] = "norvoSharpenQuickWidget";

} // namespace norvo
