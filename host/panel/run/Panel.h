#pragma once

#include "host/panel/file/PanelDescription.h"
#include "host/panel/file/StateFile.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <vector>

class BaseDevice;
class BaseWidget;
class DeviceManager;

namespace norvo {

class PanelPages;
struct Cells;

/// A running panel: owns its devices, their widgets and the wires between them, and leads them
/// through their lives. All devices take each step before any takes the next.
///
/// It runs what can run: a device that is unknown or fails to start leaves a fault and a tile in
/// its place, an arrow that cannot be connected leaves a fault. What is wrong with the description
/// itself is better told beforehand; see PanelCheck.
class Panel : public QObject
{
    Q_OBJECT

public:
    /// The steps of a start, in their order.
    enum class Step { Create, Initialise, Wire, Show, PostInitialise };
    Q_ENUM(Step)

    /// `manager` must outlive the panel. What `saved` says of undeclared parameters and of absent
    /// devices is left aside; the rest goes over what the description sets.
    Panel(const DeviceManager& manager, PanelDescription description, PanelState saved = {});
    ~Panel() override; ///< Stops.

    const PanelDescription& description() const { return m_description; }
    bool isStarted() const { return m_started; }
    /// Null where there is none of that id, or where the panel is not started.
    BaseDevice* device(const QString& id) const;
    /// Null likewise, and for a device that has no widget or did not start.
    BaseWidget* widget(const QString& id) const;
    /// What went wrong at the last start.
    const Diagnostics& diagnostics() const { return m_diagnostics; }

    /// Starts all devices and shows their widgets on `page`. Does nothing when started.
    void start(QWidget* page);
    /// Ends all devices, in reverse order, and leaves the page empty. Does nothing when stopped.
    void stop();

signals:
    /// A device has changed one of its parameters while it was running.
    void parameterWritten(QString device, QString param, QString value);
    void stepTaken(norvo::Panel::Step step); ///< All devices have passed this step of the start.

private:
    struct Member;
    struct LiveWire;

    void createDevices();
    void setParams(const DeviceSetting& setting, BaseDevice& device) const;
    void initialiseDevices();
    void connectWires();
    void connectArrow(int arrow, bool closesCircle);
    void showWidgets(QWidget* page);
    void postInitialiseDevices();
    void showWidget(Member& member, const Cells& cells);
    void fail(Member& member, const QString& what, const QStringList& reasons);
    const Member* find(const QString& id) const;

    const DeviceManager& m_manager;
    const PanelDescription m_description;
    const PanelState m_saved;
    bool m_started = false;
    std::vector<Member> m_members; ///< In the order of the file.
    QHash<QString, int> m_indexes; ///< Id to index in m_members.
    std::vector<LiveWire> m_wires; ///< In the order of the file.
    QPointer<PanelPages> m_pages;
    Diagnostics m_diagnostics;
};

} // namespace norvo
