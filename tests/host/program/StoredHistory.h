// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/services/history/HistoryStore.h"

#include <QDateTime>

/// Writes rows into a history's file as an earlier run of a panel has left them.
inline bool storeHistory(const QString& path, const QStringList& names,
                         const QVector<norvo::HistoryRow>& rows)
{
    norvo::HistoryStore store(path, names, {1000LL * 3600 * 24 * 1000, 1000LL * 1000 * 1000});
    return store.open(QDateTime::currentMSecsSinceEpoch()) == norvo::HistoryStore::Opening::Open &&
           store.append(rows);
}
