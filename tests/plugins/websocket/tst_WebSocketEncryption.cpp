// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "TestServer.h"
#include "WebSocketSubject.h"

#include <QTemporaryDir>
#include <QtTest>

class tst_WebSocketEncryption : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void serverIsKnownByItsAuthority();
    void serverOfAnotherAuthorityIsRefused_data();
    void serverOfAnotherAuthorityIsRefused();
    void fileWithoutCertificateIsAnError();

private:
    void certify(const QString& name, const QString& host, const QString& authority = {});
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
};

void tst_WebSocketEncryption::certify(const QString& name, const QString& host,
                                      const QString& authority)
{
    QStringList words{"req",
                      "-x509",
                      "-newkey",
                      "ec",
                      "-nodes",
                      "-pkeyopt",
                      "ec_paramgen_curve:prime256v1",
                      "-days",
                      "2",
                      "-subj",
                      "/CN=" + name,
                      "-addext",
                      "subjectAltName=DNS:" + host,
                      "-keyout",
                      path(name + ".key"),
                      "-out",
                      path(name + ".pem")};
    if (!authority.isEmpty()) {
        words << "-CA" << path(authority + ".pem") << "-CAkey" << path(authority + ".key");
    }
    QProcess openssl;
    openssl.start("openssl", words);
    QVERIFY(openssl.waitForFinished());
    QVERIFY2(openssl.exitCode() == 0, openssl.readAllStandardError().constData());
}

void tst_WebSocketEncryption::initTestCase()
{
    certify("authority", "authority");
    certify("other", "other");
    certify("right", "localhost", "authority");
    certify("elsewhere", "elsewhere.example", "authority");
}

void tst_WebSocketEncryption::serverIsKnownByItsAuthority()
{
    TestServer server("server.py", {path("right.pem"), path("right.key")});
    server.start();
    WebSocketSubject subject(QString("wss://localhost:%1").arg(server.port()));
    subject.device.setParam("caFile", path("authority.pem"));
    subject.addOutput("a", {"$.a"});
    subject.startAndConnect();
    server.obey(R"(send {"a":"x"})");
    QTRY_COMPARE(subject.notes, QStringList{"a text x"});
}

void tst_WebSocketEncryption::serverOfAnotherAuthorityIsRefused_data()
{
    QTest::addColumn<QString>("certificate");
    QTest::addColumn<QString>("authority");
    QTest::addColumn<QString>("error");

    QTest::newRow("wrong authority") << "right"
                                     << "other"
                                     << "issuer certificate";
    QTest::newRow("that of the machine") << "right"
                                         << ""
                                         << "issuer certificate";
    QTest::newRow("wrong host") << "elsewhere"
                                << "authority"
                                << "host name did not match";
}

void tst_WebSocketEncryption::serverOfAnotherAuthorityIsRefused()
{
    QFETCH(QString, certificate);
    QFETCH(QString, authority);
    QFETCH(QString, error);

    TestServer server("server.py", {path(certificate + ".pem"), path(certificate + ".key")});
    server.start();
    WebSocketSubject subject(QString("wss://localhost:%1").arg(server.port()));
    subject.device.setParam("caFile", authority.isEmpty() ? QString() : path(authority + ".pem"));
    subject.start();
    QTRY_COMPARE_WITH_TIMEOUT(subject.faults.size(), 1, 30000);
    QVERIFY2(subject.faults.first().contains(error), qPrintable(subject.faults.first()));
    QCOMPARE(subject.notes, QStringList{"away"});
    QCOMPARE(server.news.filter("open"), QStringList());
}

void tst_WebSocketEncryption::fileWithoutCertificateIsAnError()
{
    WebSocketDevice device;
    device.setParam("url", "wss://localhost");
    device.setParam("caFile", path("right.key"));
    QString error;
    connect(&device, &BaseDevice::errorOccurred, this, [&](const QString& text) { error = text; });
    QVERIFY(!device.initialise());
    QVERIFY2(error.contains("holds no certificate in PEM"), qPrintable(error));
}

NORVO_GUILESS_TEST(tst_WebSocketEncryption)
#include "tst_WebSocketEncryption.moc"
