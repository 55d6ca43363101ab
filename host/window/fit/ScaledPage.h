// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QGraphicsProxyWidget>
#include <QGraphicsView>

namespace norvo {

/// Shows a page at the size that it was designed for, drawn larger or smaller as a whole, so that
/// it fits its own size; the aspect is kept and the page stands in the middle. Texts and lines stay
/// sharp: they are drawn at the new size, not stretched.
class ScaledPage : public QGraphicsView
{
    Q_OBJECT

public:
    /// Takes the page over. A page that needs more than `design` gets what it needs.
    ScaledPage(QWidget* page, const QSize& design);

    void givePageBack(); ///< It belongs to nobody then, and this is to be deleted.

    QSize sizeHint() const override; ///< The page's, so that it is shown as it was designed.

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitPage();
    void sharpen(QWidget& part);
    void watch(QWidget& part); ///< And what it holds.

    QGraphicsScene m_scene;
    QGraphicsProxyWidget* m_proxy; ///< Of the scene; owns the page.
    double m_factor = 1;
};

} // namespace norvo
