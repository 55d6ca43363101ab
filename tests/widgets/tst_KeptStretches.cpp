// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/KeptStretches.h"
#include "TestMain.h"

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <random>

namespace plot = norvo::plot;

/// What is kept of points that come and go, against the points themselves.
class tst_KeptStretches : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void followsWhatComesAndGoes();
    void beginsAnewWithAnotherWidth();
    void staysWithAWidthThatDiffersInItsLastDigits();
    void forgetsPointsThatAreAllGone();

private:
    static constexpr double kWidth = 50;

    void add(int count)
    {
        for (int i = 0; i < count; ++i) {
            m_key += m_steps(m_random);
            m_points.add(QCPGraphData(m_key, m_heights(m_random)));
            m_blocks.pointAdded(m_points.constBegin());
        }
    }

    void drop(int count)
    {
        const auto first = m_points.constBegin() + qMin(count, m_points.size() - 1);
        const int before = m_points.size();
        m_points.removeBefore(first->key);
        m_blocks.pointsDropped(before - m_points.size());
    }

    /// The first thing that is wrong with the parts, or nothing.
    QString fault(double width)
    {
        auto point = m_points.constBegin();
        double partBefore = 0;
        for (const auto& part : m_kept.update(point, m_blocks, width)) {
            const plot::Stretch& stretch = part.stretch;
            const auto last = point + (stretch.count - 1);
            if (stretch.count < 1 || last >= m_points.constEnd()) {
                return "points that there are not";
            }
            if (stretch.firstKey != point->key || part.firstValue != point->value ||
                stretch.lastKey != last->key || part.lastValue != last->value) {
                return "other ends";
            }
            const auto [least, greatest] = std::minmax_element(
                point, last + 1, [](const auto& a, const auto& b) { return a.value < b.value; });
            if (stretch.least != least->value || stretch.greatest != greatest->value) {
                return "other heights";
            }
            if (std::floor(last->key / width - 0.25) > std::floor(point->key / width)) {
                return "too long";
            }
            if (std::floor(point->key / width) <= partBefore) {
                return "two of one part";
            }
            // Of the first one, what reached into the next part may be all that is left.
            if (point != m_points.constBegin()) {
                partBefore = std::floor(point->key / width);
            }
            point = last + 1;
        }
        return point == m_points.constEnd() ? QString() : "points are missing";
    }

    std::mt19937 m_random;
    std::uniform_real_distribution<double> m_steps{0.0, 2.0};
    std::uniform_real_distribution<double> m_heights{-1.0, 1.0};
    QCPGraphDataContainer m_points;
    plot::PointBlocks m_blocks;
    plot::KeptStretches m_kept;
    double m_key = 0;
};

void tst_KeptStretches::init()
{
    m_random.seed(1);
    m_points.clear();
    m_blocks.clear();
    m_kept.clear();
    m_key = 1.79e9;
}

void tst_KeptStretches::followsWhatComesAndGoes()
{
    QCOMPARE(fault(kWidth), QString());
    std::uniform_int_distribution<int> some(0, 300);
    for (int i = 0; i < 300; ++i) {
        add(1 + some(m_random));
        drop(some(m_random));
        QCOMPARE(fault(kWidth), QString());
    }
}

void tst_KeptStretches::beginsAnewWithAnotherWidth()
{
    add(5000);
    QCOMPARE(fault(kWidth), QString());
    const auto parts = m_kept.update(m_points.constBegin(), m_blocks, kWidth).size();
    QCOMPARE(fault(kWidth / 2), QString());
    QVERIFY(m_kept.update(m_points.constBegin(), m_blocks, kWidth / 2).size() > parts * 3 / 2);
}

void tst_KeptStretches::staysWithAWidthThatDiffersInItsLastDigits()
{
    add(5000);
    const auto kept = m_kept.update(m_points.constBegin(), m_blocks, kWidth);
    // So far from 0, these digits would move each part by a third of its width.
    const auto& parts = m_kept.update(m_points.constBegin(), m_blocks, kWidth * (1 + 1e-8));
    QCOMPARE(parts.size(), kept.size());
    for (size_t i = 0; i < kept.size(); ++i) {
        QCOMPARE(parts[i].stretch.firstKey, kept[i].stretch.firstKey);
    }
}

void tst_KeptStretches::forgetsPointsThatAreAllGone()
{
    add(1000);
    QCOMPARE(fault(kWidth), QString());
    m_blocks.pointsDropped(m_points.size());
    m_points.clear();
    QCOMPARE(fault(kWidth), QString());
    add(1000);
    QCOMPARE(fault(kWidth), QString());
}

NORVO_TEST(tst_KeptStretches)
#include "tst_KeptStretches.moc"
