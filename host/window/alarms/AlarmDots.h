// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/alarms/Alarm.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>

class QWidget;

namespace norvo {

class AlarmService;
class PanelPages;

/// Marks at the keys of a panel's pages: the sign of the worst alarm of a device on the page,
/// filled while one there waits to be acknowledged.
class AlarmDots : public QObject
{
    Q_OBJECT

public:
    /// `pageOf` is the page of each device.
    AlarmDots(const AlarmService& service, const PanelPages& pages,
              const QHash<QString, QString>& pageOf);
    ~AlarmDots() override; ///< They go with it.

private:
    void refresh();

    const AlarmService& m_service;
    const PanelPages& m_pages;
    const QHash<QString, QString> m_pageOf;
    QHash<QString, QPointer<QWidget>> m_dots; ///< By page.
};

} // namespace norvo
