// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/file/LineDiff.h"

#include <algorithm>

namespace norvo {

namespace {

/// Unmarks the lines of a longest common subsequence.
void unmarkCommon(const QStringList& left, const QStringList& right, LineDiff& diff, int begin,
                  int leftEnd, int rightEnd)
{
    const int rows = leftEnd - begin;
    const int columns = rightEnd - begin;
    // The longest from each pair of lines on, both ends of the table being 0.
    QVector<int> longest((rows + 1) * (columns + 1), 0);
    const auto at = [&](int row, int column) -> int& {
        return longest[row * (columns + 1) + column];
    };
    for (int row = rows - 1; row >= 0; --row) {
        for (int column = columns - 1; column >= 0; --column) {
            at(row, column) = left[begin + row] == right[begin + column]
                                  ? at(row + 1, column + 1) + 1
                                  : std::max(at(row + 1, column), at(row, column + 1));
        }
    }
    int row = 0;
    int column = 0;
    while (row < rows && column < columns) {
        if (left[begin + row] == right[begin + column]) {
            diff.onlyLeft[begin + row++] = false;
            diff.onlyRight[begin + column++] = false;
        } else if (at(row + 1, column) >= at(row, column + 1)) {
            ++row;
        } else {
            ++column;
        }
    }
}

} // namespace

LineDiff::LineDiff(const QStringList& left, const QStringList& right)
    : onlyLeft(left.size(), true), onlyRight(right.size(), true)
{
    const int common = std::min(left.size(), right.size());
    int begin = 0;
    while (begin < common && left[begin] == right[begin]) {
        onlyLeft[begin] = onlyRight[begin] = false;
        ++begin;
    }
    int leftEnd = left.size();
    int rightEnd = right.size();
    while (leftEnd > begin && rightEnd > begin && left[leftEnd - 1] == right[rightEnd - 1]) {
        onlyLeft[--leftEnd] = onlyRight[--rightEnd] = false;
    }
    if (leftEnd - begin <= kMaxLines && rightEnd - begin <= kMaxLines) {
        unmarkCommon(left, right, *this, begin, leftEnd, rightEnd);
    }
}

} // namespace norvo
