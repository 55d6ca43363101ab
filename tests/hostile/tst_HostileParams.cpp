// SPDX-License-Identifier: GPL-3.0-or-later

#include "CaseWatch.h"
#include "HostileInputs.h"
#include "HostileLife.h"
#include "HostileValues.h"
#include "OfflineProcess.h"
#include "QuietMessages.h"
#include "TestMain.h"
#include "host/BuiltTypes.h"

#include <QtTest>

/// Each parameter of each type of the built plug-ins under each hostile text. The entries of ctest
/// share the types; NORVO_SHARE tells which part is this one's: "0/4" is the first of four.
class tst_HostileParams : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyParameterOfTheType_data();
    void everyParameterOfTheType();
    void everyInputOfTheType_data() { everyParameterOfTheType_data(); }
    void everyInputOfTheType();
    void cleanupTestCase() { qInfo().noquote() << m_watch->summary(); }

private:
    void parameter(const QString& type, const QString& name);

    HostileTexts m_texts;
    std::unique_ptr<CaseWatch> m_watch;
};

void tst_HostileParams::initTestCase()
{
    QVERIFY(goOffline());
    QVERIFY(QFileInfo::exists(m_texts.fifo()));
    QVERIFY(!builtTypes().factories().isEmpty());
    quietMessages();
    m_watch = std::make_unique<CaseWatch>();
}

void tst_HostileParams::everyParameterOfTheType_data()
{
    QTest::addColumn<QString>("type");
    const QStringList share = qEnvironmentVariable("NORVO_SHARE", "0/1").split('/');
    const QStringList types = builtTypes().factories().keys();
    QVERIFY(share.value(1).toInt() > 0);
    for (int i = share.at(0).toInt(); i < types.size(); i += share.at(1).toInt()) {
        QTest::newRow(qPrintable(types.at(i))) << types.at(i);
    }
}

void tst_HostileParams::everyParameterOfTheType()
{
    QFETCH(QString, type);
    const std::unique_ptr<BaseDevice> device(builtTypes().createDevice(type));
    QVERIFY(device);
    const int before = m_watch->count();
    const QStringList names = device->paramNames();
    for (const QString& name : names) {
        parameter(type, name);
    }
    QCOMPARE(m_watch->count() - before, names.size() * m_texts.all().size());
    QCOMPARE(m_watch->excesses(), QString());
}

void tst_HostileParams::parameter(const QString& type, const QString& name)
{
    const QVector<HostileTexts::Named> texts = m_texts.all();
    for (const HostileTexts::Named& text : texts) {
        m_watch->run(type + ", " + name + " = " + text.first, [&] {
            BaseDevice* const device = builtTypes().createDevice(type);
            device->setParam(name, text.second);
            HostileLife::lead(device, [](BaseDevice& running, BaseWidget* widget) {
                HostileInputs(running).sendSome();
                HostileLife::paint(widget);
            });
        });
    }
}

void tst_HostileParams::everyInputOfTheType()
{
    QFETCH(QString, type);
    const QVector<QPair<QString, QVariant>> values = hostileValues(m_texts);
    QStringList unsent;
    HostileLife::lead(builtTypes().createDevice(type), [&](BaseDevice& device, BaseWidget* widget) {
        const HostileInputs inputs(device);
        for (const QString& input : inputs.signatures()) {
            for (const auto& value : values) {
                m_watch->run(type + '.' + input + " <- " + value.first, [&] {
                    if (!inputs.send(input, value.second)) {
                        unsent.append(input);
                    }
                    QCoreApplication::processEvents();
                    HostileLife::paint(widget);
                });
            }
        }
    });
    QCOMPARE(unsent, QStringList());
    QCOMPARE(m_watch->excesses(), QString());
}

NORVO_TEST(tst_HostileParams)

#include "tst_HostileParams.moc"
