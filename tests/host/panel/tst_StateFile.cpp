#include "host/panel/StateFile.h"

#include <QtTest>

#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

using norvo::StateFile;

class tst_StateFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void stateLiesBesideThePanel_data();
    void stateLiesBesideThePanel();
    void anyTextSurvives_data();
    void anyTextSurvives();
    void anyNameSurvives();
    void entriesOfOtherDevicesAreKept();
    void nothingIsWrittenWithoutAChange();
    void changeIsWrittenWithinASecond();
    void laterChangesDoNotPostponeTheWriting();
    void handWrittenFileIsRead();
    void fileThatDoesNotReadIsPutAside_data();
    void fileThatDoesNotReadIsPutAside();
    void olderBadFileIsReplaced();
    void readOnlyModeTouchesNothing();
    void whatIsNoFileIsToldAndLeft();
    void failureIsToldOnceUntilAWritingSucceeds();
    void fullDiskLeavesTheOldFile();
    void linkIsFollowed();

private:
    QByteArray content() const;
    void fill(const QByteArray& text) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_file;
};

void tst_StateFile::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_file = m_folder->filePath("panel.state.yaml");
}

QByteArray tst_StateFile::content() const
{
    QFile file(m_file);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_StateFile::fill(const QByteArray& text) const
{
    QFile file(m_file);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), qint64(text.size()));
}

void tst_StateFile::stateLiesBesideThePanel_data()
{
    QTest::addColumn<QString>("panel");
    QTest::addColumn<QString>("state");
    QTest::newRow("yaml") << "a/panel.yaml"
                          << "a/panel.state.yaml";
    QTest::newRow("yml") << "panel.yml"
                         << "panel.state.yaml";
    QTest::newRow("capitals") << "/x/P.YAML"
                              << "/x/P.state.yaml";
    QTest::newRow("other ending") << "bench.panel"
                                  << "bench.panel.state.yaml";
    QTest::newRow("no ending") << "dir.yaml/panel"
                               << "dir.yaml/panel.state.yaml";
}

void tst_StateFile::stateLiesBesideThePanel()
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
    QTest::newRow("blanks around") << "  \t x \t ";
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
    StateFile first(m_file);
    first.set("device", "param", "before");
    first.set("device", "param", text);
    first.save();

    StateFile second(m_file);
    QSignalSpy problems(&second, &StateFile::problem);
    second.read();
    QCOMPARE(problems.size(), 0);
    QCOMPARE(second.state(), (norvo::PanelState{{"device", {{"param", text}}}}));
}

void tst_StateFile::anyNameSurvives()
{
    const norvo::PanelState state{{"no", {{"widget/row", "1"}, {"a: b", "2"}}},
                                  {QString(3000, 'k'), {{QString(3000, '"'), "3"}}},
                                  {"", {{"\n", "4"}}}};
    StateFile first(m_file);
    for (auto device = state.cbegin(); device != state.cend(); ++device) {
        for (auto param = device->cbegin(); param != device->cend(); ++param) {
            first.set(device.key(), param.key(), param.value());
        }
    }
    first.save();
    StateFile second(m_file);
    second.read();
    QCOMPARE(second.state(), state);
}

void tst_StateFile::entriesOfOtherDevicesAreKept()
{
    fill("gone:\n  toggled: \"true\"\nempty: {}\n");
    StateFile file(m_file);
    file.read();
    file.set("here", "toggled", "false");
    file.save();
    StateFile again(m_file);
    again.read();
    QCOMPARE(again.state().value("gone").value("toggled"), QString("true"));
    QCOMPARE(again.state().value("here").value("toggled"), QString("false"));
}

void tst_StateFile::nothingIsWrittenWithoutAChange()
{
    const QByteArray before = "# by hand\nb: {toggled: true}\n";
    fill(before);
    StateFile file(m_file);
    file.read();
    file.set("b", "toggled", "true");
    file.save();
    QCOMPARE(content(), before);
}

void tst_StateFile::changeIsWrittenWithinASecond()
{
    StateFile file(m_file);
    file.set("b", "toggled", "true");
    QVERIFY(!QFile::exists(m_file));
    QTRY_VERIFY_WITH_TIMEOUT(content().contains("\"toggled\": \"true\""), 1000);
}

void tst_StateFile::laterChangesDoNotPostponeTheWriting()
{
    StateFile file(m_file);
    QElapsedTimer clock;
    clock.start();
    int changes = 0;
    QTimer changer;
    connect(&changer, &QTimer::timeout, this,
            [&] { file.set("b", "count", QString::number(++changes)); });
    changer.start(10);
    QTRY_VERIFY_WITH_TIMEOUT(!content().isEmpty(), 1000);
    QVERIFY(changes > 1);
    const QByteArray first = content();
    QTRY_VERIFY_WITH_TIMEOUT(content() != first, 1000);
}

void tst_StateFile::handWrittenFileIsRead()
{
    fill("button: {toggled: no, 'text': 1.0, empty: \"\"}\n");
    StateFile file(m_file);
    file.read();
    QCOMPARE(file.state(),
             (norvo::PanelState{{"button", {{"toggled", "no"}, {"text", "1.0"}, {"empty", ""}}}}));
}

void tst_StateFile::fileThatDoesNotReadIsPutAside_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("reason");
    QTest::newRow("empty") << QByteArray("") << "it is empty";
    QTest::newRow("zeros") << QByteArray(64, '\0') << "";
    QTest::newRow("half a file") << QByteArray("\"b\":\n  \"toggled\": \"tr")
                                 << "illegal EOF in scalar (line 2)";
    QTest::newRow("list") << QByteArray("- a\n") << "a map is expected here (line 1)";
    QTest::newRow("text for a device") << QByteArray("a: b\n") << "a map is expected here (line 1)";
    QTest::newRow("list for a value")
        << QByteArray("a:\n  b: [c]\n") << "a text is expected here (line 2)";
    QTest::newRow("no UTF-8") << QByteArray("a: {b: \xff}\n") << "it is not UTF-8 text";
    QTest::newRow("deep") << QByteArray(100000, '[') << "";
    QTest::newRow("bomb") << QByteArray("a: &a [x, x]\nb: &b [*a, *a]\nc: [*b, *b]\n")
                          << "a map is expected here (line 1)";
    QTest::newRow("large") << QByteArray(StateFile::kSizeLimit + 1, '#')
                           << "it is larger than 4 MiB";
}

void tst_StateFile::fileThatDoesNotReadIsPutAside()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, reason);
    fill(text);
    StateFile file(m_file);
    QSignalSpy problems(&file, &StateFile::problem);
    file.read();
    QCOMPARE(problems.size(), 1);
    const QString line = problems[0][0].toString();
    QVERIFY2(line.startsWith(m_file + ": warning: the saved state does not read: " + reason),
             qPrintable(line));
    QVERIFY2(line.endsWith("it is kept as " + m_file + ".bad and the panel starts without it"),
             qPrintable(line));
    QVERIFY(!line.contains('\n'));
    QVERIFY(file.state().isEmpty());
    QVERIFY(!QFile::exists(m_file));
    QFile bad(m_file + ".bad");
    QVERIFY(bad.open(QIODevice::ReadOnly));
    QCOMPARE(bad.readAll(), text);
}

void tst_StateFile::olderBadFileIsReplaced()
{
    for (const QByteArray& text : {QByteArray("[first"), QByteArray("[second")}) {
        fill(text);
        StateFile(m_file).read();
        QFile bad(m_file + ".bad");
        QVERIFY(bad.open(QIODevice::ReadOnly));
        QCOMPARE(bad.readAll(), text);
    }
}

void tst_StateFile::readOnlyModeTouchesNothing()
{
    fill("[broken");
    StateFile file(m_file, StateFile::Mode::ReadOnly);
    QSignalSpy problems(&file, &StateFile::problem);
    file.read();
    file.set("b", "toggled", "true");
    file.save();
    QTest::qWait(2 * StateFile::kWriteDelayMs);
    QCOMPARE(problems.size(), 1);
    QCOMPARE(content(), QByteArray("[broken"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files).size(), 1);
}

void tst_StateFile::whatIsNoFileIsToldAndLeft()
{
    QVERIFY(QDir(m_folder->path()).mkdir("panel.state.yaml"));
    StateFile file(m_file);
    QSignalSpy problems(&file, &StateFile::problem);
    file.read();
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0][0].toString(),
             m_file + ": warning: the saved state does not read: it is no regular file; "
                      "the panel starts without it");
    QVERIFY(QFileInfo(m_file).isDir());
}

void tst_StateFile::failureIsToldOnceUntilAWritingSucceeds()
{
    const QString folder = m_folder->filePath("later");
    const QString name = folder + "/p.state.yaml";
    StateFile file(name);
    QSignalSpy problems(&file, &StateFile::problem);
    file.set("b", "n", "1");
    file.save();
    file.set("b", "n", "2");
    file.save();
    QCOMPARE(problems.size(), 1);
    const QString line = problems[0][0].toString();
    QVERIFY2(line.startsWith(name + ": warning: the state cannot be saved: "), qPrintable(line));

    QVERIFY(QDir().mkdir(folder));
    file.set("b", "n", "3");
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(name), 1000);
    QVERIFY(QDir(folder).removeRecursively());
    file.set("b", "n", "4");
    file.save();
    QCOMPARE(problems.size(), 2);
}

void tst_StateFile::fullDiskLeavesTheOldFile()
{
    StateFile file(m_file);
    file.set("b", "n", "old");
    file.save();
    const QByteArray before = content();

    // A limit on the size of files stands in for a full disk: both end a write half-way.
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlimit tight{4096, limit.rlim_max};
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &tight);
    QSignalSpy problems(&file, &StateFile::problem);
    file.set("b", "n", QString(100000, 'x'));
    file.save();
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, handler);
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0][0].toString(), m_file +
                                            ": warning: the state cannot be saved: File too large; "
                                            "tried again with the next change");
    QCOMPARE(content(), before);

    file.save();
    QVERIFY(content().size() > 100000);
}

void tst_StateFile::linkIsFollowed()
{
    const QString target = m_folder->filePath("data.yaml");
    QVERIFY(QFile::link(target, m_file));
    StateFile file(m_file);
    QSignalSpy problems(&file, &StateFile::problem);
    file.read();
    file.set("b", "n", "1");
    file.save();
    QCOMPARE(problems.size(), 0);
    QVERIFY(QFileInfo(m_file).isSymLink());
    QVERIFY(QFile::exists(target));
}

QTEST_GUILESS_MAIN(tst_StateFile)
#include "tst_StateFile.moc"
