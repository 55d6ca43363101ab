// SPDX-License-Identifier: GPL-3.0-or-later

#include "Effort.h"
#include "PanelTexts.h"
#include "TestMain.h"

#include <QtTest>

using panels::errorsOf;

namespace {

const QByteArray kTemplate = "templates: {t: {with: {name: , size: 1}, devices: {a: {device: x, "
                             "params: {p: $(name) $(size)}}}}}\n";

QByteArray use(const QByteArray& settings)
{
    return kTemplate + "devices: {u: {" + settings + "}}\n";
}

QByteArray withDevice(const QByteArray& device)
{
    return "templates:\n  t:\n    with: {n: 1}\n    devices:\n      a" + device +
           "\n      z$(n): {device: x}\ndevices:\n  u: {use: t}\n  v: {use: t}\n";
}

/// Templates t0 to t<count - 1>, each of which uses the one before `times` times.
QByteArray tower(int count, int times)
{
    QByteArray text = "templates:\n  t0: {devices: {a: {device: x, params: {b: 1";
    for (int i = 0; i < 30; ++i) {
        text += ", p" + QByteArray::number(i) + ": 2";
    }
    text += "}}}}\n";
    for (int i = 1; i < count; ++i) {
        text += "  t" + QByteArray::number(i) + ":\n    devices:\n";
        for (int k = 0; k < times; ++k) {
            text +=
                "      u" + QByteArray::number(k) + ": {use: t" + QByteArray::number(i - 1) + "}\n";
        }
    }
    return text + "devices:\n  all: {use: t" + QByteArray::number(count - 1) + "}\n";
}

} // namespace

class tst_TemplateErrors : public QObject
{
    Q_OBJECT

private slots:
    void form_data();
    void form();
    void errorIsReportedOnceForAllUses();
    void errorsThatDifferFromUseToUseAreAllReported();
    void errorInANestedUseNamesAllUses();
    void idThatAUseMakesTwiceIsAnError();
    void recursionIsAnErrorThatNamesTheChain();
    void deepNestingIsRefused();
    void usesBeyondTheLimitsAreRefusedBeforeTheyAreMade_data();
    void usesBeyondTheLimitsAreRefusedBeforeTheyAreMade();
    void limitsCountDevicesAndConnectionsOfUses();
};

void tst_TemplateErrors::form_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const QByteArray& text, const QString& expected) {
        QTest::newRow(name) << text << expected;
    };
    row("templates, a list", "templates: [a]\n",
        "1:12: error: templates must be a map: the name of each template, and what it holds");
    row("template, a text", "templates: {a: b}\n",
        "1:16: error: a template must be a map with the keys with, devices, connections "
        "and alarms");
    row("key of a template", "templates: {a: {device: }}\n",
        "1:17: error: unknown key \"device\" of the template \"a\"; did you mean \"devices\"?");
    row("twice", "templates:\n  a:\n  a:\n",
        "3:3: error: the key \"a\" is given twice; it is already in line 2, column 3");
    row("placeholders, a list", "templates: {a: {with: [b]}}\n",
        "1:23: error: with must be a map: the name of each placeholder, and the text that stands "
        "for it where a use gives none");
    row("name of a placeholder", "templates: {a: {with: {b c: 1}}}\n",
        "1:24: error: the placeholder \"b c\" may hold letters, digits, \"_\" and \"-\" only\n"
        "1:24: warning: the template \"a\" does not use its placeholder \"b c\"");
    row("default, a list", "templates: {a: {with: {b: [1]}, devices: {x$(b): {device: y}}}}\n",
        "1:27: error: the default of the placeholder \"b\" must be a text");
    row("unknown placeholder",
        "templates:\n  t:\n    with: {name: }\n    devices:\n"
        "      a: {device: x, params: {p: '$(name) 12 $(nmae)', $(q): 1}}\n    connections:\n"
        "      - a.b -> $(names\n",
        "5:46: error: the template \"t\" has no placeholder \"nmae\"; did you mean \"name\"? "
        "\"$$(\" stands for the text \"$(\"\n"
        "5:56: error: the template \"t\" has no placeholder \"q\"; \"with\" in the template "
        "declares them; \"$$(\" stands for the text \"$(\"\n"
        "7:16: error: \")\" is missing after \"$(\"; \"$$(\" stands for the text \"$(\"");
    row("unused placeholder", "templates: {t: {with: {n: }}}\n",
        "1:24: warning: the template \"t\" does not use its placeholder \"n\"");
    row("unknown template", use("use: T2"),
        "2:20: error: there is no template \"T2\"; did you mean \"t\"?");
    row("unknown template, unlike any", use("use: pump"),
        "2:20: error: there is no template \"pump\"; valid names: \"t\"");
    row("unknown template among many",
        "templates: {boiler_with_gauge_and_alarm: {}, pump_with_button_and_lamp: {}, valve: {}}\n"
        "devices: {u: {use: fan}}\n",
        "2:20: error: there is no template \"fan\"; valid names: \"boiler_with_gauge_and_alarm\", "
        "\"pump_with_button_and_lamp\", \"valve\"");
    row("no template", "devices: {u: {use: pump}}\n",
        "1:20: error: there is no template \"pump\"; \"templates\" and \"include\" bring them");
    row("use, a list", use("use: [t]"), "2:20: error: the name of a template must be a text");
    row("key of a use", use("use: t, wiht: {}, device: x, with: {name: a}"),
        "2:23: error: unknown key \"wiht\" of the use \"u\"; did you mean \"with\"?\n"
        "2:33: error: unknown key \"device\" of the use \"u\"; a use has use, with and at");
    row("missing value", use("use: t"),
        "2:11: error: the use \"u\" lacks a value for \"name\"; add \"with: {name: ...}\"");
    row("unknown value", use("use: t, with: {name: a, sise: 2}"),
        "2:39: error: the template \"t\" has no placeholder \"sise\"; did you mean \"size\"?");
    row("value, a map", use("use: t, with: {name: {a: b}}"),
        "2:36: error: the value of \"name\" must be a text");
    row("values, a text", use("use: t, with: name"),
        "2:11: error: the use \"u\" lacks a value for \"name\"; add \"with: {name: ...}\"\n"
        "2:29: error: with must be a map: the name of each placeholder, and its value");
    row("position, a list", use("use: t, with: {name: a}, at: [1, 2]"),
        "2:44: error: at must be a map, such as {row: 2, column: 0}");
    row("key of a position", use("use: t, with: {name: a}, at: {rows: 1}"),
        "2:45: error: unknown key \"rows\" of \"at\"; did you mean \"row\"?");
    row("row", use("use: t, with: {name: a}, at: {row: -1, column: 1.5, area: []}"),
        "2:50: error: row must be a whole number from 0 to 999\n"
        "2:62: error: column must be a whole number from 0 to 999\n"
        "2:73: error: the area must be a text");
    row("row beyond the last", use("use: t, with: {name: a}, at: {row: 1000, column: 999}"),
        "2:50: error: row must be a whole number from 0 to 999");
    row("arrow in a value",
        "templates: {t: {with: {n: }, connections: [a.b -> $(n)]}}\n"
        "devices: {u: {use: t, with: {n: x.y -> z.w}}}\n",
        "1:51: error: a connection holds one \"->\"; write one connection for each "
        "[in use u (line 2)]");
    row("id of a use", kTemplate + "devices: {u v: {use: t, with: {name: a}}}\n",
        "1:52: error: the device id \"u v-a\" may hold letters, digits, \"_\" and \"-\" only "
        "[in use u v (line 2)]\n"
        "2:11: error: the device id \"u v\" may hold letters, digits, \"_\" and \"-\" only");
}

void tst_TemplateErrors::form()
{
    QFETCH(QByteArray, text);
    QTEST(errorsOf(text), "expected");
}

void tst_TemplateErrors::errorIsReportedOnceForAllUses()
{
    QCOMPARE(errorsOf(withDevice(": {devcie: x}")),
             QString("5:7: error: the device \"u-a\" has no type; add \"device: TYPE\" "
                     "[in use u (line 8)]\n"
                     "5:11: error: unknown key \"devcie\" of the device \"u-a\"; did you mean "
                     "\"device\"? [in use u (line 8)]"));
}

void tst_TemplateErrors::errorsThatDifferFromUseToUseAreAllReported()
{
    const QByteArray text = "templates: {t: {with: {n: }, devices: {a: {device: x, network: $(n)}}"
                            "}}\ndevices:\n  u: {use: t, with: {n: 1}}\n"
                            "  v: {use: t, with: {n: 'true'}}\n  w: {use: t, with: {n: 2}}\n";
    QCOMPARE(errorsOf(text),
             QString("1:64: error: network must be true or false, not \"1\" [in use u (line 3)]\n"
                     "1:64: error: network must be true or false, not \"2\" [in use w (line 5)]"));
}

void tst_TemplateErrors::errorInANestedUseNamesAllUses()
{
    QCOMPARE(errorsOf("templates:\n  i: {devices: {a: {}}}\n  o: {devices: {x: {use: i}}}\n"
                      "devices:\n  u: {use: o}\n"),
             QString("2:17: error: the device \"u-x-a\" has no type; add \"device: TYPE\" "
                     "[in use u-x (line 3), in use u (line 5)]"));
}

void tst_TemplateErrors::idThatAUseMakesTwiceIsAnError()
{
    const QByteArray both = "templates: {t: {devices: {a: {device: x}}}}\ndevices:\n";
    QCOMPARE(
        errorsOf(both + "  u: {use: t}\n  u-a: {device: x}\n"),
        QString("4:3: error: the device \"u-a\" is given twice; it is already in line 1 of p"));
    QCOMPARE(errorsOf(both + "  u-a: {device: x}\n  u: {use: t}\n"),
             QString("1:27: error: the device \"u-a\" is given twice; it is already in line 3 "
                     "[in use u (line 4)]"));
    QCOMPARE(errorsOf("templates: {t: {with: {n: b}, devices: {b: {device: x}, $(n): {device: x}}"
                      "}}\ndevices: {u: {use: t}}\n"),
             QString("1:57: error: the device \"u-b\" is given twice; it is already in line 1 of p "
                     "[in use u (line 2)]"));
}

void tst_TemplateErrors::recursionIsAnErrorThatNamesTheChain()
{
    QCOMPARE(errorsOf("templates: {a: {devices: {x: {use: a}}}}\ndevices: {u: {use: a}}\n"),
             QString("1:36: error: the template \"a\" uses itself: a -> a [in use u (line 2)]"));
    QCOMPARE(errorsOf("templates:\n  a: {devices: {x: {use: b}}}\n  b: {devices: {x: {use: c}}}\n"
                      "  c: {devices: {x: {use: b}}}\ndevices: {u: {use: a}}\n"),
             QString("4:26: error: the template \"b\" uses itself: b -> c -> b [in use u-x-x "
                     "(line 3), in use u-x (line 2), in use u (line 5)]"));
}

void tst_TemplateErrors::deepNestingIsRefused()
{
    QCOMPARE(errorsOf(tower(32, 1)), QString());
    const QString errors = errorsOf(tower(1000, 1));
    QVERIFY2(errors.contains("error: templates use one another 32 deep at most"),
             qPrintable(errors));
    QVERIFY(!errors.contains('\n'));
}

void tst_TemplateErrors::usesBeyondTheLimitsAreRefusedBeforeTheyAreMade_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");
    const QByteArray values = tower(30, 10);
    QTest::newRow("values") << values << "templates make more than 100,000 values";

    const QByteArray all = "devices: {u: {use: t}}\n";
    QTest::newRow("text") << "templates: {t: {with: {n: " + QByteArray(100000, 'n') +
                                 "}, devices: {a: {device: x, params: {p: " +
                                 QByteArray("$(n)").repeated(100) + "}}}}}\n" + all
                          << "templates make more than 4 MiB of text";

    // Each doubles what it is given.
    QByteArray doubling = "templates:\n  t0: {with: {n: }, devices: {a$(n): {device: x}}}\n";
    for (int i = 1; i < 32; ++i) {
        doubling += "  t" + QByteArray::number(i) + ": {with: {n: a}, devices: {u: {use: t" +
                    QByteArray::number(i - 1) + ", with: {n: $(n)$(n)}}}}\n";
    }
    QTest::newRow("doubling") << doubling + "devices: {u: {use: t31}}\n"
                              << "templates make more than 4 MiB of text";
}

void tst_TemplateErrors::usesBeyondTheLimitsAreRefusedBeforeTheyAreMade()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, expected);
    const norvo::ProcessorTimer timer;
    const QString errors = errorsOf(text);
    QVERIFY2(errors.contains("error: " + expected), qPrintable(errors));
    QVERIFY(!errors.contains('\n'));
    QVERIFY(timer.elapsedMs() < 2000);
}

void tst_TemplateErrors::limitsCountDevicesAndConnectionsOfUses()
{
    QByteArray text = "templates:\n  t:\n    devices:\n      a: {device: x}\n    connections:\n" +
                      QByteArray("      - a.x -> a.y\n").repeated(80) + "devices:\n";
    QByteArray uses;
    for (int i = 0; i < 101; ++i) {
        uses += "  u" + QByteArray::number(i) + ": {use: t}\n";
    }
    QCOMPARE(errorsOf(text + uses),
             QString("6:9: error: more than 8,000 connections [in use u100 (line 187)]"));
}

NORVO_GUILESS_TEST(tst_TemplateErrors)
#include "tst_TemplateErrors.moc"
