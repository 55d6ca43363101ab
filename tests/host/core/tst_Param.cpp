// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/Param.h"
#include "TestMain.h"

#include <QtTest>

#include <climits>
#include <cmath>
#include <limits>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

Param withValue(const QString& value)
{
    return Param("name", value, {}, true, {});
}

} // namespace

class tst_Param : public QObject
{
    Q_OBJECT

private slots:
    void toText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << "";
        QTest::newRow("spaces around stay") << "  a b\t";
        QTest::newRow("number stays as written") << "1.0";
        QTest::newRow("no stays no") << "no";
        QTest::newRow("beyond ASCII") << QString::fromUtf8("12 °C");
    }
    void toText()
    {
        QFETCH(QString, text);
        const QString converted = withValue(text);
        QCOMPARE(converted, text);
        QCOMPARE(withValue(text).value(), text);
    }

    void toBool_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("expected");
        for (const char* text :
             {"true", "yes", "on", "1", "TRUE", "Yes", "oN", " true ", "\ton\n"}) {
            QTest::newRow(qPrintable(QString("true: \"%1\"").arg(text))) << text << true;
        }
        for (const char* text : {"false", "no", "off", "0", "", " ", "2", "-1", "1.0", "01", "t",
                                 "truer", "y", "nan"}) {
            QTest::newRow(qPrintable(QString("false: \"%1\"").arg(text))) << text << false;
        }
    }
    void toBool()
    {
        QFETCH(QString, text);
        const bool converted = withValue(text);
        QTEST(converted, "expected");
    }

    void toInt_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("expected");
        QTest::newRow("plain") << "42" << 42;
        QTest::newRow("negative") << "-7" << -7;
        QTest::newRow("plus sign") << "+7" << 7;
        QTest::newRow("spaces around") << " \t12\n" << 12;
        QTest::newRow("leading zeros are decimal") << "010" << 10;
        QTest::newRow("cut toward zero") << "1.9" << 1;
        QTest::newRow("negative cut toward zero") << "-1.9" << -1;
        QTest::newRow("small fraction") << "-0.5" << 0;
        QTest::newRow("exponent") << "1e3" << 1000;
        QTest::newRow("spaces around a double") << " 2.5 " << 2;
        QTest::newRow("greatest") << "2147483647" << INT_MAX;
        QTest::newRow("one above the greatest") << "2147483648" << INT_MAX;
        QTest::newRow("lowest") << "-2147483648" << INT_MIN;
        QTest::newRow("one below the lowest") << "-2147483649" << INT_MIN;
        QTest::newRow("greatest with a fraction") << "2147483647.9" << INT_MAX;
        QTest::newRow("lowest with a fraction") << "-2147483648.9" << INT_MIN;
        QTest::newRow("1e30") << "1e30" << INT_MAX;
        QTest::newRow("-1e30") << "-1e30" << INT_MIN;
        QTest::newRow("infinity") << "inf" << INT_MAX;
        QTest::newRow("negative infinity") << "-inf" << INT_MIN;
        QTest::newRow("NaN") << "nan" << 0;
        QTest::newRow("empty") << "" << 0;
        QTest::newRow("word") << "no" << 0;
        QTest::newRow("true is no number") << "true" << 0;
        QTest::newRow("trailing unit") << "5 mm" << 0;
        QTest::newRow("decimal comma") << "1,5" << 0;
        QTest::newRow("hexadecimal") << "0x10" << 0;
    }
    void toInt()
    {
        QFETCH(QString, text);
        const int converted = withValue(text);
        QTEST(converted, "expected");
    }

    void toDouble_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("expected");
        QTest::newRow("integer") << "42" << 42.0;
        QTest::newRow("fraction") << "1.9" << 1.9;
        QTest::newRow("negative") << "-1.9" << -1.9;
        QTest::newRow("spaces around") << " \t0.25\n" << 0.25;
        QTest::newRow("1e30") << "1e30" << 1e30;
        QTest::newRow("no digit before the point") << ".5" << 0.5;
        QTest::newRow("infinity") << "inf" << kInfinity;
        QTest::newRow("negative infinity") << "-inf" << -kInfinity;
        QTest::newRow("NaN") << "nan" << std::nan("");
        QTest::newRow("too great for a double") << "1e400" << 0.0;
        QTest::newRow("empty") << "" << 0.0;
        QTest::newRow("word") << "no" << 0.0;
        QTest::newRow("trailing unit") << "5 mm" << 0.0;
        QTest::newRow("decimal comma") << "1,5" << 0.0;
        QTest::newRow("grouping") << "1,000" << 0.0;
    }
    void toDouble()
    {
        QFETCH(QString, text);
        QFETCH(double, expected);
        const double converted = withValue(text);
        if (std::isnan(expected)) {
            QVERIFY(std::isnan(converted));
        } else {
            QCOMPARE(converted, expected);
        }
    }

    void conversionsDoNotFollowTheUsersLocale()
    {
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        const double point = withValue("1.5");
        const double comma = withValue("1,5");
        QLocale::setDefault(before);
        QCOMPARE(point, 1.5);
        QCOMPARE(comma, 0.0);
    }

    void valueIsConvertedAtEachReading()
    {
        Param param = withValue("1");
        QCOMPARE(int(param), 1);
        param.setValue("2");
        QCOMPARE(int(param), 2);
        QCOMPARE(param.defaultValue(), QString("1"));
    }

    void declarationIsKept()
    {
        Param param("mode", "a", {"a", "b"}, false, {{"other", {"x"}}});
        QCOMPARE(param.name(), QString("mode"));
        QCOMPARE(param.value(), QString("a"));
        QCOMPARE(param.defaultValue(), QString("a"));
        QCOMPARE(param.options(), QStringList({"a", "b"}));
        QCOMPARE(param.flag(), false);
        QCOMPARE(param.enabledConditions(), Param::EnabledConditions({{"other", {"x"}}}));
    }

    void itsTextsStartEmptyAndAreKept()
    {
        Param param = withValue("");
        QCOMPARE(param.displayName() + param.description() + param.unit(), QString());
        param.setDisplayName("Rate");
        param.setDescription("How often");
        param.setUnit("Hz");
        QCOMPARE(param.displayName(), QString("Rate"));
        QCOMPARE(param.description(), QString("How often"));
        QCOMPARE(param.unit(), QString("Hz"));
    }

    void enabledConditionsAreAddedOneByOne()
    {
        Param param = withValue("");
        QVERIFY(param.enabledConditions().isEmpty());
        param.addEnabledCondition("mode", {"toggle"});
        param.addEnabledCondition("kind", {"a", "b"});
        QCOMPARE(param.enabledConditions(),
                 Param::EnabledConditions({{"mode", {"toggle"}}, {"kind", {"a", "b"}}}));
        param.addEnabledCondition("mode", {"pulse"});
        QCOMPARE(param.enabledConditions().value("mode"), QStringList("pulse"));
    }

    void fault_data()
    {
        QTest::addColumn<QString>("defaultText");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("expected");
        QTest::newRow("number reads") << "10"
                                      << " 1.5 "
                                      << "";
        QTest::newRow("number may be infinite") << "10"
                                                << "-inf"
                                                << "";
        QTest::newRow("no number") << "10"
                                   << "ten"
                                   << "\"ten\" is not a number";
        QTest::newRow("empty is no number") << "10"
                                            << ""
                                            << "\"\" is not a number";
        QTest::newRow("decimal comma is no number")
            << "0.5"
            << "0,5"
            << "\"0,5\" is not a number; write it with a point, 0.5";
        QTest::newRow("spaces around a decimal comma are none of it")
            << "0.5"
            << " -2,5 "
            << "\" -2,5 \" is not a number; write it with a point, -2.5";
        QTest::newRow("number with a unit is no number")
            << "10"
            << "2.5 ms"
            << "\"2.5 ms\" is not a number; write it without the unit";
        QTest::newRow("true is no number") << "1"
                                           << "true"
                                           << "\"true\" is not a number";
        QTest::newRow("yes reads as true") << "false"
                                           << "YES"
                                           << "";
        for (const char* no : {"False", "NO", " Off "}) {
            QTest::newRow(no) << "true" << no << "";
        }
        QTest::newRow("0 reads as false") << "true"
                                          << "0"
                                          << "";
        QTest::newRow("neither") << "true"
                                 << "maybe"
                                 << "\"maybe\" is neither true nor false";
        QTest::newRow("2 is neither") << "false"
                                      << "2"
                                      << "\"2\" is neither true nor false";
        QTest::newRow("text is not judged") << "left"
                                            << "12"
                                            << "";
        QTest::newRow("empty default is not judged") << ""
                                                     << "anything"
                                                     << "";
    }
    void fault()
    {
        QFETCH(QString, defaultText);
        QFETCH(QString, value);
        Param param("name", defaultText, {}, true, {});
        QCOMPARE(param.fault(), QString());
        param.setValue(value);
        QTEST(param.fault(), "expected");
    }

    void optionOutsideTheListIsNoError()
    {
        Param param("mode", "a", {"a", "b"}, true, {});
        param.setValue("c");
        QCOMPARE(param.fault(), QString());
    }

    void isKeptAcrossStartsOnlyWhereItIsMarkedSo()
    {
        Param param("count", "0", {}, true, {});
        QVERIFY(!param.isPersistent());
        param.setPersistent();
        QVERIFY(param.isPersistent());
        QVERIFY(Param(param).isPersistent());
        param.setPersistent(false);
        QVERIFY(!param.isPersistent());
    }
};

NORVO_GUILESS_TEST(tst_Param)

#include "tst_Param.moc"
