// SPDX-License-Identifier: GPL-3.0-or-later

#include "InputFieldParts.h"
#include "TestMain.h"

#include <QtTest>

class tst_InputFieldWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSignalsAndSlots();
    void emptyFieldHasNothingToLayOut();
    void typeChoosesTheEditor_data();
    void typeChoosesTheEditor();
    void spinBoxTakesRangeStepDecimalsAndCurrentNumber();
    void lineEditShowsTheCurrentText();
    void buildingPassesNothingOn();
    void doubleIsValidated();
    void intIsValidatedWithEndsCutTowardZero_data();
    void intIsValidatedWithEndsCutTowardZero();
    void otherTypesAreNotValidated();
    void styleSheetIsGivenVerbatim_data();
    void styleSheetIsGivenVerbatim();
    void minMaxAndIncrementActOnASpinBoxOnly();
    void reversedRangeEndsAtItsMaximum();
    void decimalPointIsAPointInEveryCountry();
};

void tst_InputFieldWidget::declaresItsSignalsAndSlots()
{
    QCOMPARE(methodTable(InputFieldWidget::staticMetaObject),
             QStringList({"signal output(QString)", "signal output(double)", "slot input(double)",
                          "slot input(QString)", "slot onEdit(QString) (not public)"}));
}

void tst_InputFieldWidget::emptyFieldHasNothingToLayOut()
{
    InputFieldWidget widget(nullptr, nullptr);
    const MessageLog log;
    widget.initialise();
    widget.setLayout(Qt::Horizontal);
    widget.setMinMax(0, 1);
    widget.setIncrement(1);
    QVERIFY(widget.findChildren<QWidget*>().isEmpty());
}

void tst_InputFieldWidget::typeChoosesTheEditor_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("isSpinBox");
    QTest::newRow("spin") << "spin" << true;
    QTest::newRow("string") << "string" << false;
    QTest::newRow("int") << "int" << false;
    QTest::newRow("double") << "double" << false;
    QTest::newRow("typeIsComparedWithCase") << "Spin" << false;
    QTest::newRow("unknown") << "colour" << false;
}

void tst_InputFieldWidget::typeChoosesTheEditor()
{
    QFETCH(QString, type);
    QFETCH(bool, isSpinBox);
    const InputStand stand({{"type", type}});
    QVERIFY(stand.widget->isInitialised());
    auto* const spinBox = qobject_cast<QDoubleSpinBox*>(editorOf(stand));
    auto* const lineEdit = qobject_cast<QLineEdit*>(editorOf(stand));
    QCOMPARE(spinBox != nullptr, isSpinBox);
    QCOMPARE(lineEdit != nullptr, !isSpinBox);
    QCOMPARE(spinBox ? spinBox->alignment() : lineEdit->alignment(),
             Qt::AlignHCenter | Qt::AlignVCenter);
}

void tst_InputFieldWidget::spinBoxTakesRangeStepDecimalsAndCurrentNumber()
{
    InputDevice device;
    device.setParam("min", "-2.125");
    device.setParam("max", "8");
    device.setParam("value step", "0.125");
    device.setParam("decimals", "3.9");
    QVERIFY(device.initialise());
    device.input(1.625);
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    QVERIFY(!widget->parent());
    widget->initialise();
    const auto* const spinBox = widget->findChild<QDoubleSpinBox*>();
    QCOMPARE(spinBox->minimum(), -2.125); // all its digits, though the decimals are set later
    QCOMPARE(spinBox->maximum(), 8.0);
    QCOMPARE(spinBox->singleStep(), 0.125);
    QCOMPARE(spinBox->decimals(), 3);
    QCOMPARE(spinBox->value(), 1.625); // not rounded to a spin box's own two decimals
}

void tst_InputFieldWidget::lineEditShowsTheCurrentText()
{
    InputDevice device;
    device.setParam("type", "string");
    QVERIFY(device.initialise());
    device.input(QString("1,5 or so"));
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    widget->initialise();
    QCOMPARE(widget->findChild<QLineEdit*>()->text(), QString("1,5 or so"));
}

void tst_InputFieldWidget::buildingPassesNothingOn()
{
    for (const char* type : {"string", "int", "double", "spin"}) {
        InputDevice device;
        device.setParam("type", type);
        device.setRunning(device.initialise());
        device.input(0.5);
        int outputs = 0;
        connect(&device, QOverload<QString>::of(&InputDevice::output), this, [&] { ++outputs; });
        connect(&device, QOverload<double>::of(&InputDevice::output), this, [&] { ++outputs; });
        const std::unique_ptr<BaseWidget> widget(device.createWidget());
        widget->initialise();
        QCOMPARE(outputs, 0);
    }
}

void tst_InputFieldWidget::doubleIsValidated()
{
    const InputStand stand(
        {{"type", "double"}, {"min", "-2.5"}, {"max", "30.25"}, {"decimals", "3"}});
    const auto* const lineEdit = stand.only<QLineEdit>();
    const auto* const validator = dynamic_cast<const QDoubleValidator*>(lineEdit->validator());
    QVERIFY(validator);
    QCOMPARE(validator->bottom(), -2.5);
    QCOMPARE(validator->top(), 30.25);
    QCOMPARE(validator->decimals(), 3);
    QCOMPARE(validator->parent(), lineEdit);
}

void tst_InputFieldWidget::intIsValidatedWithEndsCutTowardZero_data()
{
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    QTest::addColumn<QString>("min");
    QTest::addColumn<QString>("max");
    QTest::addColumn<int>("bottom");
    QTest::addColumn<int>("top");
    QTest::newRow("fractions") << "-1.9"
                               << "10.9" << -1 << 10;
    QTest::newRow("beyond int") << "-1e300"
                                << "1e300" << lowest << highest;
    QTest::newRow("infinite") << "-inf"
                              << "inf" << lowest << highest;
    QTest::newRow("no numbers") << "nan"
                                << "nan" << 0 << 0;
}

void tst_InputFieldWidget::intIsValidatedWithEndsCutTowardZero()
{
    QFETCH(QString, min);
    QFETCH(QString, max);
    const InputStand stand({{"type", "int"}, {"min", min}, {"max", max}});
    const auto* const lineEdit = stand.only<QLineEdit>();
    const auto* const validator = dynamic_cast<const QIntValidator*>(lineEdit->validator());
    QVERIFY(validator);
    QTEST(validator->bottom(), "bottom");
    QTEST(validator->top(), "top");
    QCOMPARE(validator->parent(), lineEdit);
}

void tst_InputFieldWidget::otherTypesAreNotValidated()
{
    QVERIFY(!InputStand({{"type", "string"}}).only<QLineEdit>()->validator());
    QVERIFY(!InputStand({{"type", "Int"}}).only<QLineEdit>()->validator());
}

void tst_InputFieldWidget::styleSheetIsGivenVerbatim_data()
{
    QTest::addColumn<QString>("type");
    QTest::newRow("spin box") << "spin";
    QTest::newRow("line edit") << "string";
}

void tst_InputFieldWidget::styleSheetIsGivenVerbatim()
{
    QFETCH(QString, type);
    const QString style = editorOf(InputStand({{"type", type}}))->styleSheet();
    QCOMPARE(style.size(), 1622);
    QCOMPARE(QCryptographicHash::hash(style.toUtf8(), QCryptographicHash::Sha256).toHex(),
             QByteArray("95ce9027ca9a6e35c93aac75e66fb5e484cff6cedcf3a97b6db4a8bb38477318"));
}

void tst_InputFieldWidget::minMaxAndIncrementActOnASpinBoxOnly()
{
    const InputStand spin;
    auto* const field = static_cast<InputFieldWidget*>(spin.widget.get());
    field->setMinMax(-3, 7);
    field->setIncrement(0.5);
    const auto* const spinBox = spin.only<QDoubleSpinBox>();
    QCOMPARE(spinBox->minimum(), -3.0);
    QCOMPARE(spinBox->maximum(), 7.0);
    QCOMPARE(spinBox->singleStep(), 0.5);

    const InputStand line({{"type", "int"}});
    static_cast<InputFieldWidget*>(line.widget.get())->setMinMax(-3, 7);
    static_cast<InputFieldWidget*>(line.widget.get())->setIncrement(0.5);
    const QValidator* const validator = line.only<QLineEdit>()->validator();
    QCOMPARE(static_cast<const QIntValidator*>(validator)->top(), 1);
}

void tst_InputFieldWidget::decimalPointIsAPointInEveryCountry()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const InputStand spin;
    static_cast<InputFieldWidget*>(spin.widget.get())->input(0.5);
    const QString spinText = spin.only<QDoubleSpinBox>()->text();
    const InputStand line({{"type", "double"}});
    QTest::keyClicks(line.only<QLineEdit>(), "0.25");
    const QString lineText = line.only<QLineEdit>()->text();
    QLocale::setDefault(before);
    QCOMPARE(spinText, QString("0.50"));
    QCOMPARE(lineText, QString("0.25"));
}

void tst_InputFieldWidget::reversedRangeEndsAtItsMaximum()
{
    const InputStand spin;
    const auto* const spinBox = spin.only<QDoubleSpinBox>();
    static_cast<InputFieldWidget*>(spin.widget.get())->setMinMax(9, 4);
    QCOMPARE(spinBox->minimum(), 4.0);
    QCOMPARE(spinBox->maximum(), 4.0);
}

NORVO_TEST(tst_InputFieldWidget)
#include "tst_InputFieldWidget.moc"
