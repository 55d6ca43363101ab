// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/panel/file/PanelDescription.h"
#include "host/panel/plan/KeptValue.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <memory>
#include <optional>

class BaseDevice;
class BaseGuiDevice;
class BaseWidget;

namespace norvo {

struct Cells;

/// One device of a panel from its creation to its end; the only caller of the functions of its
/// life. Each of them does nothing for a device that has failed.
class Node : public QObject
{
    Q_OBJECT

public:
    enum class State {
        Created,
        Failed, ///< Of an unknown type, or its initialise() did not succeed; see errors().
        Initialised,
        Shown, ///< Its widget, if it has one, stands in its cells.
        Running,
        Stopped
    };
    Q_ENUM(State)

    /// Gives the device its id and network. `device` is null for an unknown type.
    Node(DeviceSetting setting, std::unique_ptr<BaseDevice> device);
    ~Node() override; ///< Deinitialises a device that has not been stopped.

    const DeviceSetting& setting() const { return m_setting; }
    const QString& id() const { return m_setting.id.text; }
    State state() const { return m_state; }
    bool isUsable() const { return m_state != State::Created && m_state != State::Failed; }
    const QStringList& errors() const { return m_errors; } ///< Why it failed, or is not shown.
    BaseDevice* device() const { return m_device.get(); }  ///< Null for an unknown type.
    BaseWidget* widget() const;                            ///< Null without one.
    bool isShowable() const; ///< Wants cells: it has a widget or, having failed, a tile.
    /// What the setting, or else the device's default, asks for.
    Cells wantedCells(const DeviceSetting& setting) const;
    /// Whether a device of this setting would be the same: places in the file, and those on the
    /// page, make no difference.
    bool isMadeFrom(const DeviceSetting& setting) const;
    /// Takes such a setting over: from now on the device has its placement parameters.
    void takeOver(const DeviceSetting& setting);

    bool initialise(); ///< Once; called again, it only says how that went.
    void setRunning();
    BaseWidget* createWidget(); ///< Null, with a reason in errors(), where the device makes none.
    /// What a widget that shows nothing reports is then in errors().
    void initialiseWidget();
    /// Of a running device: puts a new widget in the place of the old, to be placed and
    /// initialised. It hears the device behind all others, and shows the value that the old one has
    /// shown.
    BaseWidget* renewWidget();
    void postInitialise();

    /// A hand may have it send. Where `methods` tell of its value, a renewed widget shows it.
    void setControl(const std::optional<KeptMethods>& methods);
    bool isControl() const { return m_isControl; }
    /// Has the value that an operator gives to the device kept. To be called before it is saved to.
    void keepValue(const KeptMethods& methods, bool isSent);
    KeptValue* keptValue() const { return m_keptValue.get(); } ///< Null: none is kept.
    void startKeeping(); ///< Puts a saved value back; when all devices run.

    void clearRunning();
    void preShutdown();
    void deinitialiseWidget();
    void deinitialise();
    void deleteWidget();

signals:
    /// The device has changed a parameter that it keeps, or an operator its value, while it was
    /// running.
    void parameterWritten(QString device, QString param, QString value);

private:
    void fail(const QStringList& errors);
    BaseGuiDevice* guiDevice() const;

    DeviceSetting m_setting;
    const std::unique_ptr<BaseDevice> m_device;
    std::unique_ptr<KeptValue> m_keptValue;
    std::unique_ptr<KeptValue> m_value; ///< Of a control whose value is not kept.
    bool m_isControl = false;
    QPointer<BaseWidget> m_widget; ///< The surface may die first.
    State m_state = State::Created;
    QStringList m_errors;
};

} // namespace norvo
