// SPDX-License-Identifier: GPL-3.0-or-later

#include "plugins/common/LineDevice.h"

namespace {

constexpr int kMaxMatchedLength = 65536;
constexpr int kMaxNumberLength = 400; ///< Every finite double fits, with all its digits.

} // namespace

bool LineDevice::initialise()
{
    for (NamedInput& input : m_inputs) {
        input.lastLine.clear();
    }
    return true;
}

QString LineDevice::defineOutput(int, const QString&, const PortDefinition& definition)
{
    norvo::LinePattern pattern;
    QString error = unknownOption(definition, {"decimal"});
    error = error.isEmpty() ? pattern.define(definition) : error;
    if (error.isEmpty()) {
        m_outputs.push_back(pattern);
    }
    return error;
}

QString LineDevice::defineInput(int, const QString&, const PortDefinition& definition)
{
    norvo::LineFormat format;
    QString error = unknownOption(definition, m_inputOptions);
    error = error.isEmpty() ? format.define(definition) : error;
    if (error.isEmpty()) {
        m_inputs.push_back({format, {}});
    }
    return error;
}

void LineDevice::sendLine(const QString& line)
{
    bool isNumber = false;
    const double number =
        line.size() <= kMaxNumberLength ? line.trimmed().toDouble(&isNumber) : 0.0;
    emit output(line);
    if (isNumber && isRunning()) {
        emit output(number);
    }
    if (!m_outputs.empty() && isRunning()) {
        sendNamedOutputs(line);
    }
}

void LineDevice::sendNamedOutputs(const QString& line)
{
    bool isMatched = false;
    const std::size_t count = line.size() <= kMaxMatchedLength ? m_outputs.size() : 0;
    for (std::size_t i = 0; i < count && isRunning(); ++i) {
        const bool heard = isHeard(int(i));
        if (!heard && isMatched) {
            continue; // What it would be is of no use to anybody.
        }
        if (const auto value = m_outputs[i].valueIn(line)) {
            isMatched = true;
            sendText(int(i), *value, m_outputs[i].numberOf(*value));
        }
    }
    if (!isMatched) {
        countUnmatchedLine();
    }
}

void LineDevice::input(QString line)
{
    if (isRunning()) {
        write(line);
    }
}

void LineDevice::receive(int input, const QVariant& value)
{
    NamedInput& named = m_inputs[std::size_t(input)];
    const QString line = named.format.lineFor(textOf(value));
    if (write(line) && named.format.isResent()) {
        named.lastLine = line;
    }
}

void LineDevice::resend()
{
    for (const NamedInput& input : m_inputs) {
        if (!input.lastLine.isEmpty()) {
            write(input.lastLine);
        }
    }
}
