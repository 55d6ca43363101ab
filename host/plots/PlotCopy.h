// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "host/plots/EarlierPoints.h"
#include "host/plots/PlotCalls.h"

#include <QDateTime>
#include <QPointer>
#include <QSet>
#include <QVector>

#include <optional>

namespace norvo {

class CopiedCurve;

/// Shows what another plot shows, and lets itself be looked at in other ways: stopped, zoomed,
/// moved, with curves hidden. The other plot goes on untouched.
///
/// It is live until it is held: then it keeps the points that it had, whatever the other drops.
/// What was before them is read when it is moved or zoomed beyond them, and forgotten when it is
/// live. Above kMaxPoints the newest that are not seen are dropped until then.
class PlotCopy : public QCustomPlot
{
    Q_OBJECT

public:
    static constexpr int kMaxPoints = 1000000; ///< Of all curves together, once some were read.

    /// `source` is of graphs only and may be deleted before.
    explicit PlotCopy(QCustomPlot& source, ReadEarlier readEarlier = {});

    bool isHeld() const { return m_isHeld; }
    bool areValuesFixed() const { return m_areValuesFixed; } ///< By hand.
    bool showsTimes() const { return m_showsTimes; }         ///< Else numbers from 1.
    QDateTime heldAt() const { return m_heldAt; }            ///< Valid while held.
    bool isReading() const { return m_isReading; }           ///< What was earlier.
    bool isAtBeginning() const;                              ///< Of all that was recorded.
    bool isAtUnreadable() const; ///< What was earlier could not be read; it is tried again.
    bool isAtCut() const;        ///< Later ones were dropped.

    void hold();
    void goLive();                 ///< With the other's ranges; what is hidden stays so.
    void fixValues(bool areFixed); ///< Not fixed: as the other's, again.

    /// By a part of what is seen: 1 is all of it. Holds.
    void moveKeys(double by);
    void moveValues(double by); ///< Likewise; fixes the values, and does not hold.
    /// So that `factor` times as much is seen, and `around` stays where it is.
    void zoomKeys(double factor, double around);
    void zoomValues(double factor, double around);

    bool isHidden(const QString& curve) const { return m_hidden.contains(curve); }
    void toggleCurve(const QString& curve);             ///< With all pieces of that name.
    QCPGraph* curveInLegend(const QPoint& place) const; ///< Null: none is there.
    void moveLegend(const QPoint& by);                  ///< In pixels, kept inside.

    const QCPAxisRect& area() const { return *xAxis->axisRect(); } ///< Between the axes.

signals:
    void viewChanged(); ///< Live or held, by hand or not, or another range by hand.

private:
    struct Pair
    {
        QPointer<QCPGraph> source;
        CopiedCurve* copy;
    };

    void follow();
    void followCurves();
    CopiedCurve* addCurve(const QCPGraph& source);
    void copyLook();
    void markHidden();
    void setKeys(double lower, double upper);
    void setValues(double lower, double upper);
    void want(const QCPRange& keys);
    void take(double from, const EarlierPoints& earlier);
    void dropNewest();
    QCPGraph* oldestPiece(const QString& curve) const;
    void refresh();

    const ReadEarlier m_readEarlier; ///< Null: there is none.
    QPointer<QCustomPlot> m_source;
    QVector<Pair> m_pairs;
    QSet<QString> m_hidden;
    const QString m_timeFormat; ///< Of the source's axis.
    const bool m_showsTimes;
    bool m_isHeld = false;
    bool m_areValuesFixed = false;
    double m_oldest = 0; ///< While held: the range that there is anything of.
    double m_newest = 0;
    double m_readFrom = 0;       ///< Up to where it was read.
    double m_recordBegin = 0;    ///< As far as is known.
    bool m_isUnreadable = false; ///< When it was read last.
    bool m_isCut = false;        ///< Newer ones than m_newest were dropped.
    int m_hold = 0;              ///< Number of the present one, which alone takes what is read.
    bool m_isReading = false;
    std::optional<QCPRange> m_wanted; ///< To be shown once it is read.
    QDateTime m_heldAt;
};

} // namespace norvo
