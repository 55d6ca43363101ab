// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/DoubleVec.h"

#include <QObject>
#include <QStringList>
#include <QVariant>

/// Sends and takes values of all kinds.
class Kinds : public QObject
{
    Q_OBJECT

signals:
    void number(double value);
    void text(QString value);
    void flag(bool value);
    void whole(int value);
    void array(DoubleVec value);
    void bytes(QByteArray value);
    void any(QVariant value);
    void named(double value, QString name);

public slots:
    void takeNumber(double value) { taken.append(QString("double %1").arg(value)); }
    void takeText(QString value) { taken.append("QString " + value); }
    void takeFlag(bool value) { taken.append(value ? "bool true" : "bool false"); }
    void takeWhole(int value) { taken.append(QString("int %1").arg(value)); }
    void takeArray(DoubleVec value)
    {
        QStringList texts;
        for (double number : value) {
            texts.append(QString::number(number));
        }
        taken.append("DoubleVec " + texts.join(' '));
    }
    void takeAny(QVariant value)
    {
        taken.append(QString("QVariant %1 %2").arg(value.typeName(), value.toString()));
    }
    void takeSender(double) { taken.append(sender()->objectName()); }

public:
    QStringList taken;
};
