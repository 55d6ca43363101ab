// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/serial/Poll.h"

#include <algorithm>

namespace norvo {

namespace {

constexpr std::chrono::milliseconds kExtension{50};

} // namespace

Poll::Poll(Milliseconds every, Milliseconds timeout) : m_every(every), m_timeout(timeout)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Poll::onTimer);
}

void Poll::start()
{
    m_isOpen = false;
    m_missed = 0;
    m_timer.start(Milliseconds(0));
}

void Poll::stop()
{
    m_isOpen = false;
    m_timer.stop();
}

void Poll::noteAnswer()
{
    m_missed = 0;
    if (m_isOpen) {
        waitForNext();
    }
}

void Poll::onTimer()
{
    if (!m_isOpen) {
        m_isOpen = true;
        m_isExtended = false;
        m_sinceAsked.start();
        m_timer.start(m_timeout);
        emit ask();
    } else if (!m_isExtended && m_hasUnread()) {
        m_isExtended = true;
        m_timer.start(kExtension);
    } else {
        waitForNext();
        emit missed(++m_missed);
    }
}

void Poll::waitForNext()
{
    m_isOpen = false;
    m_timer.start(std::max(Milliseconds(0), m_every - Milliseconds(m_sinceAsked.elapsed())));
}

} // namespace norvo
