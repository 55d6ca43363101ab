// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QStringList>
#include <QWidget>

class QLabel;
class QPushButton;

namespace norvo {

class AlarmList;
class AlarmService;
class Sheet;

/// What the list of alarms needs to know of the panel that it is opened over.
struct AlarmPlaces
{
    QStringList pages;              ///< Empty: the panel has no tabs.
    QHash<QString, QString> pageOf; ///< By device.
    QString tableFile;              ///< Where the history goes as a table; empty: nowhere.
};

/// The list of alarms with its filters, and the keys of the sheet that it stands on.
class AlarmPage : public QWidget
{
    Q_OBJECT

public:
    AlarmPage(AlarmService& service, const AlarmPlaces& places, Sheet& sheet);

    void begin(); ///< On the sheet: with the worst, for the keyboard as well.

signals:
    void deviceRequested(QString device);

private:
    QWidget* makeFilters(const AlarmPlaces& places);
    void addKeys(Sheet& sheet);
    void acknowledge(const QVector<int>& alarms);
    void followSelection();
    void shelve();
    void saveTable();

    AlarmService& m_service;
    const QString m_tableFile;
    AlarmList* m_list;
    QLabel* m_help; ///< Of what is selected.
    QLabel* m_message;
    QPushButton* m_acknowledge = nullptr;
    QPushButton* m_acknowledgeAll = nullptr;
    QPushButton* m_shelve = nullptr;
    QPushButton* m_goTo = nullptr;
    bool m_areShelved = false; ///< All that are selected, so that the key takes them back.
};

} // namespace norvo
