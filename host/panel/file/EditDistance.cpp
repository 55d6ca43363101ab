// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/file/EditDistance.h"

#include "host/yaml/Quote.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <numeric>
#include <vector>

namespace norvo {

namespace {

constexpr int kMaxDistance = 2;

/// The edit distance of two texts; anything above `limit` counts as limit + 1.
int editDistance(const QString& a, const QString& b, int limit)
{
    std::vector<int> beforeLast(size_t(b.size()) + 1);
    std::vector<int> last(beforeLast.size());
    std::vector<int> row(beforeLast.size());
    std::iota(row.begin(), row.end(), 0);
    for (int i = 1; i <= a.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i;
        for (int j = 1; j <= b.size(); ++j) {
            const size_t k = size_t(j);
            const int change = a[i - 1] == b[j - 1] ? 0 : 1;
            row[k] = std::min({last[k] + 1, row[k - 1] + 1, last[k - 1] + change});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[k] = std::min(row[k], beforeLast[k - 2] + 1);
            }
        }
        if (*std::min_element(row.cbegin(), row.cend()) > limit) {
            return limit + 1;
        }
    }
    return row.back();
}

/// Place of the nearest name in the list, of equally near ones the first; -1: none is near.
int nearestPlace(const QString& wanted, const QStringList& known)
{
    const QString lowered = wanted.toLower();
    int nearest = -1;
    int limit = kMaxDistance;
    for (int i = 0; i < known.size() && limit >= 0; ++i) {
        if (std::abs(wanted.size() - known[i].size()) > limit) {
            continue; // Before anything is done with a text of any length.
        }
        const int distance = editDistance(lowered, known[i].toLower(), limit);
        if (distance <= limit) {
            limit = distance - 1;
            nearest = i;
        }
    }
    return nearest;
}

QString afterSlash(const QString& name)
{
    return name.mid(name.lastIndexOf('/') + 1);
}

QString suggestion(const QString& name)
{
    return name.isEmpty() ? QString() : QString("; did you mean \"%1\"?").arg(name);
}

} // namespace

QString nearestName(const QString& wanted, const QStringList& known)
{
    int place = nearestPlace(wanted, known);
    if (place < 0) {
        QStringList lastParts;
        std::transform(known.cbegin(), known.cend(), std::back_inserter(lastParts), afterSlash);
        place = nearestPlace(afterSlash(wanted), lastParts);
    }
    return known.value(place);
}

QString didYouMean(const QString& wanted, const QStringList& known)
{
    return suggestion(nearestName(wanted, known));
}

QString didYouMeanOneOf(const QString& wanted, const QStringList& known)
{
    const QString nearest = didYouMean(wanted, known);
    return nearest.isEmpty() && !known.isEmpty() ? "; valid names: " + inQuotes(known) : nearest;
}

QString didYouMeanDevice(const QString& wanted, const QStringList& ids)
{
    const auto ofUse = std::find_if(ids.cbegin(), ids.cend(), [&wanted](const QString& id) {
        return id.startsWith(wanted + '-');
    });
    return suggestion(ofUse == ids.cend() ? nearestName(wanted, ids) : *ofUse);
}

} // namespace norvo
