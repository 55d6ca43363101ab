// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "plugins/logic/Expression.h"
#include "plugins/logic/ExpressionNames.h"
#include "norvo/DeviceTypeInfo.h"
#include "norvo/PortsDevice.h"

#include <QDeadlineTimer>

#include <cstddef>
#include <memory>
#include <vector>

/// Outputs that are JavaScript expressions over the inputs.
///
/// The definition of an input is its start value, or empty: then no output that uses it sends
/// before its first value. Option "type": "any" (a text that reads as a number or as yes or no is
/// one), "number", "yes/no" or "text". A pulse leaves the value as it is; where there is none yet
/// it is a yes. An output is sent at each value of an input that it uses, whether or not anything
/// has changed, and at the start where it needs no first value. Nothing is sent of a null.
///
/// What fails is reported once until it works again. What takes longer than kMaxExpressionTimeMs
/// rests for kRest, so that it takes half a percent of a processor at most.
class CalcDevice : public PortsDevice
{
    Q_OBJECT

public:
    CalcDevice();
    ~CalcDevice() override;

    static DeviceTypeInfo typeInfo();

    bool initialise() override;
    void postInitialisation() override;

protected:
    QString defineOutput(int output, const QString& name,
                         const PortDefinition& definition) override;
    QString defineInput(int input, const QString& name, const PortDefinition& definition) override;
    void receive(int input, const QVariant& value) override;

private:
    enum class Kind { Any, Number, YesNo, Text };
    struct Input;
    struct Output;

    static QVariant read(const QVariant& value, Kind kind);

    QString prepare(const PortDefinition& definition, const QStringList& options);
    QString unknownName(const norvo::ExpressionNames& names) const;
    void setValue(Input& input, const QVariant& value);
    bool isReady(const Output& output) const;
    void send(std::size_t number);
    void report(const Output& output, const QString& failure);

    std::shared_ptr<norvo::ExpressionEngine> m_engine; ///< Outlives the expressions.
    std::vector<Input> m_inputs;
    std::vector<Output> m_outputs;
};
