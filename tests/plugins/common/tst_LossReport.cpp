// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/common/LossReport.h"
#include "TestMain.h"

#include <QtTest>

using norvo::LossReport;

class tst_LossReport : public QObject
{
    Q_OBJECT

private slots:
    void reportsWhatWasLostByKind();
    void reportsByItselfAndOnce();
    void asksForWhatIsCountedElsewhere();
    void isSilentWhileStoppedAndLosesNothing();

private:
    QStringList m_said;
    LossReport::Report m_say = [this](const QString& text) { m_said << text; };
};

void tst_LossReport::reportsWhatWasLostByKind()
{
    m_said.clear();
    LossReport losses({"lines lost", "inputs lost", "answers lost"}, m_say);
    losses.add(2);
    losses.add(0, 40);
    losses.add(2);
    QCOMPARE(m_said, QStringList());
    losses.reportNow();
    QCOMPARE(m_said, QStringList({"lines lost: 40", "answers lost: 2"}));
    losses.reportNow();
    QCOMPARE(m_said.size(), 2);
}

void tst_LossReport::reportsByItselfAndOnce()
{
    m_said.clear();
    LossReport losses({"lines lost"}, m_say);
    losses.add(0);
    losses.add(0);
    QTRY_COMPARE_WITH_TIMEOUT(m_said, QStringList("lines lost: 2"), 30000);
    losses.add(0, 0);
    losses.reportNow();
    QCOMPARE(m_said.size(), 1);
}

void tst_LossReport::asksForWhatIsCountedElsewhere()
{
    m_said.clear();
    LossReport losses({"lines lost"}, m_say);
    losses.setCollector([&losses] { losses.add(0, 7); });
    losses.reportNow();
    QCOMPARE(m_said, QStringList("lines lost: 7"));
    losses.setCollector([this] { m_said << "asked"; });
    QTest::qWait(1500); // No report is due: that one was all.
    QCOMPARE(m_said.size(), 1);
}

void tst_LossReport::isSilentWhileStoppedAndLosesNothing()
{
    m_said.clear();
    LossReport losses({"lines lost"}, m_say);
    losses.add(0);
    losses.stop();
    QTest::qWait(1500); // It would have been reported after 1 s.
    QCOMPARE(m_said, QStringList());
    losses.reportNow();
    QCOMPARE(m_said, QStringList("lines lost: 1"));
}

NORVO_GUILESS_TEST(tst_LossReport)
#include "tst_LossReport.moc"
