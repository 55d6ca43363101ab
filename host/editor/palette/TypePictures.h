// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <vector>

class DeviceManager;

namespace norvo {

class Catalogue;
class ExampleRun;

/// A picture of each device type: of its example as it runs; of one without a widget a symbol with
/// the names of its outputs and inputs. They are made one after the other, a type at a turn of the
/// event loop, and kept for the run of the program.
class TypePictures : public QObject
{
    Q_OBJECT

public:
    static const QSize kSize; ///< In pixels.

    /// Both must outlive it.
    TypePictures(const Catalogue& catalogue, const DeviceManager& manager);
    ~TypePictures() override;

    QImage picture(const QString& typeKey) const; ///< The symbol where there is no other yet.
    void make(const QStringList& typeKeys);       ///< Those that are not there yet.
    bool isDone() const { return m_waiting.isEmpty() && m_runs.empty(); }

signals:
    void made(QString typeKey);

private:
    struct Run
    {
        QString typeKey;
        int sent = 0;
        std::unique_ptr<ExampleRun> example;
    };

    void startNext();
    void sendValues();

    const Catalogue& m_catalogue;
    const DeviceManager& m_manager;
    QStringList m_waiting;
    std::vector<Run> m_runs;
    QTimer m_next;
    QTimer m_values;
};

} // namespace norvo
