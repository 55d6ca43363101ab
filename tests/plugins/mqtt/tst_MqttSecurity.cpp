// SPDX-License-Identifier: GPL-3.0-or-later

#include "MqttSubject.h"
#include "Peer.h"
#include "TestBroker.h"
#include "TestMain.h"

#include <QtTest>

namespace {

constexpr int kPatience = 60000; ///< ms

/// Keys and certificates, made for one run: ca (the broker's authority), other (one that it is
/// not), server, stranger (for a host of another name) and client.
class Certificates
{
public:
    void make()
    {
        for (const char* name : {"ca", "other"}) {
            run({"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                 "-nodes", "-days", "2", "-subj", QString("/CN=") + name, "-keyout",
                 path(QString(name) + ".key"), "-out", path(QString(name) + ".pem")});
        }
        sign("server", "IP:127.0.0.1,DNS:localhost");
        sign("stranger", "DNS:elsewhere.example");
        sign("client", "DNS:client");
    }
    QString path(const QString& file) const { return m_folder.filePath(file); }
    QStringList brokerLines(const QString& name) const
    {
        return {"allow_anonymous true", "cafile " + path("ca.pem"),
                "certfile " + path(name + ".pem"), "keyfile " + path(name + ".key")};
    }

private:
    void sign(const QString& name, const QString& hosts)
    {
        QFile extensions(path(name + ".ext"));
        QVERIFY(extensions.open(QIODevice::WriteOnly));
        extensions.write("subjectAltName=" + hosts.toUtf8() + '\n');
        extensions.close();
        run({"req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes", "-subj",
             "/CN=" + name, "-keyout", path(name + ".key"), "-out", path(name + ".csr")});
        run({"x509", "-req", "-in", path(name + ".csr"), "-CA", path("ca.pem"), "-CAkey",
             path("ca.key"), "-CAcreateserial", "-days", "2", "-extfile", path(name + ".ext"),
             "-out", path(name + ".pem")});
    }
    static void run(const QStringList& arguments)
    {
        QProcess openssl;
        openssl.start("openssl", arguments);
        QVERIFY(openssl.waitForFinished(kPatience));
        QVERIFY2(openssl.exitCode() == 0, openssl.readAllStandardError().constData());
    }

    QTemporaryDir m_folder;
};

} // namespace

/// Who may speak with whom: passwords, certificates, topics, and the last will.
class tst_MqttSecurity : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { mosquitto_lib_cleanup(); }
    void passwordOpensTheBroker_data();
    void passwordOpensTheBroker();
    void brokerIsTrustedByItsCertificate_data();
    void brokerIsTrustedByItsCertificate();
    void panelIsTrustedByItsCertificate_data();
    void panelIsTrustedByItsCertificate();
    void lockedKeyAsksNobody();
    void valuesGoThroughAnEncryptedConnection();
    void refusedWriteIsReported();
    void statusSaysWhetherThePanelIsThere();
    void statusOfAKilledPanelIsOffline();

private:
    Certificates m_certificates;
};

void tst_MqttSecurity::initTestCase()
{
    mosquitto_lib_init();
    m_certificates.make();
}

void tst_MqttSecurity::passwordOpensTheBroker_data()
{
    QTest::addColumn<QString>("user");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("fault"); ///< Behind the address.

    const QString refused = ": the broker refuses the connection: ";
    QTest::newRow("right") << "panel"
                           << "s3cret"
                           << "v5"
                           << "";
    QTest::newRow("wrong password") << "panel"
                                    << "other"
                                    << "v5" << refused + "Not authorized";
    QTest::newRow("wrong user") << "nobody"
                                << "s3cret"
                                << "v5" << refused + "Not authorized";
    QTest::newRow("no user") << ""
                             << ""
                             << "v5" << refused + "Not authorized";
    QTest::newRow("wrong password, v3.1.1")
        << "panel"
        << "other"
        << "v3.1.1" << refused + "Connection Refused: not authorised.";
}

void tst_MqttSecurity::passwordOpensTheBroker()
{
    QFETCH(QString, user);
    QFETCH(QString, password);
    QFETCH(QString, version);
    QFETCH(QString, fault);

    TestBroker broker({"allow_anonymous false", "password_file %/users"});
    QCOMPARE(QProcess::execute("mosquitto_passwd",
                               {"-c", "-b", broker.path("users"), "panel", "s3cret"}),
             0);
    broker.start();
    broker.write("pass", password + '\n');
    MqttSubject panel(broker.address());
    panel.device.setParam("user", user);
    panel.device.setParam("passwordFile", user.isEmpty() ? QString() : broker.path("pass"));
    panel.device.setParam("version", version);
    panel.start();
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes, QStringList(fault.isEmpty() ? "connected" : "away"),
                              kPatience);
    QTRY_COMPARE_WITH_TIMEOUT(panel.faults.value(0),
                              fault.isEmpty() ? QString() : broker.address() + fault, kPatience);
    QVERIFY(!panel.faults.join(' ').contains("s3cret"));
}

void tst_MqttSecurity::brokerIsTrustedByItsCertificate_data()
{
    QTest::addColumn<QString>("certificate");
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("authority");
    QTest::addColumn<QString>("fault"); ///< A part of it.

    QTest::newRow("right") << "server"
                           << "127.0.0.1"
                           << "ca"
                           << "";
    QTest::newRow("right name") << "server"
                                << "localhost"
                                << "ca"
                                << "";
    QTest::newRow("other authority") << "server"
                                     << "127.0.0.1"
                                     << "other"
                                     << "certificate verify failed";
    QTest::newRow("authorities of the machine") << "server"
                                                << "127.0.0.1"
                                                << ""
                                                << "certificate verify failed";
    QTest::newRow("other host name") << "stranger"
                                     << "127.0.0.1"
                                     << "ca"
                                     << "certificate verify failed";
}

void tst_MqttSecurity::brokerIsTrustedByItsCertificate()
{
    QFETCH(QString, certificate);
    QFETCH(QString, host);
    QFETCH(QString, authority);
    QFETCH(QString, fault);

    TestBroker broker(m_certificates.brokerLines(certificate));
    broker.start();
    MqttSubject panel(QString("mqtts://%1:%2").arg(host).arg(broker.port()));
    panel.device.setParam("caFile", authority.isEmpty() ? QString()
                                                        : m_certificates.path(authority + ".pem"));
    panel.start();
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes, QStringList(fault.isEmpty() ? "connected" : "away"),
                              kPatience);
    QTRY_COMPARE_WITH_TIMEOUT(panel.faults.isEmpty(), fault.isEmpty(), kPatience);
    QVERIFY2(panel.faults.value(0).contains(fault), qPrintable(panel.faults.value(0)));
}

void tst_MqttSecurity::panelIsTrustedByItsCertificate_data()
{
    QTest::addColumn<bool>("hasCertificate");

    QTest::newRow("with one") << true;
    QTest::newRow("without one") << false;
}

void tst_MqttSecurity::panelIsTrustedByItsCertificate()
{
    QFETCH(bool, hasCertificate);

    TestBroker broker(m_certificates.brokerLines("server") +
                      QStringList("require_certificate true"));
    broker.start();
    MqttSubject panel(QString("mqtts://127.0.0.1:%1").arg(broker.port()));
    panel.device.setParam("caFile", m_certificates.path("ca.pem"));
    if (hasCertificate) {
        panel.device.setParam("certificateFile", m_certificates.path("client.pem"));
        panel.device.setParam("keyFile", m_certificates.path("client.key"));
    }
    panel.start();
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes, QStringList(hasCertificate ? "connected" : "away"),
                              kPatience);
    QTRY_COMPARE_WITH_TIMEOUT(panel.faults.isEmpty(), hasCertificate, kPatience);
}

void tst_MqttSecurity::lockedKeyAsksNobody()
{
    const QString locked = m_certificates.path("locked.key");
    QCOMPARE(QProcess::execute("openssl", {"ec", "-aes128", "-passout", "pass:secret", "-in",
                                           m_certificates.path("client.key"), "-out", locked}),
             0);
    TestBroker broker(m_certificates.brokerLines("server"));
    broker.start();
    MqttSubject panel(QString("mqtts://127.0.0.1:%1").arg(broker.port()));
    panel.device.setParam("caFile", m_certificates.path("ca.pem"));
    panel.device.setParam("certificateFile", m_certificates.path("client.pem"));
    panel.device.setParam("keyFile", locked);
    panel.start();
    QTRY_COMPARE_WITH_TIMEOUT(panel.notes, QStringList("away"), kPatience);
    QTRY_VERIFY_WITH_TIMEOUT(!panel.faults.isEmpty(), kPatience);
}

void tst_MqttSecurity::valuesGoThroughAnEncryptedConnection()
{
    TestBroker broker(m_certificates.brokerLines("server"));
    broker.start();
    MqttSubject panel(QString("mqtts://127.0.0.1:%1").arg(broker.port()));
    panel.device.setParam("caFile", m_certificates.path("ca.pem"));
    panel.addOutput("back", QString("bench/set qos1"));
    panel.addInput("set", QString("bench/set qos1 retain"));
    panel.startAndConnect();
    const QString large(500000, 'x'); // Many records at once.
    panel.send("set", "(QString)", large);
    QTRY_VERIFY_WITH_TIMEOUT(panel.notes.contains("back text " + large), kPatience);
    panel.send("set", "(double)", 2.5);
    QTRY_VERIFY_WITH_TIMEOUT(panel.notes.contains("back text 2.5"), kPatience);
}

void tst_MqttSecurity::refusedWriteIsReported()
{
    TestBroker broker({"allow_anonymous true", "acl_file %/topics"});
    broker.write("topics", "topic readwrite free/#\n");
    broker.start();
    Peer peer(broker.port());
    peer.subscribe("free/#");
    MqttSubject panel(broker.address());
    panel.addInput("refused", QString("closed/set qos1"));
    panel.addInput("taken", QString("free/set qos1"));
    panel.startAndConnect();
    const QString refusal = "the broker refuses what is written to \"closed/set\": Not authorized";
    panel.send("refused", "(double)", 1.0);
    QTRY_VERIFY_WITH_TIMEOUT(panel.faults.contains(refusal), kPatience);
    // Some brokers also end the connection.
    QTRY_VERIFY_WITH_TIMEOUT((panel.send("taken", "(double)", 3.0), !peer.notes().isEmpty()),
                             kPatience);
    QCOMPARE(peer.notes()[0], QString("free/set 3 qos1"));
    QCOMPARE(panel.faults.count(refusal), 1);
}

void tst_MqttSecurity::statusSaysWhetherThePanelIsThere()
{
    TestBroker broker;
    broker.start();
    Peer peer(broker.port());
    peer.subscribe("panels/#");
    MqttSubject panel(broker.address());
    panel.device.setParam("status", "panels/one");
    panel.startAndConnect();
    QTRY_COMPARE_WITH_TIMEOUT(peer.notes(), QStringList("panels/one online qos1"), kPatience);
    panel.stop();
    QTRY_COMPARE_WITH_TIMEOUT(peer.notes(),
                              QStringList({"panels/one online qos1", "panels/one offline qos1"}),
                              kPatience);
    Peer late(broker.port());
    late.subscribe("panels/#");
    QTRY_COMPARE_WITH_TIMEOUT(late.notes(), QStringList("panels/one offline qos1 retained"),
                              kPatience);
}

void tst_MqttSecurity::statusOfAKilledPanelIsOffline()
{
    TestBroker broker;
    broker.start();
    Peer peer(broker.port());
    peer.subscribe("panels/#");
    MortalProcess panel;
    panel.start(NORVO_BUILD_DIR "/tests/mqtt_panel", {broker.address(), "panels/one"});
    QTRY_COMPARE_WITH_TIMEOUT(peer.notes(), QStringList("panels/one online qos1"), kPatience);
    panel.kill();
    QTRY_COMPARE_WITH_TIMEOUT(peer.notes(),
                              QStringList({"panels/one online qos1", "panels/one offline qos1"}),
                              kPatience);
    QTRY_COMPARE(panel.state(), QProcess::NotRunning);
}

NORVO_GUILESS_TEST(tst_MqttSecurity)
#include "tst_MqttSecurity.moc"
