// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>

namespace norvo {

/// Lies over a display on its page, follows it there, and lets everything through that is meant
/// for it. Owned by the page that the display stands on, and above all that was there before.
///
/// It is raised again only when the display is: that looks through all that stands on the page.
class Overlay : public QWidget
{
    Q_OBJECT

public:
    explicit Overlay(QWidget& display);

    const QPointer<QWidget>& display() const { return m_display; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// What it covers, in the page's coordinates, where the display covers `display`.
    virtual QRect area(const QRect& display) const;
    virtual bool isWanted() const { return true; } ///< Otherwise it is hidden.
    void follow(); ///< To be called once by the constructor of the last class.

private:
    const QPointer<QWidget> m_display;
};

} // namespace norvo
