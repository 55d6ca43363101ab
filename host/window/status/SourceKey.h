// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPushButton>

namespace norvo {

class SourceWatch;

/// The key of the strip that says how many sources are well, by a mark as well: a tick, or a cross
/// where one is lost. Hidden where a panel has no sources. Opens the list of them.
class SourceKey : public QPushButton
{
    Q_OBJECT

public:
    explicit SourceKey(const SourceWatch& watch);

private:
    void refresh();
    void openList();

    const SourceWatch& m_watch;
};

} // namespace norvo
