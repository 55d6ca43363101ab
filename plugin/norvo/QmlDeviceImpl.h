// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/Export.h"

#include <QMetaMethod>
#include <QObject>
#include <QStringList>

#include <memory>

class QQmlEngine;
class QQuickItem;

/// Loads a QML item for a device and stands for the item's signals and functions in the wiring.
///
/// The item's own signals and functions count, those of the QML files that it is built on included;
/// what its C++ class brings and the change signals of properties do not. Providers and receivers
/// carry the owner's object name. An argument that QML leaves untyped comes in several kinds; see
/// grabMethods().
///
/// What goes wrong while the document runs is reported through the owner's alert(), with its place.
class NORVOGUI_EXPORT QmlDeviceImpl : public QObject
{
    Q_OBJECT

public:
    /// Takes over the engine's network, URLs and warnings. The engine is not owned and must outlive
    /// this object. Without an OpenGL in hardware, switches Qt Quick to its software renderer.
    explicit QmlDeviceImpl(QQmlEngine* engine);
    ~QmlDeviceImpl() override; ///< Deletes the item.

    /// Loads the document for `owner`: the file `sourceData`, relative to the working directory,
    /// if `sourceType` is "file", otherwise the text `sourceCode`. Replaces the item before. Unless
    /// the owner is a BaseDevice that is allowed the network, the document has none: what it asks
    /// for is refused and reported through alert().
    /// Returns what is wrong, with file, line and column, or an empty text; nothing is left of a
    /// document that did not load. `methodsChanged` becomes whether grabMethods() answers
    /// otherwise than before; if not, the wires still stand.
    QString init(QObject* owner, QString sourceType, QString sourceData, QString sourceCode,
                 bool& methodsChanged);
    void deinit(); ///< Gives up the item and all wires.

    /// The object that emits the item's signal `name`, a method name or a full signature;
    /// `signature` becomes its normalised signature. Null and an empty text when there is none.
    QObject* getSignalWrapper(const QString& name, QString& signature);
    /// The same for a function of the item and the object that receives for it.
    QObject* getSlotWrapper(const QString& name, QString& signature);
    /// The normalised signatures of the signals or slots, in meta-object order. One untyped
    /// argument of a function can be had as double, QString, bool, int, DoubleVec, QByteArray or
    /// QVariant; that of a signal as QVariant, DoubleVec, double, QString, bool or int, where it is
    /// passed on only when it reads as such.
    QStringList grabMethods(const QString& name, QMetaMethod::MethodType type, bool flag) const;

    bool isInitialised() const;
    QQmlEngine* getEngine() const;
    QQuickItem* getItem() const; ///< Owned by this object; null when not initialised.

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
