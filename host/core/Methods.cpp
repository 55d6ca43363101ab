// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/core/Methods.h"

namespace norvo {

QStringList signatures(const QMetaObject& meta, const QMetaObject& base, const QString& name,
                       QMetaMethod::MethodType type)
{
    const QByteArray wanted = name.toUtf8();
    QStringList found;
    for (int i = base.methodCount(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() == type && method.access() == QMetaMethod::Public &&
            (wanted.isEmpty() || method.name() == wanted)) {
            found.append(QString::fromUtf8(method.methodSignature()));
        }
    }
    return found;
}

QString signatureOf(const QMetaObject& meta, const QMetaObject& base, const QString& name,
                    QMetaMethod::MethodType type)
{
    if (!name.contains('(')) {
        return name.isEmpty() ? QString() : signatures(meta, base, name, type).value(0);
    }
    // Most devices have none of the name, which is sooner found out than its normal form.
    const QString bareName = name.left(name.indexOf('(')).trimmed();
    const QStringList found = signatures(meta, base, bareName, type);
    if (found.isEmpty()) {
        return {};
    }
    const QString wanted = QMetaObject::normalizedSignature(name.toUtf8().constData());
    return found.contains(wanted) ? wanted : QString();
}

} // namespace norvo
