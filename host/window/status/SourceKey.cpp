// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/status/SourceKey.h"

#include "host/services/status/SourceWatch.h"
#include "host/window/sheet/Sheet.h"
#include "host/window/status/SourceList.h"

#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

SourceKey::SourceKey(const SourceWatch& watch) : m_watch(watch)
{
    setObjectName("sourceKey");
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    connect(&watch, &SourceWatch::changed, this, &SourceKey::refresh);
    connect(this, &QPushButton::clicked, this, &SourceKey::openList);
    refresh();
}

void SourceKey::refresh()
{
    const QVector<Source> sources = m_watch.sources();
    const auto count = [&sources](Source::State state) {
        return std::count_if(sources.cbegin(), sources.cend(),
                             [state](const Source& source) { return source.state == state; });
    };
    const bool isAnyLost = count(Source::State::Lost) > 0;
    const QString mark(isAnyLost ? QChar(0x2717) : QChar(0x2713)); // A cross, a tick.
    setText(mark + ' ' +
            tr("Sources %1 of %2").arg(count(Source::State::Well)).arg(sources.size()));
    QFont bold = font();
    bold.setBold(isAnyLost);
    setFont(bold);
    setAccessibleName(
        isAnyLost ? tr("%1 of %2 sources lost").arg(count(Source::State::Lost)).arg(sources.size())
                  : tr("Sources %1 of %2").arg(count(Source::State::Well)).arg(sources.size()));
    setVisible(!sources.isEmpty());
}

void SourceKey::openList()
{
    auto* const sheet = new Sheet(*this, tr("Sources"));
    sheet->content().addWidget(new SourceList(m_watch));
    sheet->present();
}

} // namespace norvo
