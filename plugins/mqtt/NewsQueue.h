// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QVarLengthArray>

#include <cstddef>
#include <deque>
#include <mutex>
#include <vector>

namespace norvo {

/// A message from the broker, or what has happened to the connection.
struct News
{
    enum Kind { Message, Connected, Disconnected, Error };
    using Filters = QVarLengthArray<int, 2>;

    Kind kind = Message;
    QByteArray topic;
    QByteArray payload;
    Filters filters; ///< Numbers of those that it came for; none where the broker does not say.
    bool isRetained = false;
    QString text; ///< Of an error.
};

/// News on their way from the connection's thread to the panel's, in order and within bounds.
///
/// When more wait than that, the newest message of each topic stays and all older ones go; where
/// those are too many, the older half of them goes as well. Other news always stay.
class NewsQueue
{
public:
    static constexpr std::size_t kMaxCount = 50000;
    static constexpr std::size_t kMaxBytes = 16 * 1024 * 1024; ///< Of topics and payloads.

    void push(News news);
    std::vector<News> take(std::size_t max); ///< The oldest ones; empty when there are none.
    bool isEmpty() const;
    qint64 takeDropped(); ///< Messages dropped since the last call.

private:
    void thin();
    void dropOlderHalf();

    mutable std::mutex m_mutex;
    std::deque<News> m_news;
    std::size_t m_bytes = 0;
    qint64 m_dropped = 0;
};

} // namespace norvo
