// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/alarms/AlarmSound.h"

#include "host/services/alarms/AlarmHistory.h"

#include <QCoreApplication>

#include <utility>

namespace norvo {

QString AlarmSound::besideThisProgram()
{
    return QCoreApplication::applicationDirPath() + "/norvo-sound";
}

AlarmSound::AlarmSound(const QString& program, Bell bell)
    : m_program(program), m_bell(std::move(bell))
{
    m_answer.setSingleShot(true);
    m_answer.setInterval(kPatienceMs);
    connect(&m_answer, &QTimer::timeout, this, &AlarmSound::fail);
}

AlarmSound::~AlarmSound()
{
    end();
}

void AlarmSound::play(AlarmPriority priority)
{
    if (m_hasFailed) {
        return m_bell();
    }
    if (!m_player) {
        start();
    }
    m_isUnanswered = true;
    m_answer.start();
    m_player->write(nameOf(priority).toUtf8() + '\n');
}

void AlarmSound::start()
{
    m_player = std::make_unique<QProcess>();
    m_player->setStandardErrorFile(QProcess::nullDevice()); // Audio libraries print what they like.
    connect(m_player.get(), &QProcess::readyReadStandardOutput, this, [this] {
        m_player->readAllStandardOutput();
        m_isUnanswered = false;
        m_answer.stop();
    });
    // Not within their signals, which the process would not survive.
    connect(m_player.get(), &QProcess::errorOccurred, this, &AlarmSound::fail,
            Qt::QueuedConnection);
    connect(m_player.get(), QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &AlarmSound::fail, Qt::QueuedConnection);
    m_player->start(m_program, QStringList());
}

void AlarmSound::fail()
{
    if (m_player && !m_hasFailed) {
        end();
        m_hasFailed = true;
        if (m_isUnanswered) {
            m_bell();
        }
    }
}

void AlarmSound::end()
{
    m_answer.stop();
    m_hasFailed = false;
    if (m_player) {
        m_player->disconnect(this);
        m_player->kill();
        m_player->waitForFinished();
        m_player.reset();
    }
}

} // namespace norvo
