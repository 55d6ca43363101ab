// SPDX-License-Identifier: GPL-3.0-or-later

#include "../PanelTexts.h"
#include "TestMain.h"

using namespace norvo;

namespace {

const QByteArray kHash = "$argon2id$v=19$m=65536,t=2,p=1$c29tZXNhbHRzb21lc2FsdA$"
                         "RdescudvJCsgt3ub+b4dWRWJTmaaJObGjwfaUM7qCXM";

QByteArray withPins(const QByteArray& devices = {})
{
    return "access: {roles: {operate: \"" + kHash + "\", engineer: \"" + kHash + "\"}}\n" + devices;
}

} // namespace

/// Who may operate a panel, and what asks before it changes, as the panel file says it.
class tst_AccessReader : public QObject
{
    Q_OBJECT

private slots:
    void panelThatSaysNothingIsOpen();
    void pinsAndTimeAreRead();
    void deviceSaysWhomItObeys();
    void questionIsRead_data();
    void questionIsRead();
    void placeholderStandsInAQuestion();
    void errorIsReported_data();
    void errorIsReported();
};

void tst_AccessReader::panelThatSaysNothingIsOpen()
{
    const PanelDescription panel = panels::sound("devices: {a: {device: x}}\n");
    QVERIFY(!panel.access.isGiven());
    QCOMPARE(panel.devices.size(), 1);
    QVERIFY(!panel.devices[0].access.role);
    QVERIFY(!panel.devices[0].access.isConfirmed);
}

void tst_AccessReader::pinsAndTimeAreRead()
{
    const PanelAccess usual = panels::sound(withPins()).access;
    QCOMPARE(usual.place.line, 1);
    QCOMPARE(usual.pins.keys(), (QList<Role>{Role::Operate, Role::Engineer}));
    QCOMPARE(usual.pins.value(Role::Operate), QString(kHash));
    QCOMPARE(usual.lockAfter, std::chrono::minutes(5));
    const PanelAccess quick =
        panels::sound("access:\n  roles: {engineer: \"" + kHash + "\"}\n  lockAfter: 30 s\n")
            .access;
    QCOMPARE(quick.pins.keys(), QList<Role>{Role::Engineer});
    QCOMPARE(quick.lockAfter, std::chrono::seconds(30));
}

void tst_AccessReader::deviceSaysWhomItObeys()
{
    const auto devices = panels::sound(withPins("devices:\n"
                                                "  a: {device: x, access: engineer}\n"
                                                "  b: {device: x, access: view}\n"
                                                "  c: {device: x}\n"))
                             .devices;
    QCOMPARE(devices.size(), 3);
    QCOMPARE(devices[0].access.role, Role::Engineer);
    QCOMPARE(devices[0].access.rolePlace.line, 3);
    QCOMPARE(devices[1].access.role, Role::View);
    QVERIFY(!devices[2].access.role);
}

void tst_AccessReader::questionIsRead_data()
{
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<bool>("isConfirmed");
    QTest::addColumn<QString>("question");
    QTest::newRow("own question") << QByteArray("\"Really start pump 1?\"") << true
                                  << "Really start pump 1?";
    QTest::newRow("yes") << QByteArray("yes") << true << "";
    QTest::newRow("true") << QByteArray("true") << true << "";
    QTest::newRow("no") << QByteArray("no") << false << "";
    QTest::newRow("false") << QByteArray("false") << false << "";
}

void tst_AccessReader::questionIsRead()
{
    QFETCH(QByteArray, written);
    const auto devices =
        panels::sound("devices: {a: {device: x, confirm: " + written + "}}\n").devices;
    QCOMPARE(devices.size(), 1);
    QTEST(devices[0].access.isConfirmed, "isConfirmed");
    QTEST(devices[0].access.question, "question");
}

void tst_AccessReader::placeholderStandsInAQuestion()
{
    const auto devices =
        panels::sound("templates:\n"
                      "  pump:\n"
                      "    with: {name: x}\n"
                      "    devices:\n"
                      "      start: {device: button, confirm: \"Start $(name)?\"}\n"
                      "devices:\n"
                      "  p1: {use: pump, with: {name: pump 1}}\n")
            .devices;
    QCOMPARE(devices.size(), 1);
    QCOMPARE(devices[0].access.question, QString("Start pump 1?"));
}

void tst_AccessReader::errorIsReported_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    const QByteArray device = "devices:\n  a: {device: x, ";
    QTest::newRow("no map") << QByteArray("access: operate\n")
                            << "1:9: error: access must be a map with the keys roles and lockAfter";
    QTest::newRow("no roles")
        << QByteArray("access: {lockAfter: 5 min}\n")
        << "1:1: error: access needs a PIN at least, as in \"roles: {operate: HASH}\" with a hash "
           "made by \"norvo-panel --make-pin\"";
    QTest::newRow("misspelt key") << QByteArray("access: {rolls: {}}\n")
                                  << "1:10: error: unknown key \"rolls\" of access; did you mean "
                                     "\"roles\"?";
    QTest::newRow("unknown role") << QByteArray("access: {roles: {enginer: x}}\n")
                                  << "1:18: error: unknown key \"enginer\" of roles; did you mean "
                                     "\"engineer\"?";
    QTest::newRow("role without PIN")
        << QByteArray("access: {roles: {view: x}}\n")
        << "1:18: error: the role view has no PIN; it is what a locked panel is left with";
    QTest::newRow("PIN itself")
        << QByteArray("access: {roles: {operate: 1234}}\n")
        << "1:27: error: the PIN of operate must be a hash made by \"norvo-panel --make-pin\"";
    QTest::newRow("hash that takes a machine's memory")
        << "access: {roles: {operate: \"" + QByteArray(kHash).replace("65536", "9999999") + "\"}}\n"
        << "1:27: error: the PIN of operate must be a hash made by \"norvo-panel --make-pin\"";
    QTest::newRow("time without unit")
        << "access: {roles: {operate: \"" + kHash + "\"}, lockAfter: 5}\n"
        << "lacks a unit";
    QTest::newRow("misspelt role of a device")
        << withPins(device + "access: operater}\n")
        << "3:26: error: access of a device must be view, operate or engineer, not \"operater\"";
    QTest::newRow("device of a panel without PINs")
        << QByteArray(device + "access: operate}\n")
        << "2:18: error: \"a\" is not locked, because the panel has no PINs; add \"access: {roles: "
           "{operate: HASH}}\" to the panel";
    QTest::newRow("role that nobody has")
        << "access: {roles: {operate: \"" + kHash + "\"}}\n" + device + "access: engineer}\n"
        << "3:18: error: nobody can operate \"a\", because the panel's access has no PIN for the "
           "role engineer";
    QTest::newRow("empty question")
        << QByteArray(device + "confirm: \"\"}\n")
        << "error: confirm must be a question such as \"Really start pump 1?\", or yes for one "
           "that names the device";
    QTest::newRow("misspelt confirm") << QByteArray(device + "confrim: yes}\n")
                                      << "2:18: error: unknown key \"confrim\" of the device "
                                         "\"a\"; did you mean \"confirm\"?";
}

void tst_AccessReader::errorIsReported()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    const QString errors = panels::errorsOf(text);
    QVERIFY2(errors.contains(error), qPrintable(errors));
    QVERIFY2(!errors.contains('\n'), qPrintable(errors));
}

NORVO_TEST(tst_AccessReader)
#include "tst_AccessReader.moc"
