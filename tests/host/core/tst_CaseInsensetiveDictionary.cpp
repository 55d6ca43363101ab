// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/CaseInsensetiveDictionary.h"
#include "TestMain.h"

#include <QtTest>

#include <type_traits>

class tst_CaseInsensetiveDictionary : public QObject
{
    Q_OBJECT

private slots:
    void isAMapWithAVirtualDestructor()
    {
        using Dictionary = CaseInsensetiveDictionary<int>;
        QVERIFY((std::is_base_of_v<QMap<QString, int>, Dictionary>));
        QVERIFY((std::is_convertible_v<Dictionary*, QMap<QString, int>*>));
        QVERIFY(std::has_virtual_destructor_v<Dictionary>);
        QCOMPARE(sizeof(Dictionary),
                 sizeof(void*) + sizeof(QMap<QString, int>) + sizeof(QHash<QString, QString>));
    }

    void keysKeepTheirSpellingInCaseSensitiveOrder()
    {
        CaseInsensetiveDictionary<int> dictionary;
        for (const char* key : {"b", "Zeta", "a", "B"}) {
            dictionary.insert(key, 0);
        }
        QCOMPARE(dictionary.keys(), QStringList({"B", "Zeta", "a", "b"}));
    }

    void lookUpsIgnoreCase_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("as stored") << "Widget/fontSize";
        QTest::newRow("lower case") << "widget/fontsize";
        QTest::newRow("capitals") << "WIDGET/FONTSIZE";
    }
    void lookUpsIgnoreCase()
    {
        QFETCH(QString, key);
        CaseInsensetiveDictionary<int> dictionary;
        dictionary.insert("Widget/fontSize", 7);

        QVERIFY(dictionary.contains(key));
        QCOMPARE(dictionary.value(key), 7);
        QCOMPARE(dictionary.value(key, 1), 7);
        QCOMPARE(dictionary.storedKey(key), QString("Widget/fontSize"));
        QCOMPARE(*dictionary.find(key), 7);
        QCOMPARE(*std::as_const(dictionary).find(key), 7);
    }

    void lookUpsIgnoreCaseBeyondAscii()
    {
        CaseInsensetiveDictionary<int> dictionary;
        dictionary.insert(QString::fromUtf8("Größe"), 3);
        QCOMPARE(dictionary.value(QString::fromUtf8("GRÖßE")), 3);
    }

    void sameKeyReplacesTheValue()
    {
        CaseInsensetiveDictionary<int> dictionary;
        dictionary.insert("rate", 1);
        dictionary.insert("rate", 2);
        QCOMPARE(dictionary.size(), 1);
        QCOMPARE(dictionary.value("RATE"), 2);
    }

    void keyOfAnotherCaseIsASecondEntryAndTheNewestIsFound()
    {
        CaseInsensetiveDictionary<int> dictionary;
        dictionary.insert("Rate", 1);
        dictionary.insert("rate", 2);
        QCOMPARE(dictionary.keys(), QStringList({"Rate", "rate"}));
        QCOMPARE(dictionary.storedKey("RATE"), QString("rate"));
        QCOMPARE(dictionary.value("Rate"), 2);

        dictionary.insert("Rate", 3);
        QCOMPARE(dictionary.size(), 2);
        QCOMPARE(dictionary.storedKey("RATE"), QString("Rate"));
        QCOMPARE(dictionary.value("rate"), 3);
    }

    void unknownKeyGivesTheFallback()
    {
        CaseInsensetiveDictionary<int> dictionary;
        dictionary.insert("rate", 1);
        QVERIFY(!dictionary.contains("rates"));
        QVERIFY(!dictionary.contains(""));
        QCOMPARE(dictionary.value("rates"), 0);
        QCOMPARE(dictionary.value("rates", 9), 9);
        QCOMPARE(dictionary.storedKey("rates"), QString());
        QVERIFY(dictionary.find("rates") == dictionary.end());
        QVERIFY(std::as_const(dictionary).find("rates") == dictionary.constEnd());
    }

    void removedKeyIsNotFound()
    {
        CaseInsensetiveDictionary<int> dictionary;
        dictionary.insert("rate", 1);
        dictionary.remove("rate");
        QVERIFY(!dictionary.contains("rate"));
        QCOMPARE(dictionary.value("rate", 9), 9);
    }

    void copiesAreIndependent()
    {
        CaseInsensetiveDictionary<int> dictionary;
        dictionary.insert("rate", 1);
        CaseInsensetiveDictionary<int> copy = dictionary;
        copy.insert("RATE", 2);
        *copy.find("rate") = 3;
        QCOMPARE(dictionary.size(), 1);
        QCOMPARE(dictionary.value("rate"), 1);
        QCOMPARE(copy.value("rate"), 3);
    }
};

NORVO_GUILESS_TEST(tst_CaseInsensetiveDictionary)

#include "tst_CaseInsensetiveDictionary.moc"
