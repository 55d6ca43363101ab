// SPDX-License-Identifier: GPL-3.0-or-later

#include "ModalDialog.h"
#include "TestMain.h"
#include "ToolPanel.h"
#include "host/services/access/Access.h"
#include "host/services/access/TestPins.h"
#include "host/window/access/AccessFace.h"
#include "host/window/graphs/GraphFiles.h"
#include "host/plots/SeenPoints.h"
#include "host/window/sheet/Sheet.h"

#include <QDir>

#include <csignal>
#include <ctime>
#include <sys/resource.h>

namespace {

/// The zone of this process, for as long as it lives.
class Zone
{
public:
    explicit Zone(const QByteArray& name) : m_before(qgetenv("TZ")) { set(name); }
    ~Zone() { set(m_before); }

private:
    static void set(const QByteArray& name)
    {
        name.isNull() ? qunsetenv("TZ") : qputenv("TZ", name);
        tzset();
    }

    const QByteArray m_before;
};

QStringList filesIn(const QTemporaryDir& folder, const QString& pattern)
{
    return QDir(folder.path()).entryList({pattern}, QDir::Files | QDir::Hidden);
}

QByteArray contentOf(const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("not there");
}

/// What the sheet says, which is then closed.
QString saidBySheet()
{
    auto* const sheet = qobject_cast<norvo::Sheet*>(QApplication::activeModalWidget());
    if (!sheet) {
        return {};
    }
    QStringList texts;
    for (const QLabel* label : sheet->findChildren<QLabel*>()) {
        texts.append(label->text());
    }
    sheet->close();
    return texts.join('\n');
}

} // namespace

class tst_GraphFiles : public QObject
{
    Q_OBJECT

private slots:
    void tableHoldsWhatIsSeen();
    void timesHaveTheirZone_data();
    void timesHaveTheirZone();
    void namesAreQuoted();
    void valuesComeBackAsTheyWere();
    void arrayHasItsIndex();
    void tableIsSavedBesideThePanel();
    void pictureShowsWhatIsSeen();
    void nothingIsOverwritten();
    void fullDiskIsReported();
    void missingFolderIsReported();
    void lockedPanelIsNotSaved();
};

void tst_GraphFiles::tableHoldsWhatIsSeen()
{
    const Zone utc("UTC");
    ToolPanel panel;
    const double now = std::floor(ToolPanel::now()) + 0.25;
    for (int i = 15; i > 0; --i) {
        QMetaObject::invokeMethod(panel.widget(), "input", Q_ARG(double, i + 0.5),
                                  Q_ARG(QString, "a"), Q_ARG(double, now - i));
        QMetaObject::invokeMethod(panel.widget(), "input", Q_ARG(double, -i), Q_ARG(QString, "b"),
                                  Q_ARG(double, now - i));
    }
    panel.waitForFrames(2);
    panel.open();
    panel.copy().toggleCurve("b");
    panel.copy().hold();
    panel.copy().zoomKeys(3.0 / panel.copy().xAxis->range().size(), now - 5);
    const QCPRange seen = panel.copy().xAxis->range();
    QByteArray expected("time,curve,value\r\n");
    for (int i = 15; i > 0; --i) {
        if (seen.contains(now - i)) {
            const QDateTime time = QDateTime::fromMSecsSinceEpoch(qRound64((now - i) * 1000));
            expected += time.toOffsetFromUtc(time.offsetFromUtc())
                            .toString("yyyy-MM-ddThh:mm:ss.zzz")
                            .toLatin1() +
                        "Z" + ",\"a\"," + QByteArray::number(i + 0.5) + "\r\n";
        }
    }
    QVERIFY(expected.count('\n') >= 3 && expected.count('\n') <= 5);
    QCOMPARE(norvo::tableOf(panel.copy()), expected);
}

void tst_GraphFiles::timesHaveTheirZone_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("UTC") << QByteArray("UTC") << QByteArray("Z");
    QTest::newRow("east") << QByteArray("Asia/Kolkata") << QByteArray("+05:30");
    QTest::newRow("west") << QByteArray("America/Phoenix") << QByteArray("-07:00");
}

void tst_GraphFiles::timesHaveTheirZone()
{
    QFETCH(QByteArray, zone);
    QFETCH(QByteArray, end);
    const Zone here(zone);
    ToolPanel panel;
    panel.send("a", {{1, 2}});
    panel.waitForFrames(2);
    panel.open();
    const QByteArray line = norvo::tableOf(panel.copy()).split('\n').value(1);
    QVERIFY2(line.contains(end + ",\"a\",2"), line.constData());
    const QDateTime time = QDateTime::fromString(line.left(line.indexOf(',')), Qt::ISODateWithMs);
    QVERIFY(qAbs(time.secsTo(QDateTime::currentDateTime())) < 60);
}

void tst_GraphFiles::namesAreQuoted()
{
    ToolPanel panel;
    panel.send("a", {{1, 2}});
    QMetaObject::invokeMethod(panel.widget(), "inputName", Q_ARG(QString, "a"),
                              Q_ARG(QString, "x, \"y\""));
    panel.waitForFrames(2);
    panel.open();
    QVERIFY(norvo::tableOf(panel.copy()).contains(",\"x, \"\"y\"\"\",2\r\n"));
}

void tst_GraphFiles::valuesComeBackAsTheyWere()
{
    ToolPanel panel;
    panel.sendArray({0.1, 1.0 / 3, 1e300, qQNaN(), -0.0});
    panel.open("spectrum");
    const QList<QByteArray> lines = norvo::tableOf(panel.copy("spectrum")).split('\n');
    QCOMPARE(lines[1], QByteArray("1,\"\",0.1\r"));
    QCOMPARE(lines[2].split(',').last().trimmed().toDouble(), 1.0 / 3);
    QCOMPARE(lines[3].split(',').last().trimmed().toDouble(), 1e300);
    QCOMPARE(lines[4], QByteArray("4,\"\",\r")); // No number: nothing.
}

void tst_GraphFiles::arrayHasItsIndex()
{
    ToolPanel panel;
    panel.sendArray({3, 4});
    panel.open("spectrum");
    QCOMPARE(norvo::tableOf(panel.copy("spectrum")),
             QByteArray("index,curve,value\r\n1,\"\",3\r\n2,\"\",4\r\n"));
}

void tst_GraphFiles::tableIsSavedBesideThePanel()
{
    ToolPanel panel;
    panel.send("a", {{1, 2}});
    panel.waitForFrames(2);
    panel.open();
    panel.tap("graphPause");
    const QByteArray table = norvo::tableOf(panel.copy());
    panel.tap("graphTable");
    const QStringList files = filesIn(panel.folder, "bench-trend-*.csv");
    QCOMPARE(files.size(), 1);
    QVERIFY2(QRegularExpression("^bench-trend-\\d{4}-\\d\\d-\\d\\d-\\d{6}\\.csv$")
                 .match(files[0])
                 .hasMatch(),
             qPrintable(files[0]));
    QCOMPARE(contentOf(panel.folder.filePath(files[0])), table);
    const QString said = saidBySheet();
    QVERIFY2(said.contains("Saved") && said.contains(panel.folder.filePath(files[0])),
             qPrintable(said));
}

void tst_GraphFiles::pictureShowsWhatIsSeen()
{
    ToolPanel panel;
    panel.send("a", {{3, 2}, {2.5, 5}, {2, 2}});
    panel.waitForFrames(2);
    panel.open();
    panel.tap("graphPause");
    QCoreApplication::processEvents();
    const QImage seen = ToolPanel::pictureOf(&panel.copy());
    panel.tap("graphPicture");
    QVERIFY(saidBySheet().contains("Saved"));
    const QStringList files = filesIn(panel.folder, "bench-trend-*.png");
    QCOMPARE(files.size(), 1);
    QCOMPARE(QImage(panel.folder.filePath(files[0])).convertToFormat(QImage::Format_RGB32), seen);
}

void tst_GraphFiles::nothingIsOverwritten()
{
    const QTemporaryDir folder;
    QString reason;
    QStringList names;
    for (int i = 0; i < 5; ++i) {
        names.append(
            norvo::writeNewFile(folder.filePath("x"), ".csv", QByteArray::number(i), reason));
    }
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(contentOf(names[i]), QByteArray::number(i));
    }
    QCOMPARE(filesIn(folder, "*").size(), 5);
}

/// A file that may not grow is what a full disk is to whoever writes.
void tst_GraphFiles::fullDiskIsReported()
{
    ToolPanel panel;
    panel.open();
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit none{4, limit.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &none), 0);
    panel.tap("graphTable");
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, before);
    const QString said = saidBySheet();
    QVERIFY2(said.startsWith("Not saved\n") && said.size() > 15, qPrintable(said));
    QCOMPARE(filesIn(panel.folder, "*"), QStringList());
}

void tst_GraphFiles::missingFolderIsReported()
{
    ToolPanel panel;
    panel.open();
    QDir(panel.folder.path()).removeRecursively();
    panel.tap("graphPicture");
    const QString said = saidBySheet();
    QVERIFY2(said.startsWith("Not saved\n") && said.size() > 15, qPrintable(said));
}

void tst_GraphFiles::lockedPanelIsNotSaved()
{
    const QByteArray access = QString("access: {roles: {operate: \"%1\", engineer: \"%2\"}}\n")
                                  .arg(pins::kOperateHash, pins::kEngineerHash)
                                  .toUtf8();
    ToolPanel panel(access + ToolPanel::twoGraphs());
    panel.open(); // Whoever is there may look.
    panel.tap("graphPause");
    QVERIFY(panel.copy().isHeld());
    const QByteArray table = norvo::tableOf(panel.copy());
    {
        const ModalDialog question([](QWidget& dialog) { dialog.close(); }); // No PIN is given.
        panel.tap("graphTable");
        QTRY_COMPARE(question.count(), 1);
    }
    QCOMPARE(filesIn(panel.folder, "*.csv"), QStringList());
    norvo::Access* const door = panel.running->access().access();
    QVERIFY(door->tryPin(pins::kOperate, norvo::Role::Operate));
    QTRY_VERIFY(!door->isLocked());
    panel.tap("graphTable");
    QVERIFY(saidBySheet().contains("Saved"));
    const QStringList files = filesIn(panel.folder, "*.csv");
    QCOMPARE(files.size(), 1);
    QCOMPARE(contentOf(panel.folder.filePath(files[0])), table);
}

NORVO_TEST(tst_GraphFiles)
#include "tst_GraphFiles.moc"
