// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/frame/SidePane.h"

#include <QScrollArea>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>

namespace norvo {

namespace {

constexpr int kLeastWidth = 320; // pixels
constexpr int kMostWidth = 440;
constexpr double kShare = 0.34; // of the window
constexpr int kMargin = 6;

} // namespace

SidePane::SidePane(QWidget* parent) : QWidget(parent), m_layout(new QVBoxLayout(this))
{
    setObjectName("editorPane");
    setAutoFillBackground(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    m_layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    hide();
}

void SidePane::show(QWidget* content)
{
    if (m_content) {
        m_content->hide();
        m_content->deleteLater(); // A key of its own may have asked for this.
    }
    m_content = content;
    if (content) {
        m_layout->addWidget(content);
        content->show();
    }
    setVisible(content);
    updateGeometry();
}

void SidePane::enter(const QString& field)
{
    QWidget* const found = m_content ? m_content->findChild<QWidget*>(field) : nullptr;
    if (!found || !found->isVisible()) {
        return;
    }
    found->setFocus();
    QTimer::singleShot(0, found, [found] { // Once it has its place.
        for (QWidget* one = found; one; one = one->parentWidget()) {
            if (auto* const area = qobject_cast<QScrollArea*>(one)) {
                area->ensureWidgetVisible(found);
            }
        }
    });
}

QSize SidePane::sizeHint() const
{
    const int share = int(kShare * window()->width());
    return {std::clamp(share, kLeastWidth, kMostWidth), QWidget::sizeHint().height()};
}

} // namespace norvo
