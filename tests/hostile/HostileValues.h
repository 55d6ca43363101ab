// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "norvo/DoubleVec.h"

#include <QImage>
#include <QPair>
#include <QTemporaryDir>
#include <QVariant>
#include <QVector>

#include <limits>
#include <sys/stat.h>

/// Texts that nobody should give to a parameter or an input, each with a name for messages.
class HostileTexts
{
public:
    using Named = QPair<QString, QString>;

    HostileTexts() { mkfifo(qPrintable(fifo()), 0600); }

    QString fifo() const { return m_folder.filePath("fifo"); }

    QVector<Named> all() const
    {
        return {{"empty", ""},
                {"blanks", " \t\n "},
                {"nan", "nan"},
                {"inf", "inf"},
                {"minus inf", "-inf"},
                {"-1", "-1"},
                {"0", "0"},
                {"1e308", "1e308"},
                {"-1e308", "-1e308"},
                {"1e-308", "1e-308"},
                {"2^31", "2147483648"},
                {"2^63", "9223372036854775808"},
                {"10 kB", QString(10000, 'x')},
                {"10 kB of digits", QString(10000, '9')},
                {"markup", "<html><b>a<img src='x.png'><table><tr><td>&nbsp;&#0;</td></tr>"},
                {"control characters", QString::fromLatin1("a\0b\1\x1b[2J\r\n\x7f\x9b", 14)},
                {"percent sequences", "%1 %2 %99 %s %n %% %"},
                {"right to left", QString::fromUtf8("\u202eשלום\u2066 עולם")},
                {"half a surrogate", QString(QChar(0xd800)) + 'a' + QChar(0xdc00)},
                {"FIFO", fifo()},
                {"device", "/dev/zero"},
                {"folder", m_folder.path()}};
    }

private:
    QTemporaryDir m_folder;
};

/// Values of all kinds that nobody should send.
inline QVector<QPair<QString, QVariant>> hostileValues(const HostileTexts& texts)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    const double most = std::numeric_limits<double>::max();
    QVector<QPair<QString, QVariant>> values;
    for (const HostileTexts::Named& text : texts.all()) {
        values.append({"text " + text.first, text.second});
    }
    for (const double number : {nan, inf, -inf, most, -most, 5e-324, -0.0, 1e18, -1e18}) {
        values.append({"number " + QString::number(number), number});
    }
    for (const int number : {INT_MIN, -1, 0, INT_MAX}) {
        values.append({"int " + QString::number(number), number});
    }
    QVariantList nested{1, "a"};
    for (int depth = 0; depth < 100; ++depth) {
        nested = QVariantList{QVariant(nested)};
    }
    const QVector<QPair<QString, QVariant>> others{
        {"invalid", QVariant()},
        {"large", std::numeric_limits<qlonglong>::max()},
        {"largest", std::numeric_limits<qulonglong>::max()},
        {"true", true},
        {"no bytes", QByteArray()},
        {"bytes", QByteArray(10000, '\xff')},
        {"lists", nested},
        {"map", QVariantMap{{"", QVariant()}, {"a", QVariantList{nan}}}},
        {"no image", QImage()},
        {"image", QImage(3, 3, QImage::Format_Mono)},
        {"no object", QVariant::fromValue<QObject*>(nullptr)},
        {"no array", QVariant::fromValue(DoubleVec())},
        {"array of one", QVariant::fromValue(DoubleVec{nan})},
        {"array", QVariant::fromValue(DoubleVec{nan, inf, -inf, most, -most, 0})},
        {"long array", QVariant::fromValue(DoubleVec(100000, most))}};
    return values + others;
}
