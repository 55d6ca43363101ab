// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Harness.h"
#include "host/panel/edit/EditHistory.h"
#include "host/yaml/YamlEdit.h"

#include <QByteArray>

#include <functional>

namespace norvo {

/// Edits so many times, with `check` behind each, which gets the text before that edit; then undoes
/// them all. An edit that is refused changes nothing, and undoing gives equal bytes.
inline void editAndUndo(YamlEdit& edit, int times, const std::function<YamlEdit::Error()>& editOnce,
                        const std::function<void(const QByteArray& previous)>& check)
{
    const QByteArray start = edit.text();
    EditHistory history;
    QByteArray now = start;
    for (int i = 0; i < times; ++i) {
        const bool isRefused = editOnce().has_value();
        require(!isRefused || edit.text() == now, "an edit that is refused changes nothing");
        check(now);
        history.add("", now, edit.text());
        now = edit.text();
    }
    while (history.canUndo()) {
        now = history.undo(now);
    }
    require(now == start, "undoing gives equal bytes");
}

} // namespace norvo
