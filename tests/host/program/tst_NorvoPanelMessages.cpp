// SPDX-License-Identifier: GPL-3.0-or-later

#include "CountingFolder.h"
#include "TestMain.h"

#include <QtTest>

/// The program from outside: which messages it writes, and how often.
class tst_NorvoPanelMessages : public QObject
{
    Q_OBJECT

private slots:
    void panelWithNothingToSayIsSilent();
    void debugMessagesComeWithVerboseOnly_data();
    void debugMessagesComeWithVerboseOnly();
    void warningOfTheOpeningOfTheDisplayIsWritten();
    void repeatedWarningIsWrittenOnceAndCounted();
    void everyInformationIsWritten();
    void longMessageIsCut();
};

namespace {

/// What a panel with a talker writes on standard error, from its start to its end.
QStringList messagesOf(const QByteArray& params, const QStringList& options = {})
{
    const CountingFolder folder;
    folder.add("  talker: {device: talker, params: {" + params + "}}\n");
    PanelProcess panel(probes(options + QStringList(folder.panel())));
    panel.start();
    [&] { QTRY_VERIFY_WITH_TIMEOUT(folder.counted() > 30, PanelProcess::kPatience); }();
    panel.sendSignal(SIGTERM);
    [&] { QCOMPARE(panel.waitForEnd(), 0); }();
    return panel.errorLines();
}

} // namespace

/// With every device type that is installed, and with a runtime folder that nobody has set.
void tst_NorvoPanelMessages::panelWithNothingToSayIsSilent()
{
    const PanelFolder folder(
        "devices:\n"
        "  q: {device: qml_widget, params: {sourceType: parameter, sourceCode: "
        "'import QtQuick 2.0; Item { }'}}\n"
        "  p: {device: patch, params: {closeAfter: 20}}\n");
    PanelProcess panel(probes({folder.panel()}));
    panel.removeEnvironment("XDG_RUNTIME_DIR");
    QCOMPARE(panel.runToEnd(), 0);
    QCOMPARE(panel.errorLines(), QStringList());
}

void tst_NorvoPanelMessages::debugMessagesComeWithVerboseOnly_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<bool>("isWritten");
    QTest::newRow("usual") << QStringList() << false;
    QTest::newRow("verbose") << QStringList("--verbose") << true;
}

void tst_NorvoPanelMessages::debugMessagesComeWithVerboseOnly()
{
    QFETCH(QStringList, options);
    const QStringList lines = messagesOf("level: debug, most: 3", options);
    QTEST(lines.contains("message 3"), "isWritten");
}

void tst_NorvoPanelMessages::warningOfTheOpeningOfTheDisplayIsWritten()
{
    PanelProcess check({"--check", "-style", "unheard-of", NORVO_SOURCE_DIR "/README.md"});
    check.setEnvironment("QT_STYLE_OVERRIDE", "unheard-of");
    check.runToEnd();
    QCOMPARE(check.errorLines().filter("unheard-of").size(), 1);
}

void tst_NorvoPanelMessages::repeatedWarningIsWrittenOnceAndCounted()
{
    QCOMPARE(messagesOf("count: 10, most: 100, text: 'odd: %1'"),
             (QStringList{"odd: 1", "odd: 100 (99 more times)"}));
}

void tst_NorvoPanelMessages::everyInformationIsWritten()
{
    QCOMPARE(messagesOf("level: info, most: 3, text: again"),
             (QStringList{"again", "again", "again"}));
}

void tst_NorvoPanelMessages::longMessageIsCut()
{
    const QStringList lines = messagesOf("most: 1, text: '" + QByteArray(100000, 'x') + "'");
    QCOMPARE(lines, QStringList(QString(4000, 'x') + "..."));
}

NORVO_GUILESS_TEST(tst_NorvoPanelMessages)
#include "tst_NorvoPanelMessages.moc"
