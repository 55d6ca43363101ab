// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/BoundedLabel.h"

#include <QScreen>

#include <iterator>
#include <utility>

namespace {

constexpr int kMostKept = 8;

} // namespace

bool BoundedLabel::Content::operator==(const Content& other) const
{
    return text == other.text && font.isCopyOf(other.font) && margins == other.margins &&
           least == other.least && margin == other.margin && indent == other.indent &&
           frame == other.frame && alignment == other.alignment && isWrapped == other.isWrapped;
}

BoundedLabel::Content BoundedLabel::content() const
{
    return {text(),   font(),       contentsMargins(), minimumSize(), margin(),
            indent(), frameWidth(), alignment(),       wordWrap()};
}

QSize BoundedLabel::minimumSizeHint() const
{
    return QLabel::minimumSizeHint().boundedTo(screen()->availableSize());
}

int BoundedLabel::heightForWidth(int width) const
{
    const bool isPlain = textFormat() == Qt::PlainText && !text().isEmpty();
    const int height = isPlain ? keptHeight(width) : QLabel::heightForWidth(width);
    return qMin(height, screen()->availableSize().height());
}

/// What a layout has asked for anyway.
QMap<int, int> BoundedLabel::atHints() const
{
    const QSize best = QLabel::sizeHint();
    return {{best.width(), best.height()}, {QWIDGETSIZE_MAX, QLabel::minimumSizeHint().height()}};
}

/// The wider the label, the fewer its lines: between two widths with one height it is that height.
int BoundedLabel::keptHeight(int width) const
{
    Content now = content();
    if (!(now == m_measured)) {
        m_measured = std::move(now);
        m_heights = atHints();
    }
    const auto wider = qAsConst(m_heights).lowerBound(width);
    const bool isBetween =
        wider != m_heights.cend() && wider != m_heights.cbegin() && *wider == *std::prev(wider);
    if (isBetween || (wider != m_heights.cend() && wider.key() == width)) {
        return *wider;
    }
    if (m_heights.size() >= kMostKept) {
        m_heights = atHints();
    }
    const int height = QLabel::heightForWidth(width);
    m_heights.insert(width, height);
    return height;
}
