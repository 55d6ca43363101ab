// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseGuiDevice.h"

#include <memory>

class QmlDeviceImpl;

/// A control or display written in QML, in a file or in a parameter: the item is its face, the
/// item's signals are its outputs and the item's functions its inputs.
class QmlGuiDevice : public BaseGuiDevice
{
    Q_OBJECT

public:
    static constexpr char kSourceType[] = "sourceType";
    static constexpr char kSourceData[] = "sourceData";
    static constexpr char kSourceCode[] = "sourceCode";

    QmlGuiDevice();
    ~QmlGuiDevice() override;

    static DeviceTypeInfo typeInfo();

    QObject* getProvider(const QString& name, QString& signature) override;
    QObject* getReceiver(const QString& name, QString& signature) override;
    bool initialise() override;   ///< Loads the document again each time.
    void deinitialise() override; ///< Gives the item up; engine and loader stay.
    QStringList grabMethods(const QString& name, QMetaMethod::MethodType type,
                            bool flag) const override;
    BaseWidget* createWidget() override;

private:
    std::unique_ptr<QObject> m_engine;     ///< Made at the first initialise().
    std::unique_ptr<QmlDeviceImpl> m_impl; ///< Likewise.
};
