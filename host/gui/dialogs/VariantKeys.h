// SPDX-License-Identifier: LGPL-3.0-or-later
#pragma once

#include <QHash>
#include <QRect>
#include <QStringList>
#include <QTimer>
#include <QVector>
#include <QWidget>

#include <functional>

namespace norvo {

class TouchKey;

/// Keys with the variants of another, in rows over the key that is held for 400 ms. A tap picks
/// one, or a finger that slides onto it and lifts; a tap beside them picks none.
///
/// Covers the whole dialog, whose child it is, while they are seen.
class VariantKeys : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kHoldMs = 400;

    using Variants = std::function<QStringList()>;
    using Pick = std::function<void(const QString& variant)>;

    explicit VariantKeys(QWidget& dialog);

    /// `variants` is asked when the key is held; none leave it an ordinary key.
    void watch(TouchKey& key, const Variants& variants, const Pick& pick);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    struct Offer
    {
        Variants variants;
        Pick pick;
    };

    void open();
    QVector<QRect> placesFor(int count) const;
    void pick(const QString& variant);
    bool slide(const QPoint& globalPlace, bool isLifted);

    QTimer m_hold;
    TouchKey* m_held = nullptr;
    QHash<TouchKey*, Offer> m_offers;
    QVector<TouchKey*> m_row;
    QStringList m_shown;
};

} // namespace norvo
