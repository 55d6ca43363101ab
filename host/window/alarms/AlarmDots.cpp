// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/alarms/AlarmDots.h"

#include "host/services/alarms/AlarmLines.h"
#include "host/services/alarms/AlarmService.h"
#include "host/window/PanelPages.h"
#include "host/window/alarms/AlarmSign.h"

#include <QAbstractButton>
#include <QPainter>

namespace norvo {

namespace {

constexpr int kSize = 18; // pixels
constexpr int kEdge = 2;  // from the corner of the key

/// In the upper corner of a key, which takes all touches as before.
class Dot : public QWidget
{
public:
    explicit Dot(QAbstractButton& key) : QWidget(&key)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setObjectName("alarmDot");
        resize(kSize, kSize);
    }

    void show(const Alarm& alarm)
    {
        const bool isFilled = alarm.isUnacknowledged();
        move(isRightToLeft() ? kEdge : parentWidget()->width() - kSize - kEdge, kEdge);
        if (isHidden() || m_priority != alarm.definition.priority || m_isFilled != isFilled) {
            m_priority = alarm.definition.priority;
            m_isFilled = isFilled;
            update();
        }
        setVisible(true);
        raise();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        AlarmSign::paint(painter, rect(), m_priority, m_isFilled, palette());
    }

private:
    AlarmPriority m_priority = AlarmPriority::Low;
    bool m_isFilled = false;
};

} // namespace

AlarmDots::AlarmDots(const AlarmService& service, const PanelPages& pages,
                     const QHash<QString, QString>& pageOf)
    : m_service(service), m_pages(pages), m_pageOf(pageOf)
{
    connect(&service, &AlarmService::changed, this, &AlarmDots::refresh);
    refresh();
}

AlarmDots::~AlarmDots()
{
    for (const QPointer<QWidget>& dot : qAsConst(m_dots)) {
        delete dot;
    }
}

void AlarmDots::refresh()
{
    QHash<QString, const Alarm*> worst; // By page.
    for (const Alarm& alarm : m_service.model().alarms()) {
        const auto page = m_pageOf.constFind(alarm.definition.device);
        if (alarm.isShown() && page != m_pageOf.constEnd()) {
            const Alarm*& known = worst[*page];
            known = !known || isWorse(alarm, *known) ? &alarm : known;
        }
    }
    const QStringList pages = m_pages.areas();
    for (const QString& page : pages) {
        QAbstractButton* const key = m_pages.key(page);
        QPointer<QWidget>& dot = m_dots[page];
        if (!dot && key && worst.contains(page)) {
            dot = new Dot(*key);
        }
        if (dot && worst.contains(page)) {
            static_cast<Dot*>(dot.data())->show(*worst.value(page));
        } else if (dot) {
            dot->hide();
        }
        if (key) {
            const Alarm* const alarm = worst.value(page);
            key->setAccessibleDescription(alarm ? tr("Alarm: %1").arg(alarm->definition.text)
                                                : QString());
        }
    }
}

} // namespace norvo
