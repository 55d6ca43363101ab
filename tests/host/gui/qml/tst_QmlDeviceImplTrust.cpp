// SPDX-License-Identifier: GPL-3.0-or-later

#include "Neighbour.h"
#include "QmlOwner.h"

#include "MessageLog.h"
#include "TestMain.h"

#include <QBuffer>
#include <QDesktopServices>
#include <QImage>
#include <QtTest>

namespace {

QString refusal(const QString& url)
{
    return "warning: face: " + url +
           " is refused: the network is closed to this document; \"network: true\" at the device "
           "opens it";
}

} // namespace

/// What a document may do outside of its panel.
class tst_QmlDeviceImplTrust : public QObject
{
    Q_OBJECT

private slots:
    void networkIsRefused_data();
    void networkIsRefused();
    void sameRefusalIsReportedOnce();
    void refusedRequestEndsWithoutAnAnswer();
    void farImportIsRefused();
    void networkIsThereWhereItIsAllowed();
    void nextDocumentsRefusalsAreReportedAgain();
    void filesCanBeRead();
    void dataOfAUrlCanBeRead();
    void nativeCodeBesideATextIsNotLoaded_data();
    void nativeCodeBesideATextIsNotLoaded();
    void filesAreNotWritten();
    void filesAreWrittenWhereTheNetworkIsAllowed();
    void urlIsNotOpenedElsewhere_data();
    void urlIsNotOpenedElsewhere();
    void urlIsOpenedWhereTheNetworkIsAllowed_data();
    void urlIsOpenedWhereTheNetworkIsAllowed();
    void urlOfAnotherSchemeIsNeverOpened();
    void programOpensUrlsOfAnyScheme();

private:
    QString file(const QString& name, const QByteArray& text = {})
    {
        QFile out(m_folder.filePath(name));
        out.open(QIODevice::WriteOnly);
        out.write(text);
        return out.fileName();
    }
    QByteArray textOf(const QString& name)
    {
        QFile in(m_folder.filePath(name));
        return in.open(QIODevice::ReadOnly) ? in.readAll() : "there is no such file";
    }

    QTemporaryDir m_folder;
};

void tst_QmlDeviceImplTrust::networkIsRefused_data()
{
    QTest::addColumn<QString>("body");
    QTest::newRow("picture") << "Image { source: '%1' }";
    QTest::newRow("request") << "Component.onCompleted: { var r = new XMLHttpRequest();"
                                " r.open('GET', '%1'); r.send() }";
    QTest::newRow("component") << "Component.onCompleted: Qt.createComponent('%1')";
    QTest::newRow("loader") << "Loader { source: '%1' }";
    QTest::newRow("font") << "FontLoader { source: '%1' }";
    QTest::newRow("request of a worker")
        << "WorkerScript { source: 'file:%2'; Component.onCompleted: sendMessage('%1') }";
}

void tst_QmlDeviceImplTrust::networkIsRefused()
{
    QFETCH(QString, body);
    Neighbour neighbour;
    QmlOwner owner;
    QStringList reported;
    MessageLog log;
    const QString worker = file("worker.js", "WorkerScript.onMessage = function(url) {\n"
                                             "  var r = new XMLHttpRequest();\n"
                                             "  r.open('GET', url); r.send() }\n");
    body.replace("%1", neighbour.url("thing")).replace("%2", worker);
    QCOMPARE(owner.loadBody(body), QString());
    QTRY_VERIFY((reported += log.take()).contains(refusal(neighbour.url("thing"))));
    QCOMPARE(reported.filter("is refused").size(), 1);
    QCOMPARE(neighbour.calls(), 0);
}

void tst_QmlDeviceImplTrust::sameRefusalIsReportedOnce()
{
    Neighbour neighbour;
    QmlOwner owner;
    QStringList reported;
    MessageLog log;
    QCOMPARE(owner.loadBody("property int ends\n"
                            "function ask() { var r = new XMLHttpRequest();"
                            " r.onreadystatechange = function() { if (r.readyState == 4) ++ends };"
                            " r.open('GET', '" +
                            neighbour.url("thing") +
                            "'); r.send() }\n"
                            "Component.onCompleted: { ask(); ask() }"),
             QString());
    QTRY_COMPARE(owner.property("ends").toInt(), 2);
    QCoreApplication::processEvents();
    QCOMPARE(log.take(), QStringList(refusal(neighbour.url("thing"))));
}

void tst_QmlDeviceImplTrust::refusedRequestEndsWithoutAnAnswer()
{
    Neighbour neighbour;
    QmlOwner owner;
    MessageLog log;
    QCOMPARE(owner.loadBody("property var picture: Image { source: '" + neighbour.url("thing") +
                            "' }\nproperty int status: picture.status"),
             QString());
    constexpr int error = 3; // Image.Error
    QTRY_COMPARE(owner.property("status").toInt(), error);
}

void tst_QmlDeviceImplTrust::farImportIsRefused()
{
    Neighbour neighbour;
    QmlOwner owner;
    MessageLog log;
    const QString error = owner.load("import QtQuick 2.0\nimport \"" + neighbour.url("far") +
                                     "\"\nItem { Far {} }\n");
    QCOMPARE(error, QString("sourceCode:3:8: Far is not a type"));
    QVERIFY(!owner.loadFile(neighbour.url("far.qml")).isEmpty());
    QCoreApplication::processEvents();
    const QStringList reported = log.take();
    QVERIFY2(reported.filter("is refused").size() == 2, qPrintable(reported.join('\n')));
    QVERIFY(reported.contains(refusal(neighbour.url("far.qml"))));
    QCOMPARE(neighbour.calls(), 0);
}

void tst_QmlDeviceImplTrust::networkIsThereWhereItIsAllowed()
{
    Neighbour neighbour;
    QmlOwner owner;
    owner.setNetworkAllowed(true);
    MessageLog log;
    QCOMPARE(owner.loadFile(neighbour.url("far.qml")), QString());
    QVERIFY(owner.provider("far"));
    const int calls = neighbour.calls();
    QVERIFY(calls > 0);
    QCOMPARE(log.take(), QStringList());

    owner.setNetworkAllowed(false);
    QVERIFY(!owner.loadFile(neighbour.url("far.qml")).isEmpty()); // the next document has none
    QCOMPARE(neighbour.calls(), calls);
}

void tst_QmlDeviceImplTrust::nextDocumentsRefusalsAreReportedAgain()
{
    Neighbour neighbour;
    QmlOwner owner;
    for (int i = 0; i < 2; ++i) {
        QStringList reported;
        MessageLog log;
        QCOMPARE(owner.loadBody("Image { source: '" + neighbour.url("thing") + "' }"), QString());
        QTRY_VERIFY((reported += log.take()).contains(refusal(neighbour.url("thing"))));
    }
}

void tst_QmlDeviceImplTrust::filesCanBeRead()
{
    const QString url = QUrl::fromLocalFile(file("read.txt", "hello")).toString();
    QmlOwner owner;
    MessageLog log;
    QCOMPARE(owner.loadBody("property string text\nComponent.onCompleted: {"
                            " var r = new XMLHttpRequest(); r.open('GET', '" +
                            url + "', false); r.send(); text = r.responseText }"),
             QString());
    QCOMPARE(owner.property("text").toString(), QString("hello"));
    QCOMPARE(log.take().filter("refused"), QStringList());
}

void tst_QmlDeviceImplTrust::dataOfAUrlCanBeRead()
{
    QByteArray png;
    QBuffer buffer(&png);
    QVERIFY(QImage(1, 1, QImage::Format_RGB32).save(&buffer, "png"));
    QmlOwner owner;
    MessageLog log;
    QCOMPARE(owner.loadBody("property var picture: Image { source: 'data:image/png;base64," +
                            png.toBase64() + "' }\nproperty int status: picture.status"),
             QString());
    constexpr int ready = 1; // Image.Ready
    QTRY_COMPARE(owner.property("status").toInt(), ready);
    QCOMPARE(log.take().filter("refused"), QStringList());
}

void tst_QmlDeviceImplTrust::nativeCodeBesideATextIsNotLoaded_data()
{
    QTest::addColumn<QByteArray>("qmldir");
    QTest::newRow("plug-in") << QByteArray("plugin neverToBeLoaded\n");
    QTest::newRow("in a later line") << QByteArray("# Parts\n  plugin neverToBeLoaded\n");
    QTest::newRow("optional") << QByteArray("optional plugin neverToBeLoaded\n");
}

/// The working folder was not chosen for its code.
void tst_QmlDeviceImplTrust::nativeCodeBesideATextIsNotLoaded()
{
    QFETCH(QByteArray, qmldir);
    file("qmldir", qmldir);
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_folder.path()));
    QmlOwner owner;
    const QString error = owner.loadBody("");
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(QFile::remove(m_folder.filePath("qmldir")));
    QCOMPARE(error, QString());
}

void tst_QmlDeviceImplTrust::filesAreNotWritten()
{
    const QString url = QUrl::fromLocalFile(file("kept.txt", "kept")).toString();
    QmlOwner owner;
    QStringList reported;
    MessageLog log;
    QCOMPARE(owner.loadBody("Component.onCompleted: { var r = new XMLHttpRequest();"
                            " r.open('PUT', '" +
                            url + "', false); r.send('changed') }"),
             QString());
    QTRY_VERIFY((reported += log.take()).contains(refusal("writing " + url)));
    QCOMPARE(textOf("kept.txt"), QByteArray("kept"));
}

void tst_QmlDeviceImplTrust::filesAreWrittenWhereTheNetworkIsAllowed()
{
    const QString url = QUrl::fromLocalFile(file("open.txt", "old")).toString();
    QmlOwner owner;
    owner.setNetworkAllowed(true);
    MessageLog log; // Qt has a word to say about it, too
    QCOMPARE(owner.loadBody("Component.onCompleted: { var r = new XMLHttpRequest();"
                            " r.open('PUT', '" +
                            url + "', false); r.send('new') }"),
             QString());
    QTRY_COMPARE(textOf("open.txt"), QByteArray("new"));
    QCOMPARE(log.take().filter("refused"), QStringList());
}

void tst_QmlDeviceImplTrust::urlIsNotOpenedElsewhere_data()
{
    QTest::addColumn<QString>("url");
    for (const char* url : {"http://127.0.0.1/page", "HTTPS://127.0.0.1/page", "file:///etc/passwd",
                            "mailto:somebody", "ssh://127.0.0.1", "norvo-unheard-of:thing",
                            "Norvo-Unheard-Of2:thing"}) {
        QTest::newRow(url) << url;
    }
}

/// The platform of the tests says so when it is asked to open something.
void tst_QmlDeviceImplTrust::urlIsNotOpenedElsewhere()
{
    QFETCH(QString, url);
    QmlOwner owner;
    QStringList reported;
    MessageLog log;
    QCOMPARE(owner.loadBody("Component.onCompleted: Qt.openUrlExternally('" + url + "')"),
             QString());
    QTRY_COMPARE((reported += log.take()).filter("opening " + QUrl(url).toString()).size(), 1);
    QCOMPARE(reported.filter("does not support"), QStringList());
}

void tst_QmlDeviceImplTrust::urlIsOpenedWhereTheNetworkIsAllowed_data()
{
    QTest::addColumn<QString>("url");
    for (const char* url :
         {"http://127.0.0.1", "https://127.0.0.1", "mailto:somebody", "file:///etc/hosts"}) {
        QTest::newRow(url) << url;
    }
}

void tst_QmlDeviceImplTrust::urlIsOpenedWhereTheNetworkIsAllowed()
{
    QFETCH(QString, url);
    const QString body = "Component.onCompleted: Qt.openUrlExternally('" + url + "')";
    QmlOwner closed;
    QCOMPARE(closed.loadBody(""), QString());
    {
        QmlOwner open;
        open.setNetworkAllowed(true);
        MessageLog log;
        QCOMPARE(open.loadBody(body), QString());
        QCOMPARE(log.take().filter("does not support").size(), 1);
    }
    MessageLog log;
    QCOMPARE(closed.loadBody(body), QString());
    QCOMPARE(log.take().filter("does not support"), QStringList());
}

void tst_QmlDeviceImplTrust::urlOfAnotherSchemeIsNeverOpened()
{
    QmlOwner owner;
    owner.setNetworkAllowed(true);
    QStringList reported;
    MessageLog log;
    QCOMPARE(owner.loadBody("Component.onCompleted: Qt.openUrlExternally('norvo-other:thing')"),
             QString());
    QTRY_VERIFY((reported += log.take())
                    .contains("warning: face: opening norvo-other:thing is refused: a document "
                              "opens http, https, mailto and file URLs only"));
    QCOMPARE(reported.filter("does not support"), QStringList());
}

void tst_QmlDeviceImplTrust::programOpensUrlsOfAnyScheme()
{
    QmlOwner owner;
    QCOMPARE(owner.loadBody("Component.onCompleted: Qt.openUrlExternally('norvo-known:thing')"),
             QString());
    MessageLog log;
    QDesktopServices::openUrl(QUrl("norvo-known:thing"));
    QCOMPARE(log.take().filter("does not support").size(), 1);
}

NORVO_TEST(tst_QmlDeviceImplTrust)
#include "tst_QmlDeviceImplTrust.moc"
