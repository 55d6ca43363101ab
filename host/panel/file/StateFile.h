#pragma once

#include <QMap>
#include <QObject>
#include <QTimer>

namespace norvo {

/// What the devices of a panel have written into their parameters: device id, parameter, text.
using PanelState = QMap<QString, QMap<QString, QString>>;

/// Keeps a panel's state in a file from one run to the next.
///
/// A change is written soon after it was made, whatever changes follow it, and always as a whole
/// new file that takes the place of the old one: whoever looks finds the one or the other. Entries
/// of devices that the panel does not have stay as they are.
class StateFile : public QObject
{
    Q_OBJECT

public:
    enum class Mode { ReadWrite, ReadOnly };

    static constexpr int kWriteDelayMs = 200;             ///< From a change to its writing.
    static constexpr qint64 kSizeLimit = 4 * 1024 * 1024; ///< Larger files are not read.

    explicit StateFile(const QString& fileName, Mode mode = Mode::ReadWrite,
                       QObject* parent = nullptr);

    /// The file that belongs to a panel: panel.yaml has panel.state.yaml beside it.
    static QString besidePanel(const QString& panelFile);

    const QString& fileName() const { return m_fileName; }
    const PanelState& state() const { return m_state; }

    /// Reads the file, if there is one. A file that does not read is told and put aside under
    /// ".bad", where it replaces an older one; the state is then empty.
    void read();
    /// Notes a change; the same text again is none.
    void set(const QString& device, const QString& param, const QString& value);
    /// Writes what is not yet written. A failure is told once, until a writing has succeeded.
    void save();

signals:
    void problem(QString line); ///< One line for the user, with the file's name.

private:
    void putAside(const QString& reason);
    void tell(const QString& text);

    const QString m_fileName;
    const Mode m_mode;
    PanelState m_state;
    QTimer m_delay;
    bool m_unsaved = false;
    bool m_failureTold = false;
};

} // namespace norvo
