// SPDX-License-Identifier: GPL-3.0-or-later

#include "../../program/PanelProcess.h"
#include "TestMain.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTcpSocket>
#include <QtTest>

namespace {

constexpr int kPatience = PanelProcess::kPatience;
const QSize kSize(800, 480); // Of the window, which asks for less.

/// A panel that looks the same at all times, with one value that does not.
const QByteArray kPanel = R"(title: Still
devices:
  caption: {device: label, params: {Value: Pump 1, widget: {row: 0, column: 0}}}
  lamp: {device: indicator, params: {widget: {row: 1, column: 0, caption: Running}}}
  ticks: {device: generator, params: {period: 0, offset: 42, interval: 100}}
  value: {device: label, params: {Value: "%1", widget: {row: 2, column: 0}}}
connections:
  - ticks.output(double) -> value.input(double)
)";

/// The page of a panel in a headless browser.
class Browser : public QProcess
{
public:
    Browser(const QString& url, const QSize& size)
    {
        start("/usr/bin/python3",
              {NORVO_SOURCE_DIR "/tests/host/services/view/browse.py", "chromium", url,
               QString::number(size.width()), QString::number(size.height())});
    }
    ~Browser() override
    {
        closeWriteChannel();
        if (!waitForFinished(kPatience)) {
            kill();
            waitForFinished(kPatience);
        }
    }

    QVariant ask(const QString& expression)
    {
        write(expression.toUtf8() + '\n');
        QElapsedTimer clock;
        clock.start();
        while (!canReadLine() && state() != NotRunning && !clock.hasExpired(kPatience)) {
            waitForReadyRead(50);
        }
        return QJsonDocument::fromJson('[' + readLine() + ']').array().at(0).toVariant();
    }

    QString stateText() { return ask("document.getElementById('state').textContent").toString(); }
    QImage picture()
    {
        const QByteArray data =
            ask("document.getElementById('panel').toDataURL()").toString().toLatin1();
        return QImage::fromData(QByteArray::fromBase64(data.mid(data.indexOf(',') + 1)), "png")
            .convertToFormat(QImage::Format_RGB32);
    }
};

/// The program, which serves a panel.
class ServedPanel
{
public:
    explicit ServedPanel(const QStringList& options) { start(options); }

    void start(const QStringList& options)
    {
        process = std::make_unique<PanelProcess>(QStringList("--no-state") + options +
                                                 QStringList(panelFile()));
        process->setReadChannel(QProcess::StandardOutput);
        process->start();
        QElapsedTimer clock;
        clock.start();
        QByteArray text;
        while (!text.contains(" at http") && process->state() != QProcess::NotRunning &&
               !clock.hasExpired(kPatience)) {
            process->waitForReadyRead(50);
            text += process->readAllStandardOutput();
        }
        url = QString::fromUtf8(text.mid(text.lastIndexOf(' ') + 1)).trimmed();
    }

    QString panelFile() const { return folder.panel(); }

    const PanelFolder folder{kPanel};
    std::unique_ptr<PanelProcess> process;
    QString url;
};

int exitOf(const QStringList& arguments, QString* errors = nullptr)
{
    PanelProcess process(arguments);
    const int status = process.runToEnd();
    if (errors) {
        *errors = process.errorLines().join('\n');
    }
    return status;
}

} // namespace

class tst_NorvoPanelServe : public QObject
{
    Q_OBJECT

private slots:
    void wrongOptionsAreReported_data();
    void wrongOptionsAreReported();
    void browserShowsThePanel();
    void browserComesBackByItself();
    void pageFitsAPhone();
    void valuesCanBeAsked();
    void portInUseLeavesThePanelRunning();
    void programThatServesNothingLoadsNoNetwork();
};

void tst_NorvoPanelServe::wrongOptionsAreReported_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("error");
    QTest::newRow("no number") << QStringList{"--serve", "http"}
                               << "--serve needs a port, or an address and a port";
    QTest::newRow("large port") << QStringList{"--serve", "65536"} << "--serve needs a port";
    QTest::newRow("a name") << QStringList{"--serve", "example.org:8080"} << "--serve needs a port";
    QTest::newRow("bare version 6") << QStringList{"--serve", "::1:8080"} << "--serve needs a port";
    QTest::newRow("open without a token")
        << QStringList{"--serve", "0.0.0.0:8080"} << "needs --serve-token FILE";
    QTest::newRow("open without a token, version 6")
        << QStringList{"--serve", "[::]:8080"} << "needs --serve-token FILE";
    QTest::newRow("missing token file")
        << QStringList{"--serve", "8080", "--serve-token", "/nowhere/token"}
        << "--serve-token: /nowhere/token: ";
    QTest::newRow("empty token file")
        << QStringList{"--serve", "8080", "--serve-token", "/dev/null"}
        << "is to be the token, of 16 to 1000 characters";
    QTest::newRow("key alone") << QStringList{"--serve", "8080", "--serve-key", "x"}
                               << "--serve-cert and --serve-key need each other";
    QTest::newRow("no viewers") << QStringList{"--serve", "8080", "--serve-viewers", "0"}
                                << "--serve-viewers needs a number from 1 to 100";
    QTest::newRow("token alone") << QStringList{"--serve-token", "x"}
                                 << "--serve-token goes with --serve only";
    QTest::newRow("check") << QStringList{"--serve", "8080", "--check"}
                           << "--serve goes with a panel that runs only";
}

void tst_NorvoPanelServe::wrongOptionsAreReported()
{
    QFETCH(QStringList, options);
    QFETCH(QString, error);
    QString errors;
    QCOMPARE(exitOf(options + QStringList("panel.yaml"), &errors), 2);
    QVERIFY2(errors.contains(error), qPrintable(errors));
}

void tst_NorvoPanelServe::browserShowsThePanel()
{
    const ServedPanel served({"--serve", "0"});
    QVERIFY2(served.url.startsWith("http://127.0.0.1:"), qPrintable(served.url));
    // The same panel as a picture.
    const QString file = served.folder.filePath("panel.png");
    QCOMPARE(exitOf({"--no-state", "--screenshot", file, "--after", "1000", "--size",
                     QString("%1x%2").arg(kSize.width()).arg(kSize.height()), served.panelFile()}),
             0);
    const QImage wanted = QImage(file).convertToFormat(QImage::Format_RGB32);
    Browser browser(served.url, {900, 700});
    QTRY_COMPARE_WITH_TIMEOUT(browser.stateText(), QString("live"), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(browser.picture() == wanted, kPatience);
    QCOMPARE(browser.ask("document.title").toString(), QString("Still"));
}

void tst_NorvoPanelServe::browserComesBackByItself()
{
    ServedPanel served({"--serve", "0"});
    const QString port = QString::number(QUrl(served.url).port());
    Browser browser(served.url, {900, 700});
    QTRY_COMPARE_WITH_TIMEOUT(browser.stateText(), QString("live"), kPatience);
    served.process.reset();
    QTRY_VERIFY_WITH_TIMEOUT(browser.stateText().startsWith("no answer from the panel since "),
                             kPatience);
    served.start({"--serve", port});
    QTRY_COMPARE_WITH_TIMEOUT(browser.stateText(), QString("live"), kPatience);
}

void tst_NorvoPanelServe::pageFitsAPhone()
{
    const ServedPanel served({"--serve", "0"});
    Browser browser(served.url, {390, 700});
    QTRY_COMPARE_WITH_TIMEOUT(browser.stateText(), QString("live"), kPatience);
    QTRY_COMPARE_WITH_TIMEOUT(browser.ask("document.getElementById('panel').width").toInt(),
                              kSize.width(), kPatience);
    const int width = browser.ask("document.getElementById('panel').clientWidth").toInt();
    QVERIFY2(width > 300 && width <= 390, qPrintable(QString::number(width)));
    QCOMPARE(browser.ask("document.documentElement.scrollWidth").toInt(), 390);
    QCOMPARE(browser.ask("document.documentElement.scrollHeight").toInt(), 700);
}

void tst_NorvoPanelServe::valuesCanBeAsked()
{
    const ServedPanel served({"--serve", "0"});
    QTcpSocket socket;
    const auto ask = [&served, &socket] {
        socket.connectToHost("127.0.0.1", quint16(QUrl(served.url).port()));
        socket.write("GET /values HTTP/1.1\r\nHost: localhost\r\n\r\n");
        while (socket.state() != QAbstractSocket::UnconnectedState) {
            QTest::qWait(5);
        }
        const QByteArray answer = socket.readAll();
        return QJsonDocument::fromJson(answer.mid(answer.indexOf("\r\n\r\n") + 4));
    };
    const auto number = [&ask] {
        const QJsonDocument all = ask();
        for (const QJsonValue& value : all["values"].toArray()) {
            if (value["device"] == "ticks" && value["output"] == "output(double)") {
                return value["value"].toDouble();
            }
        }
        return 0.0;
    };
    QTRY_COMPARE_WITH_TIMEOUT(number(), 42.0, kPatience);
    QCOMPARE(ask()["panel"].toString(), QString("Still"));
}

void tst_NorvoPanelServe::portInUseLeavesThePanelRunning()
{
    const ServedPanel first({"--serve", "0"});
    const QString port = QString::number(QUrl(first.url).port());
    PanelProcess second({"--no-state", "--serve", port, first.panelFile()});
    second.start();
    QVERIFY(
        second.waitForErrorText("the panel cannot be served: cannot listen at 127.0.0.1, port"));
    QVERIFY(!second.waitForFinished(500));
}

void tst_NorvoPanelServe::programThatServesNothingLoadsNoNetwork()
{
    const PanelFolder folder(kPanel);
    PanelProcess process({"--no-state", folder.panel()});
    process.start();
    QVERIFY(process.waitForStarted());
    QTest::qWait(500);
    QFile maps(QString("/proc/%1/maps").arg(process.processId()));
    QVERIFY(maps.open(QIODevice::ReadOnly));
    const QByteArray libraries = maps.readAll();
    QVERIFY(libraries.contains("libQt5Widgets"));
    QVERIFY(!libraries.contains("libNorvoView"));
}

NORVO_TEST(tst_NorvoPanelServe)
#include "tst_NorvoPanelServe.moc"
