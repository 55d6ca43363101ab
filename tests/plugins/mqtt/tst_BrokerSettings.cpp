// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/mqtt/BrokerSettings.h"
#include "norvo/ParametersEntity.h"
#include "TestMain.h"

#include <QTemporaryDir>
#include <QtTest>

using norvo::BrokerSettings;

class tst_BrokerSettings : public QObject
{
    Q_OBJECT

private slots:
    void addressIsRead_data();
    void addressIsRead();
    void passwordIsTheFirstLineOfItsFile();
    void connectionWithoutANameGetsOneOfItsOwn();
    void whatDoesNotReadIsAnError_data();
    void whatDoesNotReadIsAnError();

private:
    /// "%" in a value stands for a folder with the files "pass", "empty" and "cert".
    QString read(const QString& values, BrokerSettings& settings);
};

QString tst_BrokerSettings::read(const QString& values, BrokerSettings& settings)
{
    QTemporaryDir folder;
    for (const auto& [name, text] : {std::pair("pass", "s3cret word\r\nsecond\n"),
                                     std::pair("empty", "\nsecond\n"), std::pair("cert", "x")}) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(text);
        }
    }
    ParametersEntity entity;
    norvo::declareSettings(entity);
    for (const QString& value : values.split(' ', Qt::SkipEmptyParts)) {
        entity.setParam(value.section('=', 0, 0),
                        value.section('=', 1).replace('%', folder.path()));
    }
    return norvo::readSettings(entity, settings).replace(folder.path(), "%");
}

void tst_BrokerSettings::addressIsRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("address");

    QTest::newRow("name") << "mqtt://broker"
                          << "mqtt://broker:1883";
    QTest::newRow("encrypted") << "mqtts://broker.hall-1.example"
                               << "mqtts://broker.hall-1.example:8883";
    QTest::newRow("port") << "mqtt://10.0.0.1:18830/"
                          << "mqtt://10.0.0.1:18830";
    QTest::newRow("version 6") << "mqtts://[::1]:1"
                               << "mqtts://[::1]:1";
}

void tst_BrokerSettings::addressIsRead()
{
    QFETCH(QString, text);

    BrokerSettings settings;
    QCOMPARE(read("broker=" + text, settings), QString());
    QTEST(settings.address(), "address");
}

void tst_BrokerSettings::passwordIsTheFirstLineOfItsFile()
{
    BrokerSettings settings;
    QCOMPARE(read("broker=mqtt://b user=panel passwordFile=%/pass", settings), QString());
    QCOMPARE(settings.user, QByteArray("panel"));
    QCOMPARE(settings.password, QByteArray("s3cret word"));
}

void tst_BrokerSettings::connectionWithoutANameGetsOneOfItsOwn()
{
    BrokerSettings one;
    BrokerSettings other;
    QCOMPARE(read("broker=mqtt://b", one) + read("broker=mqtt://b", other), QString());
    QVERIFY(one.clientId.size() > 10);
    QVERIFY(one.clientId != other.clientId);
    QCOMPARE(read("broker=mqtt://b clientId=desk", one), QString());
    QCOMPARE(one.clientId, QByteArray("desk"));
}

void tst_BrokerSettings::whatDoesNotReadIsAnError_data()
{
    const QString right = "; write mqtt://host, mqtt://host:1883 or mqtts://host:8883";
    const auto address = [right](const char* text) {
        return QString("parameter \"broker\": \"%1\" is not the address of a broker").arg(text) +
               right;
    };
    const QString good = "broker=mqtts://b ";
    QTest::addColumn<QString>("values");
    QTest::addColumn<QString>("error");

    QTest::newRow("no address") << ""
                                << "parameter \"broker\": it is empty" + right;
    QTest::newRow("other scheme") << "broker=tcp://b" << address("tcp://b");
    QTest::newRow("no scheme") << "broker=b:1883" << address("b:1883");
    QTest::newRow("no host") << "broker=mqtt://:1883" << address("mqtt://:1883");
    QTest::newRow("path") << "broker=mqtt://b/x" << address("mqtt://b/x");
    QTest::newRow("port") << "broker=mqtt://b:65536"
                          << "parameter \"broker\": port 65536 is not one from 1 to 65535";
    QTest::newRow("password in the address")
        << "broker=mqtt://me:secret@b"
        << "parameter \"broker\": an address holds no user and no password; give them by \"user\" "
           "and \"passwordFile\"";
    QTest::newRow("password without user")
        << good + "passwordFile=%/pass"
        << "parameter \"passwordFile\": a password needs a \"user\"";
    QTest::newRow("no such password file")
        << good + "user=u passwordFile=%/none"
        << "parameter \"passwordFile\": cannot read \"%/none\": No such file or directory";
    QTest::newRow("empty password") << good + "user=u passwordFile=%/empty"
                                    << "parameter \"passwordFile\": the first line of \"%/empty\" "
                                       "is not a password; it has 1 to "
                                       "4096 bytes";
    QTest::newRow("no such authority") << good + "caFile=%/none"
                                       << "parameter \"caFile\": cannot read \"%/none\"";
    QTest::newRow("certificate without encryption")
        << "broker=mqtt://b caFile=%/cert"
        << "parameter \"caFile\": mqtt:// is not encrypted; write mqtts:// in \"broker\"";
    QTest::newRow("certificate without key")
        << good + "certificateFile=%/cert"
        << "parameter \"certificateFile\": \"certificateFile\" and \"keyFile\" are given together";
    QTest::newRow("key without certificate")
        << good + "keyFile=%/cert"
        << "parameter \"keyFile\": \"certificateFile\" and \"keyFile\" are given together";
    QTest::newRow("status with a wildcard")
        << good + "status=a/#"
        << "parameter \"status\": \"a/#\" is written to, so it has no wildcards + and #";
    QTest::newRow("silence") << good + "keepAlive=0.1"
                             << "parameter \"keepAlive\": 0.1 is not from 0.5 to 3600";
}

void tst_BrokerSettings::whatDoesNotReadIsAnError()
{
    QFETCH(QString, values);

    BrokerSettings settings;
    QTEST(read(values, settings), "error");
}

NORVO_GUILESS_TEST(tst_BrokerSettings)
#include "tst_BrokerSettings.moc"
