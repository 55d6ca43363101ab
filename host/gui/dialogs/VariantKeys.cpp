// SPDX-License-Identifier: LGPL-3.0-or-later

#include "host/gui/dialogs/VariantKeys.h"

#include "host/gui/dialogs/TouchKey.h"

#include <QMouseEvent>

namespace norvo {

VariantKeys::VariantKeys(QWidget& dialog) : QWidget(&dialog)
{
    setObjectName("variants");
    hide();
    m_hold.setSingleShot(true);
    m_hold.setInterval(kHoldMs);
    connect(&m_hold, &QTimer::timeout, this, &VariantKeys::open);
}

void VariantKeys::watch(TouchKey& key, const Variants& variants, const Pick& pick)
{
    m_offers.insert(&key, {variants, pick});
    key.installEventFilter(this);
}

void VariantKeys::open()
{
    m_shown = m_offers.value(m_held).variants();
    if (m_shown.isEmpty()) {
        return;
    }
    qDeleteAll(m_row);
    m_row.clear();
    setGeometry(parentWidget()->rect());
    const QVector<QRect> places = placesFor(m_shown.size());
    for (const QRect& place : places) {
        const QString variant = m_shown[m_row.size()];
        auto* const key = new TouchKey(QString("variant%1").arg(m_row.size()), variant);
        key->setParent(this);
        key->setGeometry(place);
        connect(key, &QPushButton::clicked, this, [this, variant] { pick(variant); });
        m_row.append(key);
    }
    raise();
    show();
}

/// Row by row above the held key, and round it where there is no room above: the finger is on it.
QVector<QRect> VariantKeys::placesFor(int count) const
{
    constexpr int spacing = 4;
    const QRect held(m_held->mapTo(parentWidget(), QPoint()), m_held->size());
    const QRect finger = held.adjusted(0, held.height() / 4, 0, 0);
    const QSize size(qMin(held.width(), held.height()), held.height());
    const QSize step = size + QSize(spacing, spacing);
    const int inRow = qBound(1, width() / step.width(), count);
    const int rows = (count + inRow - 1) / inRow;
    const int middle = held.center().x() - inRow * step.width() / 2;
    const QPoint corner(qBound(0, middle, qMax(0, width() - inRow * step.width())),
                        qMax(0, held.top() - rows * step.height()));
    QVector<QRect> places;
    for (int i = 0; places.size() < count; ++i) {
        const QPoint moved(i % inRow * step.width(), i / inRow * step.height());
        const QRect place(corner + moved, size);
        if (!place.intersects(finger)) {
            places.append(place);
        }
    }
    return places;
}

void VariantKeys::pick(const QString& variant)
{
    hide();
    m_offers.value(m_held).pick(variant);
}

/// The finger that held the letter is still down, or has just lifted.
bool VariantKeys::slide(const QPoint& globalPlace, bool isLifted)
{
    for (int i = 0; i < m_row.size(); ++i) {
        const bool isUnder = m_row[i]->rect().contains(m_row[i]->mapFromGlobal(globalPlace));
        m_row[i]->setDown(isUnder && !isLifted);
        if (isUnder && isLifted) {
            pick(m_shown[i]);
            break;
        }
    }
    return true;
}

static QPoint placeOf(const QEvent* mouse)
{
    return static_cast<const QMouseEvent*>(mouse)->globalPos();
}

bool VariantKeys::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        m_held = static_cast<TouchKey*>(watched);
        m_hold.start();
        return false;
    case QEvent::MouseMove:
        return isVisible() && slide(placeOf(event), false);
    case QEvent::MouseButtonRelease:
        m_hold.stop();
        if (isVisible()) {
            m_held->setDown(false); // the letter itself is not typed
            return slide(placeOf(event), true);
        }
        return false;
    default:
        return false;
    }
}

void VariantKeys::mousePressEvent(QMouseEvent*)
{
    hide();
}

} // namespace norvo
