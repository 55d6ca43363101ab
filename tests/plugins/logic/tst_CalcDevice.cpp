// SPDX-License-Identifier: GPL-3.0-or-later

#include "Calculation.h"
#include "TestMain.h"

class tst_CalcDevice : public QObject
{
    Q_OBJECT

private slots:
    void resultLeavesInTheFormsItReadsAs_data();
    void resultLeavesInTheFormsItReadsAs();
    void definitionIsChecked_data();
    void definitionIsChecked();
    void nothingLeavesBeforeTheFirstValues();
    void startValuesLeaveAtTheStart();
    void everyValueInIsAValueOut();
    void onlyOutputsThatUseAnInputSend();
    void valueIsReadAsTheTypeOfItsInput_data();
    void valueIsReadAsTheTypeOfItsInput();
    void refusedValueIsReportedOnce();
    void pulseSendsAgain();
    void pulseIsTheFirstValueWhereThereIsNone();
    void helpersOfPanelAuthorsAreThere_data();
    void helpersOfPanelAuthorsAreThere();
    void nextStartBeginsWithTheStartValues();
    void receiverMayDeleteTheDevice();
    void nothingIsEvaluatedThatNobodyHears();
};

void tst_CalcDevice::resultLeavesInTheFormsItReadsAs_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QStringList>("notes");
    QTest::newRow("number") << "x * 2" << QStringList{"number 5", "text 5"};
    QTest::newRow("fraction") << "x / 10" << QStringList{"number 0.25", "text 0.25"};
    QTest::newRow("yes") << "x > 2" << QStringList{"number 1", "text true", "yes"};
    QTest::newRow("no") << "x > 3" << QStringList{"number 0", "text false", "no"};
    QTest::newRow("one") << "x - 1.5" << QStringList{"number 1", "text 1", "yes"};
    QTest::newRow("text") << "`${x.toFixed(2)} bar`" << QStringList{"text 2.50 bar"};
    QTest::newRow("text that is a number") << "x + '0'" << QStringList{"number 2.5", "text 2.50"};
    QTest::newRow("choice") << "x > 2 ? 'high' : 'low'" << QStringList{"text high"};
    QTest::newRow("function in it") << "[1, 2].map(n => n * x).join()" << QStringList{"text 2.5,5"};
    QTest::newRow("several lines")
        << "x // a comment\n  + 1" << QStringList{"number 3.5", "text 3.5"};
    QTest::newRow("comment at the end") << "x + 1 // one" << QStringList{"number 3.5", "text 3.5"};
    QTest::newRow("percent signs") << "`%1 %2 ${x}%`" << QStringList{"text %1 %2 2.5%"};
    QTest::newRow("null sends nothing") << "null" << QStringList();
}

void tst_CalcDevice::resultLeavesInTheFormsItReadsAs()
{
    QFETCH(QString, expression);
    Calculation calculation;
    calculation.startWith(expression.contains('x') ? expression : "x, " + expression);
    emit calculation.sender.value(2.5);
    QTEST(calculation.listener.notes, "notes");
    QCOMPARE(calculation.alerts.count(), 0);
}

void tst_CalcDevice::definitionIsChecked_data()
{
    QTest::addColumn<bool>("isInput");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("error");
    const auto output = [](const char* row, const QString& text, const QString& error) {
        QTest::newRow(row) << false << "y" << text << QString() << error;
    };
    output("sound", "t > limit", "");
    output("unknown name", "t > limt",
           "\"limt\" is neither an input nor a name of JavaScript; inputs: t, limit");
    output("nothing", " ", "there is no expression; write one such as \"t > 30\"");
    output(
        "end too early", "t >",
        "not an expression of JavaScript: it ends too early, or closes a bracket that is not open");
    output(
        "end too early in the second line", "t\n>",
        "not an expression of JavaScript: it ends too early, or closes a bracket that is not open");
    output(
        "bracket too many", "t)",
        "not an expression of JavaScript: it ends too early, or closes a bracket that is not open");
    output("operator too many", "t + * 2", "not an expression of JavaScript: Unexpected token '*'");
    output("statement", "if (t) 1", "not an expression of JavaScript: Unexpected token 'if'");
    output("too long", QString("t+1").repeated(4000), "an expression has 10000 characters at most");
    output("global names", "Math.max(t, parseFloat('1'), NaN, clamp(t, 1, 2)) + String(undefined)",
           "");
    output("names of its own", "(() => { const a = t; return a; })()", "");
    QTest::newRow("option of an output") << false << "y"
                                         << "t"
                                         << "type"
                                         << "unknown option \"type\"; the definition is a text "
                                            "alone";
    const auto input = [](const char* row, const QString& name, const QString& text,
                          const QString& type, const QString& error) {
        QTest::newRow(row) << true << name << text << type << error;
    };
    input("good", "x", "1.5", "number", "");
    input("start value of another type", "x", "abc", "number",
          "the start value \"abc\" is no number");
    input("start value no yes", "x", "2", "yes/no", "the start value \"2\" is no yes/no");
    input("unknown type", "x", "", "int",
          "option \"type\": \"int\" is not one of \"any\", \"number\", \"yes/no\", \"text\"");
    for (const char* name : {"set-point", "2nd", "if", "eval"}) {
        input(name, name, "", "any",
              QString("no expression can use the name \"%1\"; use letters, digits and \"_\", no "
                      "digit first, and no word of JavaScript")
                  .arg(name));
    }
    input("letters of any script", "größe", "", "any", "");
}

void tst_CalcDevice::definitionIsChecked()
{
    QFETCH(bool, isInput);
    QFETCH(QString, name);
    QFETCH(QString, text);
    QFETCH(QString, option);
    Calculation calculation;
    calculation.addInputs({"t", "", "limit", "30"});
    const QMap<QString, QString> options = isInput ? QMap<QString, QString>{{"type", option}}
                                           : option.isEmpty()
                                               ? QMap<QString, QString>()
                                               : QMap<QString, QString>{{option, ""}};
    const PortDefinition definition(text, options);
    QTEST(isInput ? calculation.device.addInput(name, definition)
                  : calculation.device.addOutput(name, definition),
          "error");
}

void tst_CalcDevice::nothingLeavesBeforeTheFirstValues()
{
    Calculation calculation;
    calculation.addInputs({"a", "", "b", "", "c", "3"});
    calculation.addOutput("a + b + c");
    calculation.listener.listenTo(calculation.device, "y");
    Sender other;
    calculation.sender.sendTo(calculation.device, "a");
    other.sendTo(calculation.device, "b");
    calculation.start();
    emit calculation.sender.value(1.0);
    emit calculation.sender.value(2.0);
    QCOMPARE(calculation.listener.notes, QStringList());
    emit other.value(10.0);
    QCOMPARE(calculation.listener.notes, (QStringList{"number 15", "text 15"}));
}

void tst_CalcDevice::startValuesLeaveAtTheStart()
{
    Calculation calculation;
    calculation.addInputs({"a", "2", "unset", ""});
    calculation.addOutput("a * 21");
    calculation.addOutput("'ready'", "constant");
    calculation.addOutput("a + unset", "waiting");
    for (const char* output : {"y", "constant", "waiting"}) {
        calculation.listener.listenTo(calculation.device, output);
    }
    calculation.start();
    QCOMPARE(calculation.listener.notes, (QStringList{"number 42", "text 42", "text ready"}));
}

void tst_CalcDevice::everyValueInIsAValueOut()
{
    Calculation calculation;
    calculation.startWith("x > 5");
    for (int i = 0; i < 3; ++i) {
        emit calculation.sender.value(7.0);
    }
    QCOMPARE(calculation.listener.notes.count("yes"), 3);
}

void tst_CalcDevice::onlyOutputsThatUseAnInputSend()
{
    Calculation calculation;
    calculation.addInputs({"a", "1", "b", "2"});
    calculation.addOutput("a", "ya");
    calculation.addOutput("b", "yb");
    calculation.addOutput("({a: 1}).a + b", "key"); // No use of the input a.
    Listener ofA;
    Listener ofB;
    Listener ofKey;
    calculation.start();
    ofA.listenTo(calculation.device, "ya");
    ofB.listenTo(calculation.device, "yb");
    ofKey.listenTo(calculation.device, "key");
    calculation.sender.sendTo(calculation.device, "a");
    emit calculation.sender.value(7.0);
    QCOMPARE(ofA.notes, (QStringList{"number 7", "text 7"}));
    QCOMPARE(ofB.notes + ofKey.notes, QStringList());
}

void tst_CalcDevice::valueIsReadAsTheTypeOfItsInput_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("shown"); ///< Empty: refused.
    const auto row = [](const char* name, const QString& type, const QVariant& value,
                        const QString& shown) { QTest::newRow(name) << type << value << shown; };
    row("number", "any", 2.5, "number 2.5");
    row("whole number", "any", 7, "number 7");
    row("text", "any", "abc", "string abc");
    row("text that is a number", "any", " 23.5", "number 23.5");
    row("text that is a no", "any", "off", "boolean false");
    row("yes", "any", true, "boolean true");
    row("number of a text", "number", "1e3", "number 1000");
    row("number of a yes", "number", true, "number 1");
    row("number of a word", "number", "abc", "");
    row("yes of a number", "yes/no", 1.0, "boolean true");
    row("yes of a word", "yes/no", "Yes", "boolean true");
    row("yes of another number", "yes/no", 2, "");
    row("text of a number", "text", 0.1, "string 0.1");
    row("text of a yes", "text", true, "string true");
    row("text of a text", "text", "007", "string 007");
}

void tst_CalcDevice::valueIsReadAsTheTypeOfItsInput()
{
    QFETCH(QString, type);
    QFETCH(QVariant, value);
    QFETCH(QString, shown);
    Calculation calculation;
    QCOMPARE(calculation.device.addInput("x", {"", {{"type", type}}}), QString());
    calculation.addOutput("`${typeof x} ${x}`");
    calculation.listener.listenTo(calculation.device, "y");
    calculation.sender.sendTo(calculation.device, "x");
    calculation.start();
    switch (value.userType()) {
    case QMetaType::Double:
        emit calculation.sender.value(value.toDouble());
        break;
    case QMetaType::Int:
        emit calculation.sender.value(value.toInt());
        break;
    case QMetaType::Bool:
        emit calculation.sender.value(value.toBool());
        break;
    default:
        emit calculation.sender.value(value.toString());
    }
    QCOMPARE(calculation.listener.notes,
             shown.isEmpty() ? QStringList() : QStringList("text " + shown));
    QCOMPARE(calculation.alerts.count(), shown.isEmpty() ? 1 : 0);
}

void tst_CalcDevice::refusedValueIsReportedOnce()
{
    Calculation calculation;
    QCOMPARE(calculation.device.addInput("x", {"5", {{"type", "number"}}}), QString());
    calculation.addOutput("x");
    calculation.sender.sendTo(calculation.device, "x");
    calculation.start();
    calculation.listener.listenTo(calculation.device, "y");
    emit calculation.sender.value(QString("a"));
    emit calculation.sender.value(QString("b"));
    QCOMPARE(calculation.alerts.count(), 1);
    QCOMPARE(calculation.alerts[0][0].toString(),
             QString("input \"x\" refuses \"a\", which is no number"));
    QCOMPARE(calculation.listener.notes, QStringList());
    emit calculation.sender.value(QString("6"));
    QCOMPARE(calculation.listener.notes, (QStringList{"number 6", "text 6"}));
    emit calculation.sender.value(QString("c"));
    QCOMPARE(calculation.alerts.count(), 2);
}

void tst_CalcDevice::pulseSendsAgain()
{
    Calculation calculation;
    calculation.startWith("x + 1");
    emit calculation.sender.value(5.0);
    calculation.listener.notes.clear();
    emit calculation.sender.value();
    QCOMPARE(calculation.listener.notes, (QStringList{"number 6", "text 6"}));
}

void tst_CalcDevice::pulseIsTheFirstValueWhereThereIsNone()
{
    Calculation calculation;
    calculation.startWith("x");
    emit calculation.sender.value();
    QCOMPARE(calculation.listener.notes, (QStringList{"number 1", "text true", "yes"}));
}

void tst_CalcDevice::helpersOfPanelAuthorsAreThere_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("result");
    QTest::newRow("clamp below") << "clamp(-x, 0, 10)"
                                 << "number 0";
    QTest::newRow("clamp above") << "clamp(x * 10, 0, 10)"
                                 << "number 10";
    QTest::newRow("clamp within") << "clamp(x, 0, 10)"
                                  << "number 2.5";
    QTest::newRow("scale") << "scale(x, 0, 10, 4, 20)"
                           << "number 8";
    QTest::newRow("scale backwards") << "scale(x, 0, 10, 100, 0)"
                                     << "number 75";
    QTest::newRow("round") << "round(x)"
                           << "number 3";
    QTest::newRow("round to digits") << "round(x / 7, 2)"
                                     << "number 0.35999999999999999";
}

void tst_CalcDevice::helpersOfPanelAuthorsAreThere()
{
    QFETCH(QString, expression);
    Calculation calculation;
    calculation.startWith(expression);
    emit calculation.sender.value(2.5);
    QTEST(calculation.listener.notes.value(0), "result");
}

void tst_CalcDevice::nextStartBeginsWithTheStartValues()
{
    Calculation calculation;
    calculation.addInputs({"x", "1", "late", ""});
    calculation.addOutput("x");
    calculation.addOutput("late", "z");
    calculation.listener.listenTo(calculation.device, "y");
    calculation.listener.listenTo(calculation.device, "z");
    calculation.sender.sendTo(calculation.device, "x");
    calculation.sender.sendTo(calculation.device, "late");
    calculation.start();
    emit calculation.sender.value(5.0);
    calculation.device.setRunning(false);
    emit calculation.sender.value(6.0); // Taken by nobody.
    calculation.listener.notes.clear();
    calculation.start();
    QCOMPARE(calculation.listener.notes, (QStringList{"number 1", "text 1", "yes"}));
}

void tst_CalcDevice::receiverMayDeleteTheDevice()
{
    auto device = std::make_unique<CalcDevice>();
    Listener listener;
    Sender sender;
    device->addInput("x", QString());
    device->addOutput("y", QString("x"));
    device->addOutput("z", QString("x + 1"));
    listener.listenTo(*device, "y");
    listener.listenTo(*device, "z");
    sender.sendTo(*device, "x");
    QVERIFY(device->initialise());
    device->setRunning(true);
    listener.onNote = [&device] { device.reset(); };
    emit sender.value(3.0);
    QVERIFY(!device);
    QCOMPARE(listener.notes, QStringList("number 3"));
}

void tst_CalcDevice::nothingIsEvaluatedThatNobodyHears()
{
    Calculation calculation;
    calculation.addInputs({"x", "1"});
    calculation.addOutput("x.y.z"); // Throws.
    calculation.start();
    QCOMPARE(calculation.alerts.count(), 0);
    calculation.listener.listenTo(calculation.device, "y");
    calculation.device.postInitialisation();
    QCOMPARE(calculation.alerts.count(), 1);
}

NORVO_GUILESS_TEST(tst_CalcDevice)
#include "tst_CalcDevice.moc"
