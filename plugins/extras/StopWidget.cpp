// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/extras/StopWidget.h"

#include "plugins/extras/StopDevice.h"
#include "plugins/extras/StopKey.h"

#include <QGridLayout>

#include <algorithm>

namespace {

constexpr int kMinReleaseMs = 500;

} // namespace

StopWidget::StopWidget(StopDevice* device, QWidget* parent)
    : BaseWidget(device, parent), m_device(device)
{}

void StopWidget::initialise()
{
    const int releaseMs = getParam(StopDevice::kRelease);
    auto* const key = new StopKey(*m_device, std::max(kMinReleaseMs, releaseMs));
    key->setFont(QFont(font().family(), getParam(StopDevice::kFontSize), QFont::Bold));
    setSizePolicy(key->sizePolicy());
    getLayout()->addWidget(key);
    setFocusProxy(key);
    setInitialised(true);
}
