// SPDX-License-Identifier: GPL-3.0-or-later

#include "RunningField.h"
#include "TestMain.h"

#include <QtTest>

#include <algorithm>

namespace {

using Numbers = QVector<double>;

class DefaultLocale
{
public:
    explicit DefaultLocale(const QLocale& locale) { QLocale::setDefault(locale); }
    ~DefaultLocale() { QLocale::setDefault(m_before); }
    DefaultLocale(const DefaultLocale&) = delete;
    DefaultLocale& operator=(const DefaultLocale&) = delete;

private:
    const QLocale m_before;
};

/// A field whose editor is empty, as an operator leaves it who is about to type, and the numbers
/// that leave its device, each as often as it changes.
struct TypedInto
{
    explicit TypedInto(const QString& type, const QString& max = "1000") : field(type, max)
    {
        if (field.spinBox()) {
            field.spinBox()->selectAll();
        }
        QObject::connect(&field.device, QOverload<double>::of(&InputDevice::output),
                         [this](double number) {
                             if (numbers.isEmpty() || numbers.last() != number) {
                                 numbers.append(number);
                             }
                         });
    }

    Field field;
    Numbers numbers;
};

void paste(QLineEdit* line, const QString& text)
{
    QApplication::clipboard()->setText(text);
    QTest::keySequence(line, QKeySequence::Paste);
}

} // namespace

class tst_InputFieldComma : public QObject
{
    Q_OBJECT

private slots:
    void typedCommaIsADecimalPointInEveryCountry_data();
    void typedCommaIsADecimalPointInEveryCountry();
    void rangeIsJudgedByTheNumberThatLeaves();
    void pastedCommaIsADecimalPoint_data();
    void pastedCommaIsADecimalPoint();
    void commaOfAnIntGoesWithReturn();
    void commaFromTheWiringIsShownVerbatim();
};

void tst_InputFieldComma::typedCommaIsADecimalPointInEveryCountry_data()
{
    struct Entry
    {
        const char* type;
        const char* keys;
        const char* shown;
        Numbers numbers;
    };
    const Entry entries[] = {
        {"spin", "3,75", "3.75", {3, 3.7, 3.75}},
        {"spin", "3.75", "3.75", {3, 3.7, 3.75}},
        {"spin", "1,234", "1.23", {1, 1.2, 1.23}},
        {"spin", "1,234.5", "1.23", {1, 1.2, 1.23}},
        {"spin", "1.234,5", "1.23", {1, 1.2, 1.23}},
        {"spin", "-,5", "-.5", {-0.5}},
        {"double", "3,75", "3,75", {3, 3.7, 3.75}},
        {"double", "3.75", "3.75", {3, 3.7, 3.75}},
        {"double", "1,234", "1,23", {1, 1.2, 1.23}},
        {"double", "1.234,5", "1.23", {1, 1.2, 1.23}},
        {"double", "-,5", "-,5", {-0.5}},
        {"int", "3,75", "3,", {3}},
        {"int", "1,234", "1,", {1}},
        {"int", "12", "12", {1, 12}},
        {"string", "3,75", "3,75", {3, 3.7, 3.75}},
    };
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<Numbers>("numbers");
    for (const char* locale : {"C", "en_US", "de_DE"}) {
        for (const Entry& entry : entries) {
            QTest::addRow("%s, %s, %s", locale, entry.type, entry.keys)
                << QLocale(locale) << entry.type << entry.keys << entry.shown << entry.numbers;
        }
    }
}

void tst_InputFieldComma::typedCommaIsADecimalPointInEveryCountry()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, type);
    QFETCH(QString, keys);
    QFETCH(QString, shown);
    QFETCH(Numbers, numbers);
    const DefaultLocale country(locale);
    const TypedInto typed(type);
    QTest::keyClicks(typed.field.line(), keys);
    QCOMPARE(typed.field.line()->text(), shown);
    QCOMPARE(typed.numbers, numbers);
    QCOMPARE(typed.field.device.getCurrentNumber(), numbers.last());
    const QStringList left = typed.field.fromWidget->take().filter("\"");
    QCOMPARE(left.last(), QString("output(\"%1\")").arg(shown));
}

void tst_InputFieldComma::rangeIsJudgedByTheNumberThatLeaves()
{
    for (const char* type : {"spin", "double"}) {
        const TypedInto typed(type, "10");
        QTest::keyClicks(typed.field.line(), "3,75");
        QCOMPARE(typed.numbers, Numbers({3, 3.7, 3.75}));
        QVERIFY(typed.field.line()->hasAcceptableInput());
    }
}

void tst_InputFieldComma::pastedCommaIsADecimalPoint_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("text");
    QTest::addColumn<Numbers>("numbers");
    QTest::newRow("spin") << "spin"
                          << "3,75" << Numbers{3.75};
    QTest::newRow("spin, two separators") << "spin"
                                          << "1,234.5" << Numbers();
    QTest::newRow("double") << "double"
                            << "3,75" << Numbers{3.75};
    QTest::newRow("double, two separators") << "double"
                                            << "1,234.5" << Numbers();
    QTest::newRow("int") << "int"
                         << "3,75" << Numbers();
}

void tst_InputFieldComma::pastedCommaIsADecimalPoint()
{
    QFETCH(QString, type);
    QFETCH(QString, text);
    const TypedInto typed(type);
    paste(typed.field.line(), text);
    QTEST(typed.numbers, "numbers");
}

void tst_InputFieldComma::commaOfAnIntGoesWithReturn()
{
    const TypedInto typed("int");
    QTest::keyClicks(typed.field.line(), "12,5");
    QCOMPARE(typed.field.line()->text(), QString("12,"));
    QTest::keyClick(typed.field.line(), Qt::Key_Return);
    QCOMPARE(typed.field.line()->text(), QString("12"));
    static_cast<InputFieldWidget*>(typed.field.widget.get())->input(QString("3,75"));
    QTest::keyClick(typed.field.line(), Qt::Key_Return);
    QVERIFY2(!typed.numbers.contains(375), qPrintable(typed.field.line()->text()));
}

void tst_InputFieldComma::commaFromTheWiringIsShownVerbatim()
{
    for (const char* type : {"double", "int", "string"}) {
        const Field field(type);
        static_cast<InputFieldWidget*>(field.widget.get())->input(QString("3,75"));
        QCOMPARE(field.line()->text(), QString("3,75"));
        QCOMPARE(field.fromWidget->take(), QStringList("output(\"3,75\")"));
    }
}

NORVO_TEST(tst_InputFieldComma)
#include "tst_InputFieldComma.moc"
