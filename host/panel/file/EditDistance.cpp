#include "host/panel/file/EditDistance.h"

#include <QVector>

#include <algorithm>
#include <cstdlib>

namespace norvo {

namespace {

constexpr int kMostSlips = 2;

/// The number of slips between two texts; anything above `limit` is told as limit + 1.
int slips(const QString& a, const QString& b, int limit)
{
    if (std::abs(a.size() - b.size()) > limit) {
        return limit + 1;
    }
    QVector<int> beforeLast(b.size() + 1);
    QVector<int> last(b.size() + 1);
    QVector<int> row(b.size() + 1);
    for (int j = 0; j <= b.size(); ++j) {
        row[j] = j;
    }
    for (int i = 1; i <= a.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i;
        for (int j = 1; j <= b.size(); ++j) {
            const bool same = a[i - 1] == b[j - 1];
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
            }
        }
        if (*std::min_element(row.cbegin(), row.cend()) > limit + 1) {
            return limit + 1; // A later swap saves one slip at most.
        }
    }
    return std::min(row[b.size()], limit + 1);
}

} // namespace

QString nearestName(const QString& wanted, const QStringList& known)
{
    QString nearest;
    int fewest = kMostSlips + 1;
    for (const QString& name : known) {
        if (std::abs(wanted.size() - name.size()) > kMostSlips) {
            continue; // Before anything is done to a wanted text of any length.
        }
        const int count = slips(wanted.toLower(), name.toLower(), fewest - 1);
        if (count < fewest) {
            fewest = count;
            nearest = name;
        }
        if (fewest == 0) {
            break;
        }
    }
    return nearest;
}

QString didYouMean(const QString& wanted, const QStringList& known)
{
    const QString name = nearestName(wanted, known);
    return name.isEmpty() ? QString() : QString("; did you mean \"%1\"?").arg(name);
}

} // namespace norvo
