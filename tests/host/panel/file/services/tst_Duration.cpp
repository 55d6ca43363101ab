// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"

#include "host/panel/file/services/Duration.h"

#include <QRegularExpression>
#include <QTest>

using namespace norvo;

namespace {

/// The errors about `key: value`.
QStringList errorsOf(const QByteArray& value, std::optional<Duration>& read)
{
    const SourceText source("delay: " + value);
    const YamlNodePtr root = std::get<YamlNodePtr>(YamlTree::read(source));
    Diagnostics diagnostics("panel.yaml");
    read = readDuration(root->entries.front(), ReadContext(source, nullptr, diagnostics));
    QStringList errors;
    for (const Diagnostic& one : diagnostics.sorted()) {
        errors.append(one.toString());
    }
    return errors;
}

} // namespace

class tst_Duration : public QObject
{
    Q_OBJECT

private slots:
    void timeHasItsUnit_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<qint64>("milliseconds");
        QTest::newRow("milliseconds") << "500 ms" << 500LL;
        QTest::newRow("seconds") << "2 s" << 2000LL;
        QTest::newRow("minutes") << "5 min" << 300000LL;
        QTest::newRow("hours") << "1 h" << 3600000LL;
        QTest::newRow("days") << "30 d" << 2592000000LL;
        QTest::newRow("no space") << "30s" << 30000LL;
        QTest::newRow("decimals") << " 1.5 min " << 90000LL;
        QTest::newRow("none at all") << "0 s" << 0LL;
        QTest::newRow("the longest") << "10000 h" << 36000000000LL;
        QTest::newRow("longer") << "10001 h" << -1LL;
        QTest::newRow("far too long") << "999999999999 h" << -1LL;
        QTest::newRow("no unit") << "500" << -1LL;
        QTest::newRow("no number") << "s" << -1LL;
        QTest::newRow("less than nothing") << "-1 s" << -1LL;
        QTest::newRow("unknown unit") << "2 m" << -1LL;
        QTest::newRow("decimal comma") << "1,5 s" << -1LL;
        QTest::newRow("empty") << "" << -1LL;
    }

    void timeHasItsUnit()
    {
        QFETCH(QString, text);
        QFETCH(qint64, milliseconds);
        const auto read = toDuration(text);
        QCOMPARE(read ? qint64(read->count()) : -1, milliseconds);
    }

    void schemaTakesTheSameTexts()
    {
        const QRegularExpression pattern(durationPattern());
        QVERIFY(pattern.match("1.5 min").hasMatch());
        QVERIFY(!pattern.match("500").hasMatch());
    }

    void numberWithoutUnitIsRefusedWithWhatToWrite()
    {
        std::optional<Duration> read;
        QCOMPARE(errorsOf("500", read),
                 QStringList("panel.yaml:1:8: error: delay lacks a unit; write \"500 ms\", "
                             "\"500 s\", \"500 min\" or \"500 h\""));
        QVERIFY(!read);
        QCOMPARE(errorsOf("0", read),
                 QStringList("panel.yaml:1:8: error: delay lacks a unit; write \"0 ms\", \"0 s\", "
                             "\"0 min\" or \"0 h\""));
    }

    void otherTextIsRefusedWithItsPlace()
    {
        std::optional<Duration> read;
        const QString error("panel.yaml:1:8: error: delay must be a time of at most 10,000 h with "
                            "its unit, such as \"500 ms\", \"2 s\", \"5 min\" or \"1 h\"");
        QCOMPARE(errorsOf("soon", read), QStringList(error + ", not \"soon\""));
        QCOMPARE(errorsOf("-1 s", read), QStringList(error + ", not \"-1 s\""));
        QCOMPARE(errorsOf("[1 s]", read), QStringList(error));
    }

    void timeIsRead()
    {
        std::optional<Duration> read;
        QCOMPARE(errorsOf("2 s", read), QStringList());
        QCOMPARE(int(read.value_or(Duration(-1)).count()), 2000);
    }
};

NORVO_TEST(tst_Duration)

#include "tst_Duration.moc"
