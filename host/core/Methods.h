// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QMetaMethod>
#include <QStringList>

namespace norvo {

/// The signatures of the public methods of that type that the classes below `base` declare, in
/// meta-object order; those of one name where that is not empty.
QStringList signatures(const QMetaObject& meta, const QMetaObject& base, const QString& name,
                       QMetaMethod::MethodType type);

/// That of the first such method which `name`, a method name or a full signature, asks for; empty
/// when there is none.
QString signatureOf(const QMetaObject& meta, const QMetaObject& base, const QString& name,
                    QMetaMethod::MethodType type);

} // namespace norvo
