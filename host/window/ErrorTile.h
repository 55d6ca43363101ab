// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFrame>

namespace norvo {

/// Stands in the place of a device that did not start: says which, why, and what to
/// do.
class ErrorTile : public QFrame
{
    Q_OBJECT

public:
    /// `id` also becomes the object name.
    ErrorTile(const QString& id, const QString& reason, QWidget* parent = nullptr);

    const QString& reason() const { return m_reason; }

private:
    const QString m_reason;
};

} // namespace norvo
