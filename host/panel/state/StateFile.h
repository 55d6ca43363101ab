// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/yaml/Place.h"

#include <QMap>
#include <QObject>
#include <QTimer>

#include <memory>

namespace norvo {

class FileLock;
struct TextError;

/// What the devices of a panel have written into their parameters: device id, parameter, text.
using PanelState = QMap<QString, QMap<QString, QString>>;

/// Where their keys stand in a file; with an empty name of a parameter, the key of the device.
using StatePlaces = QMap<QString, QMap<QString, Place>>;

/// Keeps a panel's state in a file from one run to the next.
///
/// A change is written soon after it was made, even while more changes follow, and always as a
/// whole new file that takes the place of the old one: any reader finds the one or the other.
/// Entries of devices that the panel does not have stay as they are. What cannot be written within
/// the limits of reading is not written.
class StateFile : public QObject
{
    Q_OBJECT

public:
    enum class Mode { ReadWrite, ReadOnly };

    static constexpr int kWriteDelayMs = 200; ///< From a change to its writing.

    /// `fileName` is relative to the working folder of now, whatever that is later.
    explicit StateFile(const QString& fileName, Mode mode = Mode::ReadWrite,
                       QObject* parent = nullptr);
    ~StateFile() override;

    /// The file that belongs to a panel: panel.yaml has panel.state.yaml beside it, panel.yml has
    /// panel.yml.state.yaml.
    static QString besidePanel(const QString& panelFile);

    const QString& fileName() const { return m_fileName; }
    const PanelState& state() const { return m_state; }
    const StatePlaces& places() const { return m_places; } ///< Of what was read.

    /// Reads the file, if there is one, and locks it against other panels. A file that cannot be
    /// parsed is reported and renamed to end in ".bad", where it replaces an older one; the state
    /// is then empty. From then on nothing is written where another panel holds the lock, where the
    /// file is a panel or not a regular file, or where it cannot be renamed.
    void read();
    /// Notes a change; the same text again is none.
    void set(const QString& device, const QString& param, const QString& value);
    /// Writes what is not yet written. A failure is reported once, until a writing has succeeded.
    void save();

signals:
    void problem(QString line); ///< One line for the user, with the file's name.

private:
    void lock();
    void quarantine(const TextError& error);
    void warn(const Place& place, const QString& text);

    const QString m_fileName; ///< As messages name it.
    const QString m_path;     ///< Absolute.
    Mode m_mode;
    PanelState m_state;
    StatePlaces m_places;
    std::unique_ptr<FileLock> m_lock;
    QTimer m_delay;
    bool m_unsaved = false;
    bool m_isFailureReported = false;
};

} // namespace norvo
