// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/BaseDevice.h"
#include "norvo/DoubleVec.h"

/// A value that Qt cannot store.
struct Unheard
{};

/// Sends and takes values of many kinds.
class TalkerDevice : public BaseDevice
{
    Q_OBJECT

public:
    QStringList heard;

signals:
    void pressed();
    void number(double value);
    void text(QString value);
    void output(double value);
    void output(QString value);
    void named(double value, QString name);
    void array(DoubleVec values);
    void raw(Unheard value);

public slots:
    void clear() { heard.append("clear"); }
    void input(double value) { heard.append("double " + QString::number(value)); }
    void input(QString value) { heard.append("text " + value); }
    void setFlag(bool flag = true) { heard.append(flag ? "flag 1" : "flag 0"); }
    void either(double) {}
    void either(double, QString) {}
    void take(DoubleVec values) { heard.append("array " + QString::number(values.size())); }
    void takeRaw(Unheard) {}
};
