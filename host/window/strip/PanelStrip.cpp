// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/strip/PanelStrip.h"

#include "host/window/look/TouchSize.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QScreen>

namespace norvo {

namespace {

constexpr int kGap = 6;    // pixels, between two parts
constexpr int kMargin = 8; // pixels, on both sides

} // namespace

PanelStrip::PanelStrip(QWidget* parent) : QWidget(parent), m_parts(new QHBoxLayout(this))
{
    m_parts->setContentsMargins(kMargin, 0, kMargin, 0);
    m_parts->setSpacing(kGap);
    m_parts->setAlignment(Qt::AlignRight); // Where no part takes the rest of the width.
    setTouch(PanelLook::Touch::Fingers);
    hide();
}

void PanelStrip::setTouch(PanelLook::Touch touch)
{
    setFixedHeight(TouchSize::pixels(touch, *screen()));
}

void PanelStrip::addPart(QWidget* part, int stretch)
{
    // What was never shown is hidden as well; only what somebody has hidden stays so.
    const bool isHidden = part->isHidden() && part->testAttribute(Qt::WA_WState_ExplicitShowHide);
    m_parts->insertWidget(stretch > 0 ? 0 : m_parts->count(), part, stretch);
    part->setVisible(!isHidden);
    part->installEventFilter(this);
    followParts();
}

bool PanelStrip::eventFilter(QObject* part, QEvent* event)
{
    if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent) {
        followParts();
    }
    return QWidget::eventFilter(part, event);
}

void PanelStrip::followParts()
{
    bool isAnySeen = false;
    for (int i = 0; i < m_parts->count(); ++i) {
        isAnySeen = isAnySeen || !m_parts->itemAt(i)->widget()->isHidden();
    }
    setVisible(isAnySeen);
}

} // namespace norvo
