// SPDX-License-Identifier: GPL-3.0-or-later

#include "../RunningFile.h"
#include "host/services/access/Access.h"
#include "host/services/access/TestPins.h"
#include "host/services/history/HistoryQuery.h"
#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"
#include "TestMain.h"

#include <QDateTime>
#include <QSlider>
#include <QtTest>

using State = norvo::AlarmState;

namespace {

constexpr int kPatience = 60000;
const char kHigh[] = "level.output(double) above 50";
const char kHigher[] = "level.output(double) above 80";
const QByteArray kDevices = "devices:\n"
                            "  level: {device: slider}\n"
                            "  other: {device: slider, params: {widget/row: 1}}\n";
const QByteArray kAlarm = "alarms:\n"
                          "  - {signal: level.output(double), above: 50, text: Too high}\n";

/// A panel whose text changes while it runs.
struct ChangingFile : RunningFile
{
    using RunningFile::RunningFile;

    void send(const QString& id, double value) const
    {
        QMetaObject::invokeMethod(running->panel().device(id), "input", Q_ARG(double, value));
    }
    const norvo::AlarmModel& alarms() const { return running->alarms().model(); }
    bool has(const char* alarm) const { return alarms().find(alarm) >= 0; }
    State state(const char* alarm) const { return alarms().at(alarms().find(alarm)).state; }
    /// Numbers that are recorded of the device's value.
    QVector<double> recorded(const QString& device) const
    {
        norvo::HistoryRange range;
        range.device = device;
        range.signal = "output";
        range.to = QDateTime::currentMSecsSinceEpoch() + 1000;
        QVector<double> values;
        const auto points = running->history()->read(range).get();
        for (const norvo::HistoryPoint& point : points.value_or(norvo::HistoryService::Points())) {
            values.append(point.value.number);
        }
        return values;
    }
    QByteArray content(const QString& name) const
    {
        QFile written(folder.filePath(name));
        return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
    }
};

QByteArray withPins(const QString& operate = pins::kOperateHash)
{
    return "access: {roles: {operate: \"" + operate.toUtf8() + "\"}}\n";
}

} // namespace

/// What runs beside a panel while its text changes.
class tst_ServicesReload : public QObject
{
    Q_OBJECT

private slots:
    void anAlarmThatStaysKeepsItsState();
    void anAlarmThatIsAddedWatches();
    void anAlarmThatIsRemovedEnds();
    void theRoleStaysWhilePinsAreEqual();
    void theHistoryGoesOn();
    void theAuditNotesEachChange();
    void anAuditThatIsAddedBegins();
};

void tst_ServicesReload::anAlarmThatStaysKeepsItsState()
{
    ChangingFile file(kDevices + kAlarm);
    file.send("level", 60);
    QTRY_COMPARE_WITH_TIMEOUT(file.state(kHigh), State::ActiveUnacknowledged, kPatience);
    file.change("title: Other\n" + kDevices + kAlarm);
    QCOMPARE(file.state(kHigh), State::ActiveUnacknowledged);
    file.running->alarms().acknowledge({file.alarms().find(kHigh)});
    QCOMPARE(file.state(kHigh), State::ActiveAcknowledged);
    file.change(kDevices + "  more: {device: label, params: {widget/row: 2}}\n" + kAlarm);
    QCOMPARE(file.state(kHigh), State::ActiveAcknowledged);
    file.send("level", 40); // It is still heard, and once.
    QTRY_COMPARE_WITH_TIMEOUT(file.state(kHigh), State::Normal, kPatience);
    file.send("level", 70);
    QTRY_COMPARE_WITH_TIMEOUT(file.state(kHigh), State::ActiveUnacknowledged, kPatience);
}

void tst_ServicesReload::anAlarmThatIsAddedWatches()
{
    ChangingFile file(kDevices + kAlarm);
    QVERIFY(!file.has(kHigher));
    const BaseDevice* const level = file.running->panel().device("level");
    file.change(kDevices + kAlarm + "  - {signal: level.output(double), above: 80}\n");
    QCOMPARE(file.running->panel().device("level"), level);
    file.send("level", 90);
    QTRY_COMPARE_WITH_TIMEOUT(file.state(kHigher), State::ActiveUnacknowledged, kPatience);
    QCOMPARE(file.state(kHigh), State::ActiveUnacknowledged);
}

void tst_ServicesReload::anAlarmThatIsRemovedEnds()
{
    ChangingFile file(kDevices + kAlarm);
    file.send("level", 60);
    QTRY_VERIFY_WITH_TIMEOUT(!file.alarms().isQuiet(), kPatience);
    file.running->alarms().acknowledge({file.alarms().find(kHigh)});
    file.change(kDevices);
    QTRY_VERIFY_WITH_TIMEOUT(file.alarms().isQuiet(), kPatience);
    file.send("level", 40);
    file.send("level", 60);
    QTest::qWait(2 * norvo::AlarmService::kTellDelayMs);
    QVERIFY(file.alarms().isQuiet()); // Nobody listens any more.
}

void tst_ServicesReload::theRoleStaysWhilePinsAreEqual()
{
    ChangingFile file(withPins() + kDevices);
    const auto access = [&file] { return file.running->access().access(); };
    QVERIFY(access()->tryPin(pins::kOperate, norvo::Role::Operate));
    QTRY_COMPARE_WITH_TIMEOUT(access()->role(), norvo::Role::Operate, kPatience);
    file.change("title: Other\n" + withPins() + kDevices + kAlarm);
    QCOMPARE(access()->role(), norvo::Role::Operate);
    file.change(withPins(pins::kEngineerHash) + kDevices);
    QVERIFY(access()->isLocked());
    file.change(kDevices);
    QVERIFY(!access());
}

void tst_ServicesReload::theHistoryGoesOn()
{
    const QByteArray one = "history: {file: h.sqlite, signals: [level.output]}\n";
    const QByteArray both = "history: {file: h.sqlite, signals: [level.output, other.output]}\n";
    ChangingFile file(one + kDevices);
    const auto* const history = file.running->history();
    file.send("level", 11);
    file.change("title: Other\n" + one + kDevices + kAlarm);
    QCOMPARE(file.running->history(), history); // Without a gap.
    file.send("level", 12);
    file.send("other", 21);
    file.change(both + kDevices);
    file.send("level", 13);
    file.send("other", 22);
    const QVector<double> level = file.recorded("level");
    for (const double value : {11.0, 12.0, 13.0}) {
        QCOMPARE(level.count(value), 1);
    }
    QCOMPARE(file.recorded("other").count(22), 1);
    QCOMPARE(file.recorded("other").count(21), 0); // It was not asked for then.
    file.change(kDevices);
    QVERIFY(!file.running->history());
}

void tst_ServicesReload::theAuditNotesEachChange()
{
    ChangingFile file("audit: a.jsonl\n" + kDevices);
    const auto reloads = [&file] { return file.content("a.jsonl").count("\"event\":\"reload\""); };
    QCOMPARE(reloads(), 0);
    file.change("audit: a.jsonl\n" + kDevices + kAlarm);
    QTRY_COMPARE_WITH_TIMEOUT(reloads(), 1, kPatience);
    file.change("audit: a.jsonl\n" + kDevices);
    QTRY_COMPARE_WITH_TIMEOUT(reloads(), 2, kPatience);
    QCOMPARE(file.content("a.jsonl").count("\"event\":\"start\""), 1);
    QCOMPARE(file.content("a.jsonl").count("\"event\":\"stop\""), 0);
    file.change(kDevices);
    QTRY_COMPARE_WITH_TIMEOUT(file.content("a.jsonl").count("\"event\":\"stop\""), 1, kPatience);
}

/// By devices that are all new: what an operator does there is heard from the beginning.
void tst_ServicesReload::anAuditThatIsAddedBegins()
{
    ChangingFile file(kDevices);
    file.change("audit: a.jsonl\n" + kDevices);
    auto* const slider = file.running->panel().widget("level")->findChild<QSlider*>();
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_PageUp);
    QTRY_VERIFY_WITH_TIMEOUT(file.content("a.jsonl").contains("\"device\":\"level\""), kPatience);
    file.change("audit: a.jsonl\n" + kDevices + kAlarm);
    const int before = file.content("a.jsonl").count("\"device\":\"level\"");
    QTest::keyClick(slider, Qt::Key_PageUp);
    QTRY_VERIFY_WITH_TIMEOUT(file.content("a.jsonl").count("\"device\":\"level\"") > before,
                             kPatience);
    QCOMPARE(file.content("a.jsonl").count("\"event\":\"start\""), 1);
}

NORVO_TEST(tst_ServicesReload)
#include "tst_ServicesReload.moc"
