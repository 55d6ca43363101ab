// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/common/LineFormat.h"
#include "plugins/common/LinePattern.h"
#include "norvo/SourceDevice.h"

#include <utility>
#include <vector>

/// A source that is read and written in lines.
///
/// Each line leaves as it is, as a number where it is one, and by the named outputs whose patterns
/// match it. Named inputs write a line each.
class LineDevice : public SourceDevice
{
    Q_OBJECT

public:
    /// `inputOptions`: what the definition of an input may have: "decimal", "resend".
    explicit LineDevice(QStringList inputOptions) : m_inputOptions(std::move(inputOptions)) {}

    bool initialise() override; ///< Forgets what was written before.

signals:
    void output(QString line);  ///< Each line, without its end.
    void output(double number); ///< After the text, where that reads as a number.

public slots:
    void input(QString line); ///< Writes the text as a line, if the device is running.

protected:
    /// Writes one line, or refuses it, reports that and returns false.
    virtual bool write(const QString& line) = 0;
    virtual void countUnmatchedLine() = 0; ///< None of the named outputs wanted it.

    /// A receiver may end the device's running.
    void sendLine(const QString& line);
    void resend(); ///< The last line of each input that has "resend", where one has been written.

    QString defineOutput(int output, const QString& name,
                         const PortDefinition& definition) override;
    QString defineInput(int input, const QString& name, const PortDefinition& definition) override;
    void receive(int input, const QVariant& value) override;

private:
    struct NamedInput
    {
        norvo::LineFormat format;
        QString lastLine; ///< That has been written, if it is to be sent again.
    };

    void sendNamedOutputs(const QString& line);

    QStringList m_inputOptions;
    std::vector<norvo::LinePattern> m_outputs;
    std::vector<NamedInput> m_inputs;
};
