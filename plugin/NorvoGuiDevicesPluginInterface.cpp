// SPDX-License-Identifier: GPL-3.0-or-later

#include "NorvoGuiDevicesPluginInterface.h"

#include "devices/ButtonDevice.h"
#include "devices/CheckBoxDevice.h"
#include "devices/DropDownListDevice.h"
#include "devices/GraphSettingsDevice.h"
#include "devices/IndicatorDevice.h"
#include "devices/InputDevice.h"
#include "devices/Label.h"
#include "devices/LumenoBarDevice.h"
#include "devices/MultilineDevice.h"
#include "devices/OutputBarDevice.h"
#include "devices/OutputDigitalDevice.h"
#include "devices/OutputGraphDevice.h"
#include "devices/OutputVector.h"
#include "devices/OutputWithProgress.h"
#include "devices/PictureDevice.h"
#include "devices/QmlGuiDevice.h"
#include "devices/SliderDevice.h"
#include "norvo/DeviceManager.h"

#include <QDebug>

void NorvoGuiDevicesPluginInterface::registerDeviceType(DeviceManager& manager)
{
    manager.registerDeviceType<ButtonDevice>("button");
    manager.registerDeviceType<InputDevice>("input");
    manager.registerDeviceType<IndicatorDevice>("indicator");
    manager.registerDeviceType<Label>("label");
    manager.registerDeviceType<OutputVector>("output_vector");
    manager.registerDeviceType<OutputVector>("output_vector");
    manager.registerDeviceType<OutputWithProgress>("output_with_progress");
    manager.registerDeviceType<OutputDigitalDevice>("output_digital");
    manager.registerDeviceType<OutputGraphDevice>("output_graph");
    manager.registerDeviceType<GraphSettingsDevice>("graph_settings");
    manager.registerDeviceType<OutputBarDevice>("output_bar");
    manager.registerDeviceType<PictureDevice>("picture");
    manager.registerDeviceType<MultilineDevice>("multiline");
    manager.registerDeviceType<LumenoBarDevice>("output_lumeno");
    manager.registerDeviceType<CheckBoxDevice>("checkbox");
    manager.registerDeviceType<DropDownListDevice>("dropdownlist");
    manager.registerDeviceType<QmlGuiDevice>("qml_widget");
    manager.registerDeviceType<SliderDevice>("slider");

    qDebug().noquote() << "NorvoGui devices plugins was registered";
}
