// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/logic/CalcDevice.h"

#include "norvo/Categories.h"
#include "norvo/Readings.h"

#include <QPointer>

#include <algorithm>
#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto kRest = 10s;
constexpr int kMaxExpressionLength = 10000;
const QString kTypeOption = QStringLiteral("type");
const QStringList kTypes{"any", "number", "yes/no", "text"}; ///< In the order of Kind.

} // namespace

struct CalcDevice::Input
{
    struct Use
    {
        std::size_t output;
        int position; ///< Among the inputs of its expression.
    };

    QString name;
    Kind kind = Kind::Any;
    QVariant start; ///< Invalid: none; as is the next.
    QVariant value;
    std::vector<Use> uses;
    bool hasRefused = false; ///< The last value, which has been reported.
};

struct CalcDevice::Output
{
    QString name;
    std::unique_ptr<norvo::Expression> expression;
    std::vector<std::size_t> inputs;
    bool hasFailed = false; ///< And that has been reported.
    bool isResting = false;
    QDeadlineTimer rest;
};

CalcDevice::CalcDevice() = default;

CalcDevice::~CalcDevice() = default;

DeviceTypeInfo CalcDevice::typeInfo()
{
    return {"Calculation", "Outputs that are expressions over inputs", {norvo::kCategoryLogic}};
}

/// What is wrong with the options, or with the engine.
QString CalcDevice::prepare(const PortDefinition& definition, const QStringList& options)
{
    QString error = unknownOption(definition, options);
    if (error.isEmpty() && !m_engine) {
        m_engine = norvo::expressionEngine(error);
    }
    return error;
}

QString CalcDevice::defineInput(int, const QString& name, const PortDefinition& definition)
{
    QString error = prepare(definition, {kTypeOption});
    if (!error.isEmpty()) {
        return error;
    }
    if (!m_engine->canName(name)) {
        return QString("no expression can use the name \"%1\"; use letters, digits and \"_\", no "
                       "digit first, and no word of JavaScript")
            .arg(name);
    }
    const QString type = definition.options.value(kTypeOption, kTypes.constFirst());
    if (!kTypes.contains(type)) {
        return QString("option \"type\": \"%1\" is not one of \"%2\"")
            .arg(type, kTypes.join("\", \""));
    }
    Input input;
    input.name = name;
    input.kind = Kind(kTypes.indexOf(type));
    if (!definition.text.isEmpty()) {
        input.start = read(definition.text, input.kind);
        if (!input.start.isValid()) {
            return QString("the start value \"%1\" is no %2").arg(definition.text, type);
        }
    }
    m_inputs.push_back(std::move(input));
    return {};
}

QString CalcDevice::defineOutput(int number, const QString& name, const PortDefinition& definition)
{
    const QString& text = definition.text;
    QString error = prepare(definition, {});
    if (error.isEmpty() && text.trimmed().isEmpty()) {
        error = "there is no expression; write one such as \"t > 30\"";
    }
    if (error.isEmpty() && text.size() > kMaxExpressionLength) {
        error = QString("an expression has %1 characters at most").arg(kMaxExpressionLength);
    }
    if (!error.isEmpty()) {
        return error;
    }
    const norvo::ExpressionNames names = norvo::namesIn(text);
    Output output;
    output.name = name;
    QStringList used;
    for (std::size_t i = 0; i < m_inputs.size(); ++i) {
        if (names.used.contains(m_inputs[i].name)) {
            output.inputs.push_back(i);
            used.append(m_inputs[i].name);
        }
    }
    output.expression = m_engine->compile(text, used, error);
    if (!output.expression) {
        return "not an expression of JavaScript: " + error;
    }
    error = unknownName(names);
    if (error.isEmpty()) {
        for (int position = 0; position < used.size(); ++position) {
            m_inputs[output.inputs[std::size_t(position)]].uses.push_back(
                {std::size_t(number), position});
        }
        m_outputs.push_back(std::move(output));
    }
    return error;
}

/// Says which name stands for nothing, where that can be known.
QString CalcDevice::unknownName(const norvo::ExpressionNames& names) const
{
    QStringList known;
    for (const Input& input : m_inputs) {
        known.append(input.name);
    }
    for (const QString& name : names.used) {
        if (!names.declaresOthers && !names.parameters.contains(name) && !known.contains(name) &&
            !m_engine->knows(name)) {
            return QString("\"%1\" is neither an input nor a name of JavaScript; inputs: %2")
                .arg(name, known.isEmpty() ? QString("none") : known.join(", "));
        }
    }
    return {};
}

/// The value as its kind has it; invalid where it does not read as that.
QVariant CalcDevice::read(const QVariant& value, Kind kind)
{
    const int type = value.userType();
    const bool isText = type == QMetaType::QString;
    if (kind == Kind::Text) {
        return textOf(value);
    }
    if (!isText && (kind == Kind::Any || (kind == Kind::YesNo) == (type == QMetaType::Bool))) {
        return type == QMetaType::Int ? QVariant(value.toDouble()) : value;
    }
    const QString text = textOf(value);
    if (kind != Kind::YesNo) {
        const auto number = type == QMetaType::Bool ? std::optional(value.toBool() ? 1.0 : 0.0)
                                                    : norvo::readDouble(text);
        if (number) {
            return *number;
        }
    }
    if (kind != Kind::Number) {
        if (const auto yes = norvo::readBool(text)) {
            return *yes;
        }
    }
    return kind == Kind::Any ? value : QVariant();
}

bool CalcDevice::initialise()
{
    for (Output& output : m_outputs) {
        output.hasFailed = false;
        output.isResting = false;
    }
    for (Input& input : m_inputs) {
        input.hasRefused = false;
        setValue(input, input.start);
    }
    return true;
}

void CalcDevice::postInitialisation()
{
    const QPointer<CalcDevice> self(this);
    for (std::size_t i = 0; self && i < m_outputs.size(); ++i) {
        send(i);
    }
}

void CalcDevice::receive(int number, const QVariant& value)
{
    Input& input = m_inputs[std::size_t(number)];
    if (value.isValid() || !input.value.isValid()) {
        const QVariant taken = read(value.isValid() ? value : QVariant(true), input.kind);
        const bool isNews = !taken.isValid() && !input.hasRefused;
        input.hasRefused = !taken.isValid();
        if (isNews) {
            alert(QString("input \"%1\" refuses \"%2\", which is no %3")
                      .arg(input.name, textOf(value), kTypes[int(input.kind)]));
        }
        if (input.hasRefused) {
            return;
        }
        setValue(input, taken);
    }
    const QPointer<CalcDevice> self(this);
    for (std::size_t i = 0; self && i < input.uses.size(); ++i) {
        send(input.uses[i].output);
    }
}

void CalcDevice::setValue(Input& input, const QVariant& value)
{
    input.value = value;
    for (const Input::Use& use : input.uses) {
        m_outputs[use.output].expression->setInput(use.position, value);
    }
}

bool CalcDevice::isReady(const Output& output) const
{
    return std::all_of(output.inputs.cbegin(), output.inputs.cend(),
                       [this](std::size_t input) { return m_inputs[input].value.isValid(); }) &&
           !(output.isResting && !output.rest.hasExpired());
}

/// A receiver may delete the device.
void CalcDevice::send(std::size_t number)
{
    using Result = norvo::ExpressionResult;

    Output& output = m_outputs[number];
    if (!isHeard(int(number)) || !isReady(output)) {
        return;
    }
    const Result result = output.expression->evaluate();
    const bool isNews = !output.hasFailed;
    output.isResting = result.kind == Result::TooLong;
    output.hasFailed = output.isResting || result.kind == Result::Failure;
    if (output.isResting) {
        output.rest = QDeadlineTimer(kRest);
    }
    switch (result.kind) {
    case Result::Number:
        return sendNumber(int(number), result.number);
    case Result::YesNo:
        return sendBool(int(number), result.number != 0);
    case Result::Text:
        return sendText(int(number), result.text);
    case Result::Nothing:
        return;
    case Result::Failure:
    case Result::TooLong:
        if (isNews) {
            report(output, result.text);
        }
    }
}

void CalcDevice::report(const Output& output, const QString& failure)
{
    const QString text =
        output.isResting
            ? QString("output \"%1\" took more than %2 ms; it is silent, and tried "
                      "again after %3 s")
                  .arg(output.name)
                  .arg(norvo::kMaxExpressionTimeMs)
                  .arg(kRest / 1s)
            : QString("output \"%1\" is silent until it works again: %2").arg(output.name, failure);
    alert(text);
}
