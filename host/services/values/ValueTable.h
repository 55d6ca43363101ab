// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVector>

#include <memory>
#include <vector>

class BaseDevice;

namespace norvo {

class Panel;
struct PanelPlan;

/// The last value of an output, when it came, and how often values come.
struct Reading
{
    QString device;      ///< Id.
    QString output;      ///< Full signature.
    QString value;       ///< As text in one line, 200 characters at most; empty before the first.
    QVariantList values; ///< As they were sent.
    quint64 count = 0;
    qint64 ageMs = -1;      ///< -1 before the first.
    double perSecond = 0.0; ///< Between the last two looks.
};

/// What a value reads as, in one line of at most 200 characters. Yes and no for bool, up to 20
/// numbers of an array.
QString shownText(const QVariant& value);

/// All values of a panel with their age. Outputs that something is wired to are heard from the
/// start; the others from hearAll() on, as a device may not even compute what nobody hears. Of
/// outputs of one name the wired ones are heard, else that of a text, else the first.
class ValueTable : public QObject
{
    Q_OBJECT

public:
    ValueTable();
    ~ValueTable() override;

    /// Before each plan is applied: the values of devices that run on stay.
    void listen(const PanelPlan& plan);
    void complete(const Panel& panel); ///< Once it is: some have their outputs no sooner.
    void hearAll(const Panel& panel);  ///< Again, too.
    /// In the order of the devices' ids, then of the signatures; without how often values come.
    QVector<Reading> readings() const;
    QVector<Reading> look(); ///< Likewise, with how often since the look before.

private:
    struct Heard;

    void forgetAllBut(const QSet<QString>& devices);
    void hear(const QString& id, BaseDevice& device, const QString& output);

    QHash<QString, QStringList> m_wired;   ///< Outputs by device.
    QHash<QString, QStringList> m_outputs; ///< That are heard, by device.
    std::vector<std::unique_ptr<Heard>> m_heard;
    QHash<QString, quint64> m_countsAtLook; ///< By device and output.
    qint64 m_lastLook;
    bool m_hearsAll = false;
};

} // namespace norvo
