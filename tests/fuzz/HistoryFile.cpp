// SPDX-License-Identifier: GPL-3.0-or-later

#include "Harness.h"
#include "host/services/history/HistoryQuery.h"
#include "host/services/history/HistoryStore.h"

#include <QFile>

#include <limits>

namespace {

constexpr qint64 kNow = 1700000000000;

void readAll(const QString& fileName)
{
    norvo::HistoryQuery query;
    if (!query.open(fileName)) {
        norvo::require(!query.error().isEmpty(), "what cannot be opened has a reason");
        return;
    }
    const QStringList names = query.signalNames().mid(0, 3);
    for (const QString& name : names) {
        norvo::HistoryRange range;
        range.device = name.section('.', 0, 0);
        range.signal = name.section('.', 1);
        range.to = std::numeric_limits<qint64>::max();
        query.read(range);
        range.maxRows = 4;
        query.read(range);
    }
}

} // namespace

/// Any file in the place of a history is read or refused, and written on or set aside.
NORVO_HARNESS(HistoryFile)
{
    norvo::withFile(input, [](const QString& fileName) {
        readAll(fileName);
        {
            norvo::HistoryStore store(fileName, {"a.b", "c.d"}, {1000000, 1000000});
            if (store.open(kNow) == norvo::HistoryStore::Opening::Open) {
                store.append({{0, {kNow, norvo::HistoryValue::of(QVariant(1.5))}},
                              {1, {kNow, norvo::HistoryValue::gap()}}});
                store.tidy(kNow);
                store.addGaps();
            } else {
                store.setAside();
            }
        }
        readAll(fileName);
        for (const char* ending : {"-wal", "-shm", ".bad", ".bad-wal", ".lock"}) {
            QFile::remove(fileName + ending);
        }
    });
}
