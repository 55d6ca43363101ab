// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/edit/ConnectionEdit.h"
#include "host/panel/edit/PortEdit.h"
#include "TestMain.h"

#include <QtTest>

using norvo::YamlEdit;
namespace ConnectionEdit = norvo::ConnectionEdit;
namespace PortEdit = norvo::PortEdit;

namespace {

const QByteArray kPanel =
    "devices:\n"
    "  hot: {device: calc, inputs: {t: \"\"}, outputs: {double: t * 2}} # Hot.\n"
    "  lamp: {device: label}\n"
    "connections:\n"
    "  - hot.double -> lamp.input # One.\n"
    "  # Two.\n"
    "  - lamp.output(double) -> hot.t\n"
    "alarms:\n"
    "  - {signal: hot.double, above: 1}\n";

} // namespace

/// Connections, and the ports that an author names.
class tst_ConnectionEdit : public QObject
{
    Q_OBJECT

private slots:
    void newOneIsLast();
    void changedOneKeepsItsPlace();
    void theLastOneGoesWithItsKey();
    void renamedPortIsFollowed();
    void removedPortTakesWhatNamesIt();
    void portThatCannotBeIsRefused();
};

void tst_ConnectionEdit::newOneIsLast()
{
    YamlEdit edit(kPanel);
    QVERIFY(!ConnectionEdit::add(edit, "a.b", "c.d(int)"));
    QCOMPARE(edit.text(), QByteArray(kPanel).replace("hot.t\n", "hot.t\n  - a.b -> c.d(int)\n"));
    YamlEdit none("devices:\n  lamp: {device: label}\n");
    QVERIFY(!ConnectionEdit::add(none, "a.b", "c.d"));
    QCOMPARE(none.text(),
             QByteArray("devices:\n  lamp: {device: label}\nconnections:\n  - a.b -> c.d\n"));
}

void tst_ConnectionEdit::changedOneKeepsItsPlace()
{
    YamlEdit edit(kPanel);
    QVERIFY(!ConnectionEdit::replace(edit, 0, "a.b", "c.d"));
    QCOMPARE(edit.text(), QByteArray(kPanel).replace("hot.double -> lamp.input #", "a.b -> c.d #"));
}

void tst_ConnectionEdit::theLastOneGoesWithItsKey()
{
    YamlEdit edit(kPanel);
    QVERIFY(!ConnectionEdit::remove(edit, 0));
    QVERIFY(!edit.text().contains("One."));
    QVERIFY(edit.text().contains("  # Two.\n  - lamp.output(double) -> hot.t\n"));
    QVERIFY(ConnectionEdit::remove(edit, 1));
    QVERIFY(!ConnectionEdit::remove(edit, 0));
    QVERIFY2(!edit.text().contains("connections"), edit.text());
}

void tst_ConnectionEdit::renamedPortIsFollowed()
{
    YamlEdit edit(kPanel);
    QVERIFY(!PortEdit::rename(edit, "hot", true, "double", "twice"));
    QCOMPARE(edit.text(),
             QByteArray(kPanel).replace("{double:", "{twice:").replace("hot.double", "hot.twice"));
}

void tst_ConnectionEdit::removedPortTakesWhatNamesIt()
{
    YamlEdit edit(kPanel);
    QVERIFY(!PortEdit::remove(edit, "hot", true, "double"));
    QVERIFY2(!edit.text().contains("double:") && !edit.text().contains("hot.double"), edit.text());
    QVERIFY2(!edit.text().contains("alarms"), edit.text());
    QVERIFY(edit.text().contains("lamp.output(double) -> hot.t"));
}

void tst_ConnectionEdit::portThatCannotBeIsRefused()
{
    YamlEdit edit(kPanel);
    QVERIFY(PortEdit::add(edit, "hot", true, "t", "1"));
    QVERIFY(PortEdit::add(edit, "hot", true, "a b", "1"));
    QVERIFY(PortEdit::add(edit, "none", true, "x", "1"));
    QVERIFY(PortEdit::rename(edit, "hot", true, "double", "t"));
    QVERIFY(PortEdit::remove(edit, "hot", false, "double"));
    QCOMPARE(edit.text(), kPanel);
    QVERIFY(!PortEdit::setDefinition(edit, "hot", true, "double", "t * 3"));
    QCOMPARE(edit.text(), QByteArray(kPanel).replace("t * 2", "t * 3"));
}

NORVO_GUILESS_TEST(tst_ConnectionEdit)
#include "tst_ConnectionEdit.moc"
