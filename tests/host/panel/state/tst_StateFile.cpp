// SPDX-License-Identifier: GPL-3.0-or-later

#include "StateFileTest.h"
#include "TestMain.h"

using norvo::StateFile;

class tst_StateFile : public StateFileTest
{
    Q_OBJECT

private slots:
    void stateFileIsBesideThePanel_data();
    void stateFileIsBesideThePanel();
    void anyTextSurvives_data();
    void anyTextSurvives();
    void anyNameSurvives();
    void entriesOfOtherDevicesAreKept();
    void nothingIsWrittenWithoutAChange();
    void changeIsWrittenWithinASecond();
    void laterChangesDoNotPostponeTheWriting();
    void handWrittenFileIsRead();
    void deviceMayBeNamedAsAKeyOfAPanel();
    void linkIsFollowed();
    void placesAreThoseOfTheKeys();
    void savedChangeIsNotWrittenAgain();
    void readAgainItHoldsTheNewFileOnly();
};

void tst_StateFile::stateFileIsBesideThePanel_data()
{
    QTest::addColumn<QString>("panel");
    QTest::addColumn<QString>("state");
    QTest::newRow("yaml") << "a/panel.yaml"
                          << "a/panel.state.yaml";
    QTest::newRow("yml") << "panel.yml"
                         << "panel.yml.state.yaml";
    QTest::newRow("capitals") << "/x/P.YAML"
                              << "/x/P.YAML.state.yaml";
    QTest::newRow("other ending") << "bench.panel"
                                  << "bench.panel.state.yaml";
    QTest::newRow("no ending") << "dir.yaml/panel"
                               << "dir.yaml/panel.state.yaml";
}

void tst_StateFile::stateFileIsBesideThePanel()
{
    QFETCH(QString, panel);
    QTEST(StateFile::besidePanel(panel), "state");
}

void tst_StateFile::anyTextSurvives_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("no") << "no";
    QTest::newRow("null") << "~";
    QTest::newRow("number") << "1.0";
    QTest::newRow("quotes") << R"(say "it's" \n \ )";
    QTest::newRow("lines") << "one\ntwo\r\n\n  three\n---\n...\n";
    QTest::newRow("spaces around") << "  \t x \t ";
    QTest::newRow("YAML signs") << "{a: [1, &x *x]} # no comment !!tag | > % @ `";
    QTest::newRow("Unicode") << QString::fromUtf8("Grüße, 温度 °C, \xF0\x9F\x8C\xA1");
    QTest::newRow("separators") << QString::fromUtf8(
        "\xC2\x85 \xE2\x80\xA8 \xE2\x80\xA9 \xEF\xBB\xBF");
    QTest::newRow("no characters") << QString(QChar(0xfffe)) + QChar(0xffff);
    QString controls;
    for (ushort c = 0; c <= 0xa0; ++c) {
        controls += QChar(c);
    }
    QTest::newRow("every control character") << controls;
    QTest::newRow("long") << QString(200000, 'x');
}

void tst_StateFile::anyTextSurvives()
{
    QFETCH(QString, text);
    StateFile first(file());
    first.set("device", "param", "before");
    first.set("device", "param", text);
    first.save();

    StateFile second(file());
    QSignalSpy problems(&second, &StateFile::problem);
    second.read();
    QCOMPARE(problems.size(), 0);
    QCOMPARE(second.state(), (norvo::PanelState{{"device", {{"param", text}}}}));
}

void tst_StateFile::anyNameSurvives()
{
    const norvo::PanelState state{{"no", {{"widget/row", "1"}, {"a: b", "2"}}},
                                  {QString(1000, 'k'), {{QString(1000, '"'), "3"}}},
                                  {"", {{"\n", "4"}}}};
    StateFile first(file());
    for (auto device = state.cbegin(); device != state.cend(); ++device) {
        for (auto param = device->cbegin(); param != device->cend(); ++param) {
            first.set(device.key(), param.key(), param.value());
        }
    }
    first.save();
    StateFile second(file());
    second.read();
    QCOMPARE(second.state(), state);
}

void tst_StateFile::entriesOfOtherDevicesAreKept()
{
    fill("gone:\n  toggled: \"true\"\nempty: {}\n");
    StateFile state(file());
    state.read();
    state.set("here", "toggled", "false");
    state.save();
    StateFile again(file());
    again.read();
    QCOMPARE(again.state().value("gone").value("toggled"), QString("true"));
    QCOMPARE(again.state().value("here").value("toggled"), QString("false"));
}

void tst_StateFile::nothingIsWrittenWithoutAChange()
{
    const QByteArray before = "# by hand\nb: {toggled: true}\n";
    fill(before);
    StateFile state(file());
    state.read();
    state.set("b", "toggled", "true");
    state.save();
    QCOMPARE(content(), before);
}

void tst_StateFile::changeIsWrittenWithinASecond()
{
    StateFile state(file());
    state.set("b", "toggled", "true");
    QVERIFY(!QFile::exists(file()));
    QTRY_VERIFY_WITH_TIMEOUT(content().contains("\"toggled\": \"true\""), 1000);
}

void tst_StateFile::laterChangesDoNotPostponeTheWriting()
{
    StateFile state(file());
    QElapsedTimer clock;
    clock.start();
    int changes = 0;
    QTimer changer;
    connect(&changer, &QTimer::timeout, this,
            [&] { state.set("b", "count", QString::number(++changes)); });
    changer.start(10);
    QTRY_VERIFY_WITH_TIMEOUT(!content().isEmpty(), 1000);
    QVERIFY(changes > 1);
    const QByteArray first = content();
    QTRY_VERIFY_WITH_TIMEOUT(content() != first, 1000);
}

void tst_StateFile::handWrittenFileIsRead()
{
    fill("button: {toggled: no, 'text': 1.0, empty: \"\"}\n");
    StateFile state(file());
    state.read();
    QCOMPARE(state.state(),
             (norvo::PanelState{{"button", {{"toggled", "no"}, {"text", "1.0"}, {"empty", ""}}}}));
}

void tst_StateFile::deviceMayBeNamedAsAKeyOfAPanel()
{
    {
        StateFile saved(file());
        saved.read();
        saved.set("title", "toggled", "true");
        saved.save();
    }
    StateFile state(file());
    const QSignalSpy problems(&state, &StateFile::problem);
    state.read();
    QCOMPARE(problems.count(), 0);
    QCOMPARE(state.state().value("title").value("toggled"), QString("true"));
}

void tst_StateFile::linkIsFollowed()
{
    const QString target = filePath("data.yaml");
    QVERIFY(QFile::link(target, file()));
    StateFile state(file());
    QSignalSpy problems(&state, &StateFile::problem);
    state.read();
    state.set("b", "n", "1");
    state.save();
    QCOMPARE(problems.size(), 0);
    QVERIFY(QFileInfo(file()).isSymLink());
    QVERIFY(QFile::exists(target));
}

void tst_StateFile::placesAreThoseOfTheKeys()
{
    fill("# by hand\nbutton:\n  toggled: true\nother: {a: 1, ? b : 2}\n");
    StateFile state(file());
    state.read();
    const auto shown = [&state](const QString& device, const QString& param) {
        const norvo::Place place = state.places().value(device).value(param);
        return QString("%1:%2").arg(place.line).arg(place.column);
    };
    QCOMPARE(shown("button", ""), QString("2:1"));
    QCOMPARE(shown("button", "toggled"), QString("3:3"));
    QCOMPARE(shown("other", "a"), QString("4:9"));
    QCOMPARE(shown("other", "b"), QString("4:17"));
    state.set("button", "later", "1");
    QCOMPARE(shown("button", "later"), QString("0:0"));
}

void tst_StateFile::savedChangeIsNotWrittenAgain()
{
    StateFile state(file());
    state.set("a", "x", "1");
    state.save();
    QVERIFY(QFile::remove(file()));
    state.save();
    state.set("a", "x", "1"); // No change.
    state.save();
    QVERIFY(!QFile::exists(file()));
}

void tst_StateFile::readAgainItHoldsTheNewFileOnly()
{
    fill("a: {x: 1, y: 2}\nb: {z: 3}\n");
    StateFile state(file(), StateFile::Mode::ReadOnly);
    state.read();
    fill("a: {y: 4}\n");
    state.read();
    QCOMPARE(state.state(), (norvo::PanelState{{"a", {{"y", "4"}}}}));
    QCOMPARE(state.places().keys(), QStringList("a"));
    QCOMPARE(state.places().value("a").keys(), (QStringList{"", "y"}));
    QVERIFY(QFile::remove(file()));
    state.read();
    QVERIFY(state.state().isEmpty() && state.places().isEmpty());
}

NORVO_GUILESS_TEST(tst_StateFile)
#include "tst_StateFile.moc"
