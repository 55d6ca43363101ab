#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace norvo {

/// Turns SIGINT and SIGTERM into a Qt signal for as long as it lives; at most one at a time.
class UnixSignals : public QObject
{
    Q_OBJECT

public:
    explicit UnixSignals(QObject* parent = nullptr);
    ~UnixSignals() override; ///< The two signals end the process again.

signals:
    void stopRequested();

private:
    void drain();

    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace norvo
