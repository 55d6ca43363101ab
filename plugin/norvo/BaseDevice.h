// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include "norvo/ConnectionPoint.h"
#include "norvo/Export.h"
#include "norvo/NamedObject.h"
#include "norvo/ParametersEntity.h"

#include <QMetaMethod>
#include <QObject>
#include <QStringList>

/// A node of the wiring: parameters, outputs (signals) and inputs (slots).
///
/// The host drives it: constructor, setParam(), initialise(), setRunning(true),
/// postInitialisation(), ..., setRunning(false), preShutdown(), deinitialise(), destructor. All of
/// it on the GUI thread.
class NORVO_EXPORT BaseDevice : public QObject,
                                public ParametersEntity,
                                public NamedObject,
                                public ConnectionPoint
{
    Q_OBJECT

public:
    BaseDevice();
    ~BaseDevice() override;

    /// The object that emits the output `name`, a method name or a full signature. `signature`
    /// becomes its normalised signature; null and an empty text when there is no such output. A
    /// bare name with overloads gives the one declared first.
    virtual QObject* getProvider(const QString& name, QString& signature);
    /// The same for the input `name` and the object that receives it.
    virtual QObject* getReceiver(const QString& name, QString& signature);
    QStringList getIncomingConnections() const override;
    void addSignal(const QString& signal) override;
    QString getObjectName() const override; ///< The QObject's name.
    /// Stores a parameter's text and emits paramChanged() when that changed it.
    void setParam(QString name, QString value) override;
    virtual void postInitialisation(); ///< For initial outputs: wiring and widget stand by then.
    virtual void preShutdown();        ///< The wiring still stands, the running flag is clear.
    virtual bool initialise();         ///< Reads the parameters; false: not usable.
    virtual void deinitialise();
    bool error(QString text) override; ///< Logs a warning, emits errorOccurred(); returns false.
    bool alert(QString text) override; ///< Logs a warning, emits alertRaised(); returns true.
    void sendParamChanged() override;
    /// The normalised signatures of the public methods of that type that the classes below
    /// BaseDevice declare, in meta-object order. A name that is not empty keeps its overloads only;
    /// `flag` asks for the complete list, the methods meant for the device's own widget included.
    virtual QStringList grabMethods(const QString& name, QMetaMethod::MethodType type,
                                    bool flag) const;

    void setDescription(const QString& description);
    QString description() const { return m_description; }

    /// Takes back what addSignal() has noted. Only the host does it, when it cuts a wire.
    void removeSignal(const QString& signal);

    /// True from after a successful initialise() until the stop. Only the host sets it.
    bool isRunning() const { return m_running; }
    void setRunning(bool running) { m_running = running; }
    /// Whether the panel's author opens the network to what the device loads. Only the host sets
    /// it, before initialise().
    bool isNetworkAllowed() const { return m_networkAllowed; }
    void setNetworkAllowed(bool allowed) { m_networkAllowed = allowed; }

signals:
    void methodsChanged(); ///< The set of outputs and inputs has changed.
    void errorOccurred(QString text);
    void alertRaised(QString text);
    void paramChanged(QString name, QString value); ///< `name` as it was declared.
    void descriptionChanged(QString description);

private:
    QString m_description;
    QStringList m_incoming;
    bool m_running = false;
    bool m_networkAllowed = false;
};
