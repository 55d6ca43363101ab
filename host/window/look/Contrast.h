// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QHash>
#include <QObject>

class QLabel;

namespace norvo {

constexpr double kReadable = 4.5; ///< The least contrast of a text to its ground.

/// From 1 to 21, as the guidelines for accessible contents define it.
double contrast(const QColor& a, const QColor& b);

/// Gives a label whose own style sheet sets a ground and no colour a text that reads on it, and
/// does so again after each change of that style sheet. One can watch any number of labels.
class ContrastGuard : public QObject
{
    Q_OBJECT

public:
    void watch(QLabel& label);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeReadable(QLabel& label);

    QHash<QString, QColor> m_texts; ///< What reads on it, by style sheet; invalid: it needs none.
};

} // namespace norvo
