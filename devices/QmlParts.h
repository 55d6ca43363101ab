// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <memory>

class BaseGuiDevice;
class BaseWidget;
class QObject;
class QmlDeviceImpl;

/// What a QmlGuiDevice makes with Qt Quick; the caller owns each. The plug-in has it in a library
/// of its own, because linking Qt Quick takes time at every start, and few panels show any QML.
struct QmlParts
{
    QObject* (*makeEngine)(std::unique_ptr<QmlDeviceImpl>& impl); ///< And what loads with it.
    BaseWidget* (*makeWidget)(QmlDeviceImpl* impl, BaseGuiDevice* device);
};

/// Null where the library is not there; `error` then says why.
const QmlParts* qmlParts(QString& error);

/// What the library exports.
extern "C" const QmlParts* norvoQmlParts();
