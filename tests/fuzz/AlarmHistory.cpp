// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/services/alarms/AlarmHistory.h"
#include "Harness.h"

#include <QFile>

using norvo::AlarmEntry;
using norvo::AlarmHistory;
using norvo::require;

namespace {

void requireSame(const AlarmEntry& a, const AlarmEntry& b)
{
    require(a.time == b.time && a.event == b.event && a.id == b.id && a.device == b.device,
            "an entry is written as it was read");
    require(a.priority == b.priority && a.text == b.text && a.detail == b.detail &&
                a.state == b.state,
            "so are its texts and its state");
    require(a.since == b.since && a.shelvedUntil == b.shelvedUntil, "so are its times");
}

} // namespace

/// What is read of any file is there again once another entry was written.
NORVO_HARNESS(AlarmHistory)
{
    norvo::withFile(input, [](const QString& fileName) {
        AlarmEntry added;
        added.time = 1;
        added.event = "began";
        added.id = "an alarm";
        std::deque<AlarmEntry> before;
        {
            AlarmHistory history(fileName);
            history.read();
            history.toCsv();
            history.add(added);
            before = history.entries();
        }
        AlarmHistory history(fileName);
        history.read();
        require(history.entries().size() == before.size(), "all entries are read again");
        for (std::size_t i = 0; i < before.size(); ++i) {
            requireSame(history.entries()[i], before[i]);
        }
    });
}
