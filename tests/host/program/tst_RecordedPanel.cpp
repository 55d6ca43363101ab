// SPDX-License-Identifier: GPL-3.0-or-later

#include "ModalDialog.h"
#include "StartedPanel.h"
#include "TestMain.h"
#include "host/services/access/Access.h"
#include "host/services/access/TestPins.h"

#include <QCheckBox>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QByteArray kDevices("devices:\n"
                          "  pump: {device: button, params: {text: Pump, widget: {row: 0}}}\n"
                          "  open: {device: checkbox, params: {widget: {row: 1}}}\n"
                          "  load: {device: output_digital, params: {widget: {row: 2}}}\n"
                          "alarms:\n"
                          "  - {signal: open.output(double), above: 0.5, text: Valve open}\n"
                          "connections:\n"
                          "  - pump.toggled -> open.input(bool)\n");

// With the role as %1.
const QString kToggled = QStringLiteral(
    R"x({"device":"pump","event":"value","output":"toggled(bool)",%1"value":true})x");
const QString kClicked =
    QStringLiteral(R"x({"device":"pump","event":"value","output":"clicked()",%1"value":null})x");
const QString kUnticked =
    QStringLiteral(R"x({"device":"open","event":"value","output":"output(bool)","value":false})x");
const QString kAcknowledged =
    QStringLiteral(R"x({"alarm":"open.output(double) above 0.5","event":"acknowledged"})x");

/// A started panel with an audit.
class Recorded : public QTemporaryDir, public StartedPanel
{
public:
    explicit Recorded(const QByteArray& text)
        : StartedPanel("audit: " + filePath("a.jsonl").toUtf8() + "\n" + text)
    {}

    /// What has been recorded since the start, without the times.
    QStringList lines() const
    {
        QFile file(filePath("a.jsonl"));
        if (!file.open(QIODevice::ReadOnly)) {
            return {};
        }
        QStringList lines;
        for (const QByteArray& line : file.readAll().split('\n')) {
            QJsonObject entry = QJsonDocument::fromJson(line).object();
            entry.remove("time");
            lines += entry.isEmpty() ? QStringList()
                                     : QStringList(QString::fromUtf8(
                                           QJsonDocument(entry).toJson(QJsonDocument::Compact)));
        }
        return lines.mid(1);
    }
};

} // namespace

/// What the audit holds of what is done in a real window.
class tst_RecordedPanel : public QObject
{
    Q_OBJECT

private slots:
    void tapIsRecordedAndWhatItsWireDoesIsNot();
    void alarmThatIsAcknowledgedIsRecorded();
    void pinsAndRolesAreRecorded();
    void answersToQuestionsAreRecorded();
};

void tst_RecordedPanel::tapIsRecordedAndWhatItsWireDoesIsNot()
{
    Recorded recorded(kDevices);
    QTest::mouseClick(recorded.part<QPushButton>("pump"), Qt::LeftButton);
    QCOMPARE(recorded.lines(), (QStringList{kToggled.arg(""), kClicked.arg("")}));
    auto* const box = recorded.part<QCheckBox>("open");
    QVERIFY(box->isChecked());
    QTest::qWait(400); // No double tap.
    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    QCOMPARE(recorded.lines().mid(2), QStringList(kUnticked));
}

void tst_RecordedPanel::alarmThatIsAcknowledgedIsRecorded()
{
    Recorded recorded(kDevices);
    QTest::mouseClick(recorded.part<QPushButton>("pump"), Qt::LeftButton);
    QTRY_VERIFY(recorded.panel.alarms().isSounding());
    QTest::keyClick(&recorded.panel.window(), Qt::Key_F8);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QTRY_COMPARE(recorded.lines().mid(2), QStringList(kAcknowledged));
}

void tst_RecordedPanel::pinsAndRolesAreRecorded()
{
    Recorded recorded("access: {roles: {operate: \"" + pins::kOperateHash.toUtf8() + "\"}}\n" +
                      kDevices);
    norvo::Access& access = *recorded.panel.access().access();
    const ModalDialog askedAgain([](QWidget&) {}); // And closed.
    QVERIFY(access.tryPin("0000", norvo::Role::Operate));
    QTRY_COMPARE(askedAgain.count(), 1);
    QTRY_COMPARE(recorded.lines(),
                 QStringList(R"({"event":"refused","needed":"operate","role":"view"})"));
    QVERIFY(access.tryPin(pins::kOperate, norvo::Role::Operate));
    QTRY_VERIFY(!access.isLocked());
    QTest::mouseClick(recorded.part<QPushButton>("pump"), Qt::LeftButton);
    access.lock();
    const QString role = R"("role":"operate",)";
    QCOMPARE(recorded.lines().mid(1),
             (QStringList{R"({"event":"unlocked","role":"operate"})", kToggled.arg(role),
                          kClicked.arg(role), R"({"event":"locked","role":"view"})"}));
}

void tst_RecordedPanel::answersToQuestionsAreRecorded()
{
    Recorded recorded("devices:\n  pump: {device: button, confirm: yes, params: {text: Pump}}\n");
    auto* const pump = recorded.part<QPushButton>("pump");
    for (const char* const answer : {"no", "yes"}) {
        const ModalDialog question([answer](QWidget& opened) {
            const auto* const key = opened.findChild<QPushButton*>(answer);
            QVERIFY(QTest::qWaitFor([key] { return key->isEnabled(); }));
            tap(opened, answer);
        });
        QTest::mouseClick(pump, Qt::LeftButton);
        QTRY_COMPARE(question.count(), 1);
    }
    QTRY_VERIFY(pump->isChecked());
    const QStringList lines = recorded.lines();
    QVERIFY2(lines.size() == 4, qPrintable(lines.join('\n')));
    QVERIFY(lines[0].contains(R"("device":"pump","event":"declined")"));
    QVERIFY(lines[1].contains(R"("device":"pump","event":"confirmed")"));
    QCOMPARE(lines.mid(2), (QStringList{kToggled.arg(""), kClicked.arg("")}));
}

NORVO_TEST(tst_RecordedPanel)
#include "tst_RecordedPanel.moc"
