// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QKeyEvent;

namespace norvo {

class CanvasHand;
class CanvasModel;
class PageCover;

/// The keys of the covers that are no actions: Tab goes from device to device, arrows move what is
/// selected, or the cursor where nothing is; Enter puts down or opens; Escape leaves, step by step.
class CanvasKeys : public QObject
{
    Q_OBJECT

public:
    CanvasKeys(CanvasModel& model, CanvasHand& hand) : m_model(model), m_hand(hand) {}

    void watch(PageCover& cover);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void opened(); ///< The selected device, by Enter.

private:
    bool press(const PageCover& cover, const QKeyEvent& key);
    bool arrow(const PageCover& cover, const QKeyEvent& key);
    bool enter(const PageCover& cover);

    CanvasModel& m_model;
    CanvasHand& m_hand;
};

} // namespace norvo
