// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/alarms/AlarmStrip.h"

#include "host/services/alarms/AlarmService.h"
#include "host/window/alarms/AlarmBar.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QPushButton>

#include <algorithm>

namespace norvo {

namespace {

QPushButton* makeKey(const char* name)
{
    auto* const key = new QPushButton;
    key->setObjectName(name);
    key->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    return key;
}

} // namespace

AlarmStrip::AlarmStrip(AlarmService& service)
    : m_service(service),
      m_bar(new AlarmBar(service)),
      m_silence(makeKey("alarmSilence")),
      m_list(makeKey("alarmList"))
{
    setObjectName("alarmStrip");
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_bar, 1);
    layout->addWidget(m_silence);
    layout->addWidget(m_list);
    m_silence->setText(tr("Silence"));
    m_silence->hide();
    m_bell.setInterval(kBellMs);
    connect(&m_bell, &QTimer::timeout, [] { QApplication::beep(); });
    connect(m_silence, &QPushButton::clicked, &service, &AlarmService::silence);
    connect(m_list, &QPushButton::clicked, this, &AlarmStrip::listRequested);
    connect(m_bar, &AlarmBar::listRequested, this, &AlarmStrip::listRequested);
    connect(&service, &AlarmService::changed, this, &AlarmStrip::refresh);
    connect(&service, &AlarmService::began, this, &AlarmStrip::tellBegun);
    hide();
    refresh();
}

void AlarmStrip::takeFocus()
{
    if (isHidden()) {
        emit listRequested();
    } else {
        m_bar->setFocus(Qt::ShortcutFocusReason);
    }
}

void AlarmStrip::refresh()
{
    const auto& alarms = m_service.model().alarms();
    const auto count = std::count_if(alarms.cbegin(), alarms.cend(),
                                     [](const Alarm& alarm) { return alarm.isShown(); });
    m_list->setText(tr("Alarms %1").arg(count));
    const bool isSounding = m_service.isSounding();
    m_silence->setVisible(isSounding);
    if (!isSounding) {
        m_bell.stop();
    } else if (!m_bell.isActive()) {
        QApplication::beep();
        m_bell.start();
    }
    setVisible(count > 0);
}

void AlarmStrip::tellBegun()
{
    QAccessibleEvent event(m_bar, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

} // namespace norvo
