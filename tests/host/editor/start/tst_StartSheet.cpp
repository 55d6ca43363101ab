// SPDX-License-Identifier: GPL-3.0-or-later

#include "../EditedPanel.h"
#include "TestMain.h"

#include "host/editor/start/StartSheet.h"

#include <QToolButton>
#include <QtTest>

using norvo::StartSheet;

class tst_StartSheet : public QObject
{
    Q_OBJECT

private slots:
    void eachExampleRunsWithoutAnError_data();
    void eachExampleRunsWithoutAnError();
    void aTapOnAPictureChoosesItsPanel();
    void eachExampleHasAPicture();
};

void tst_StartSheet::eachExampleRunsWithoutAnError_data()
{
    QTest::addColumn<QString>("example");
    for (const QString& example : StartSheet::examples()) {
        QTest::newRow(qPrintable(example)) << example;
    }
}

void tst_StartSheet::eachExampleRunsWithoutAnError()
{
    QFETCH(QString, example);
    const QByteArray text = StartSheet::textOf(example);
    QVERIFY(!text.isEmpty());
    EditedPanel panel(text);
    for (const norvo::Diagnostic& problem : panel.problems()) {
        QFAIL(qPrintable(problem.toString()));
    }
    QVERIFY(panel.panel().nodes().size() > 1);
}

void tst_StartSheet::aTapOnAPictureChoosesItsPanel()
{
    EditedPanel panel("title: New\n");
    for (const QString& example : StartSheet::examples() + QStringList("empty")) {
        auto* const sheet = new StartSheet(panel.window);
        QSignalSpy chosen(sheet, &StartSheet::chosen);
        sheet->present();
        auto* const key = sheet->findChild<QToolButton*>(example);
        QVERIFY2(key, qPrintable(example));
        QTest::mouseClick(key, Qt::LeftButton);
        QCOMPARE(chosen.count(), 1);
        QCOMPARE(chosen.first().first().toByteArray(),
                 example == "empty" ? QByteArray() : StartSheet::textOf(example));
    }
}

void tst_StartSheet::eachExampleHasAPicture()
{
    EditedPanel panel("title: New\n");
    auto* const sheet = new StartSheet(panel.window);
    sheet->present();
    for (const QString& example : StartSheet::examples()) {
        const QIcon icon = sheet->findChild<QToolButton*>(example)->icon();
        QVERIFY2(icon.actualSize({640, 400}).width() >= 300, qPrintable(example));
    }
}

NORVO_TEST(tst_StartSheet)
#include "tst_StartSheet.moc"
