// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QWidget;

namespace norvo {

class PanelPages;

/// Keeps from the devices of a panel all that comes from a hand, for as long as it lives; focus
/// that would go to one of them goes to the cover of its page.
class HandShield : public QObject
{
    Q_OBJECT

public:
    explicit HandShield(PanelPages& pages);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* coverOver(QWidget& widget) const;

    PanelPages& m_pages;
};

} // namespace norvo
