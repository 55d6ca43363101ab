// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/plan/KeptValue.h"

#include "host/panel/plan/Placement.h"

#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"

#include <QCryptographicHash>
#include <QLocale>
#include <QSignalBlocker>

#include <cmath>

namespace norvo {

namespace {

QString argumentOf(const QString& method)
{
    return method.section('(', 1).chopped(1);
}

/// Invalid where the text is no such value.
QVariant valueOf(const QString& text, const QString& type)
{
    bool isRead = false;
    if (type == "double") {
        const double number = text.toDouble(&isRead);
        return isRead && std::isfinite(number) ? QVariant(number) : QVariant();
    }
    if (type == "int") {
        const int number = text.toInt(&isRead);
        return isRead ? QVariant(number) : QVariant();
    }
    if (type == "bool") {
        return text == "true" || text == "false" ? QVariant(text == "true") : QVariant();
    }
    return text;
}

} // namespace

const QString KeptValue::kValue = QStringLiteral("kept");
const QString KeptValue::kSettings = QStringLiteral("keptFor");

KeptValue::KeptValue(BaseDevice& device, KeptMethods methods)
    : m_device(device), m_methods(std::move(methods))
{
    const QString slot = "note(" + argumentOf(m_methods.output) + ')';
    connect(&m_device, ('2' + m_methods.output).toLatin1(), this, ('1' + slot).toLatin1());
}

QString KeptValue::settings() const
{
    QStringList texts;
    const auto& params = m_device.params();
    for (auto param = params.constBegin(); param != params.constEnd(); ++param) {
        if (!isPlacementParam(param.key())) {
            texts.append(param.key() + '=' + param.value().value());
        }
    }
    texts.sort();
    const QByteArray bytes = texts.join('\0').toUtf8();
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex().left(8);
}

bool KeptValue::setSaved(const QString& text)
{
    m_saved = valueOf(text, argumentOf(m_methods.input));
    return m_saved.isValid();
}

void KeptValue::start(BaseWidget* widget)
{
    if (m_isStarted) {
        return;
    }
    if (m_saved.isValid() && m_isSent) {
        give(m_saved, m_device, m_methods.input);
    } else if (m_saved.isValid() && widget) {
        // Blocked signals do not reach the widget either, so that one is given the value, too.
        const QSignalBlocker blocker(m_device);
        give(m_saved, m_device, m_methods.input);
        give(m_saved, *widget, m_methods.widgetInput);
    }
    m_isStarted = true;
}

void KeptValue::showIn(BaseWidget& widget) const
{
    const QVariant& value = m_latest.isValid() ? m_latest : m_saved;
    if (value.isValid()) {
        const QSignalBlocker blocker(m_device);
        give(value, widget, m_methods.widgetInput);
    }
}

void KeptValue::give(const QVariant& value, QObject& receiver, const QString& method)
{
    const QGenericArgument argument(value.typeName(), value.constData());
    QMetaObject::invokeMethod(&receiver, method.section('(', 0, 0).toLatin1(), Qt::DirectConnection,
                              argument);
}

void KeptValue::note(double value)
{
    m_latest = value;
    report(QString::number(value, 'g', QLocale::FloatingPointShortest));
}

void KeptValue::note(bool value)
{
    m_latest = value;
    report(value ? "true" : "false");
}

void KeptValue::note(int value)
{
    m_latest = value;
    report(QString::number(value));
}

void KeptValue::note(const QString& value)
{
    m_latest = value;
    report(value);
}

void KeptValue::report(const QString& text)
{
    if (m_isStarted && m_wires == 0 && m_device.isRunning()) {
        emit given(text);
    }
}

} // namespace norvo
