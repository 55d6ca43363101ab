// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/layout/PageKeys.h"

#include <QPushButton>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>

namespace norvo {

namespace {

constexpr int kGap = 6; // pixels, between two keys

} // namespace

PageKeys::PageKeys(QTabWidget& tabs, int keySize) : m_tabs(tabs), m_keySize(keySize, keySize)
{
    tabs.tabBar()->hide();
    for (int i = 0; i < tabs.count(); ++i) {
        m_keys.append(makeKey(i));
        m_keySize = m_keySize.expandedTo(m_keys.last()->sizeHint());
    }
    m_keys[tabs.currentIndex()]->setChecked(true);
    connect(&tabs, &QTabWidget::currentChanged, this,
            [this](int index) { m_keys[index]->setChecked(true); });
    setFixedHeight(m_keySize.height());
    for (const int by : {-1, 1}) {
        const int key = by < 0 ? Qt::Key_PageUp : Qt::Key_PageDown;
        connect(new QShortcut(Qt::CTRL + key, this), &QShortcut::activated, this,
                [this, by] { go(by); });
    }
}

QPushButton* PageKeys::makeKey(int index)
{
    auto* const key = new QPushButton(m_tabs.tabText(index), this);
    key->setCheckable(true);
    key->setAutoExclusive(true);
    connect(key, &QPushButton::clicked, &m_tabs, [this, index] { m_tabs.setCurrentIndex(index); });
    return key;
}

void PageKeys::go(int by)
{
    const int count = m_tabs.count();
    m_tabs.setCurrentIndex((m_tabs.currentIndex() + by + count) % count);
}

int PageKeys::keysInLine(int width) const
{
    return qBound(1, (width + kGap) / (m_keySize.width() + kGap), m_keys.size());
}

QSize PageKeys::sizeHint() const
{
    return {m_keys.size() * (m_keySize.width() + kGap) - kGap, m_keySize.height()};
}

QSize PageKeys::minimumSizeHint() const
{
    return m_keySize;
}

void PageKeys::takeHeight()
{
    const int inLine = keysInLine(width());
    const int lines = (m_keys.size() + inLine - 1) / inLine;
    setFixedHeight(lines * (m_keySize.height() + kGap) - kGap);
}

/// The height follows from the width, and is no matter of the layout: that would have the window
/// give the pages below all the height that they ask for. The layout that resizes it just now would
/// miss the change.
void PageKeys::resizeEvent(QResizeEvent* /*event*/)
{
    const int inLine = keysInLine(width());
    const bool isFull = m_keys.size() > inLine; // Lines that are all of one length.
    const int keyWidth = isFull ? (width() + kGap) / inLine - kGap : m_keySize.width();
    QMetaObject::invokeMethod(this, &PageKeys::takeHeight, Qt::QueuedConnection);
    for (int i = 0; i < m_keys.size(); ++i) {
        const int column =
            layoutDirection() == Qt::RightToLeft ? inLine - 1 - i % inLine : i % inLine;
        m_keys[i]->setGeometry(column * (keyWidth + kGap), i / inLine * (m_keySize.height() + kGap),
                               keyWidth, m_keySize.height());
    }
}

} // namespace norvo
