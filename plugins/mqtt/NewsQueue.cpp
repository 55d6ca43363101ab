// SPDX-License-Identifier: LGPL-3.0-or-later

#include "plugins/mqtt/NewsQueue.h"

#include <QPair>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <utility>

namespace norvo {

namespace {

std::size_t sizeOf(const News& news)
{
    return std::size_t(news.topic.size()) + std::size_t(news.payload.size());
}

} // namespace

void NewsQueue::push(News news)
{
    const std::lock_guard lock(m_mutex);
    m_bytes += sizeOf(news);
    m_news.push_back(std::move(news));
    if (m_news.size() > kMaxCount || m_bytes > kMaxBytes) {
        thin();
    }
}

/// It costs a step for each one that waits, but leaves room for half as many, so that a message
/// costs a few steps however many come.
void NewsQueue::thin()
{
    QSet<QPair<QByteArray, int>> newest; // A broker sends a message again for each filter.
    std::deque<News> kept;
    m_bytes = 0;
    for (auto news = m_news.rbegin(); news != m_news.rend(); ++news) {
        const QPair<QByteArray, int> key(news->topic,
                                         news->filters.isEmpty() ? -1 : news->filters.first());
        if (news->kind == News::Message && newest.contains(key)) {
            ++m_dropped;
            continue;
        }
        newest.insert(key);
        m_bytes += sizeOf(*news);
        kept.push_front(std::move(*news));
    }
    m_news = std::move(kept);
    dropOlderHalf();
}

/// Nothing where no more than half of what may wait is left.
void NewsQueue::dropOlderHalf()
{
    std::size_t count = m_news.size();
    std::deque<News> kept;
    for (News& news : m_news) {
        const bool isOver = count > kMaxCount / 2 || m_bytes > kMaxBytes / 2;
        if (news.kind == News::Message && isOver) {
            ++m_dropped;
            --count;
            m_bytes -= sizeOf(news);
        } else {
            kept.push_back(std::move(news));
        }
    }
    m_news = std::move(kept);
}

std::vector<News> NewsQueue::take(std::size_t max)
{
    const std::lock_guard lock(m_mutex);
    const auto end = m_news.begin() + std::ptrdiff_t(std::min(max, m_news.size()));
    std::vector<News> taken(std::make_move_iterator(m_news.begin()), std::make_move_iterator(end));
    m_news.erase(m_news.begin(), end);
    for (const News& news : taken) {
        m_bytes -= sizeOf(news);
    }
    return taken;
}

bool NewsQueue::isEmpty() const
{
    const std::lock_guard lock(m_mutex);
    return m_news.empty();
}

qint64 NewsQueue::takeDropped()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_dropped, 0);
}

} // namespace norvo
