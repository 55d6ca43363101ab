// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/alarms/AlarmStrip.h"

#include "host/services/alarms/AlarmService.h"
#include "host/window/alarms/AlarmBar.h"
#include "host/window/sheet/Sheet.h"

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kSheetWidth = 480; // pixels, at least

QPushButton* makeKey(const char* name)
{
    auto* const key = new QPushButton;
    key->setObjectName(name);
    key->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    return key;
}

} // namespace

AlarmStrip::AlarmStrip(AlarmService& service, const QString& soundProgram)
    : m_service(service),
      m_bar(new AlarmBar(service)),
      m_help(makeKey("alarmHelp")),
      m_silence(makeKey("alarmSilence")),
      m_list(makeKey("alarmList")),
      m_sound(soundProgram, &QApplication::beep)
{
    setObjectName("alarmStrip");
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_bar, 1);
    layout->addWidget(m_help);
    layout->addWidget(m_silence);
    layout->addWidget(m_list);
    m_help->setText(tr("Help"));
    m_nextSound.setInterval(kSoundMs);
    connect(&m_nextSound, &QTimer::timeout, this, &AlarmStrip::sound);
    connect(m_help, &QPushButton::clicked, this, &AlarmStrip::showHelp);
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
    if (isHidden() || m_bar->hasFocus()) {
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
    m_help->setVisible(m_bar->worst() && !m_bar->worst()->definition.help.isEmpty());
    followSound();
    setVisible(count > 0);
}

void AlarmStrip::followSound()
{
    const bool isSounding = m_service.isSounding();
    m_silence->setVisible(isSounding || m_service.isSilenced());
    m_silence->setEnabled(isSounding);
    m_silence->setText(m_service.isSilenced() ? tr("Silenced") : tr("Silence"));
    if (!isSounding) {
        m_nextSound.stop();
        m_sound.end();
    } else if (!m_nextSound.isActive()) {
        sound();
        m_nextSound.start();
    }
}

void AlarmStrip::sound()
{
    m_sound.play(m_service.heardPriority());
}

void AlarmStrip::showHelp()
{
    if (const Alarm* const alarm = m_bar->worst()) {
        auto* const sheet = new Sheet(*m_help, alarm->definition.text);
        auto* const help = new QLabel(alarm->definition.help);
        help->setObjectName("alarmHelpText");
        help->setTextFormat(Qt::PlainText);
        help->setWordWrap(true);
        sheet->content().addWidget(help);
        sheet->present({kSheetWidth, 1});
    }
}

void AlarmStrip::tellBegun()
{
    QAccessibleEvent event(m_bar, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

} // namespace norvo
