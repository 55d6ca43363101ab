// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"
#include "norvo/QmlDeviceImpl.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QSignalSpy>

/// A device with a loader of QML, and what the loader answers.
class QmlOwner : public BaseGuiDevice
{
    Q_OBJECT

public:
    QmlOwner() { setObjectName("face"); }

    BaseWidget* createWidget() override { return nullptr; }

    /// Loads a text; returns what is wrong with it.
    QString load(const QString& code)
    {
        return impl.init(this, "parameter", {}, code, haveMethodsChanged);
    }

    QString loadFile(const QString& path)
    {
        return impl.init(this, "file", path, {}, haveMethodsChanged);
    }

    /// Loads the body of an Item.
    QString loadBody(const QString& body)
    {
        return load("import QtQuick 2.0\nItem {\n" + body + "\n}\n");
    }

    QObject* provider(const QString& name)
    {
        QString signature;
        return impl.getSignalWrapper(name, signature);
    }

    QObject* receiver(const QString& name)
    {
        QString signature;
        return impl.getSlotWrapper(name, signature);
    }

    QVariant property(const char* name) const { return impl.getItem()->property(name); }

    QQmlEngine engine;
    QmlDeviceImpl impl{&engine};
    bool haveMethodsChanged = false;
};
