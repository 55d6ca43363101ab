// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlotCurve.h"
#include "widgets/PlotView.h"
#include "TestMain.h"

#include <QtTest>

#include <ctime>

namespace plot = norvo::plot;

using Prepare = void (*)(QCustomPlot&);
Q_DECLARE_METATYPE(Prepare)

class tst_PlotLists : public QObject
{
    Q_OBJECT

private slots:
    void whatCameFollowsOnWhatWasThere();
    void curvesStandWhereTheLibraryPutsThem_data();
    void curvesStandWhereTheLibraryPutsThem();
    void curvesCostTheSameHoweverManyThereAre();

private:
    static QString withPlaces(const QObjectList& objects, const QCustomPlot& plot)
    {
        QStringList texts;
        for (const QObject* object : objects) {
            texts.append(QString("%1 %2 of %3")
                             .arg(object->metaObject()->className())
                             .arg(plot.children().indexOf(const_cast<QObject*>(object)))
                             .arg(object->parent()->metaObject()->className()));
        }
        return texts.join(", ");
    }

    template <class Part>
    static QObjectList objects(const QList<Part*>& parts)
    {
        return {parts.begin(), parts.end()};
    }

    /// Every list that a curve comes into, and its order.
    static QStringList listsOf(QCustomPlot& plot)
    {
        QStringList lists{withPlaces(plot.children(), plot)};
        QList<QCPAbstractPlottable*> plottables;
        for (int i = 0; i < plot.plottableCount(); ++i) {
            plottables.append(plot.plottable(i));
        }
        QList<QCPGraph*> graphs;
        for (int i = 0; i < plot.graphCount(); ++i) {
            graphs.append(plot.graph(i));
        }
        lists << withPlaces(objects(plottables), plot) << withPlaces(objects(graphs), plot);
        for (int i = 0; i < plot.layerCount(); ++i) {
            lists << plot.layer(i)->name() + ": " +
                         withPlaces(objects(plot.layer(i)->children()), plot);
        }
        const QCPLegend& legend = *plot.legend;
        QList<QCPAbstractPlottable*> named;
        for (int i = 0; i < legend.elementCount(); ++i) {
            if (auto* item = qobject_cast<QCPPlottableLegendItem*>(legend.elementAt(i))) {
                named.append(item->plottable());
            }
        }
        lists << withPlaces(objects(named), plot) << withPlaces(legend.children(), plot);
        for (double factor : legend.rowStretchFactors() + legend.columnStretchFactors()) {
            lists << QString::number(factor);
        }
        return lists;
    }
};

void tst_PlotLists::whatCameFollowsOnWhatWasThere()
{
    QList<int> list{1, 2};
    {
        const plot::SetAside outer(list);
        QCOMPARE(list, QList<int>());
        list << 3;
        const plot::SetAside inner(list);
        QCOMPARE(list, QList<int>());
        list << 4 << 5;
    }
    QCOMPARE(list, QList<int>({1, 2, 3, 4, 5}));
}

void tst_PlotLists::curvesStandWhereTheLibraryPutsThem_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::newRow("empty plot") << Prepare([](QCustomPlot&) {});
    QTest::newRow("after another kind of curve") << Prepare([](QCustomPlot& plot) {
        new QCPCurve(plot.xAxis, plot.yAxis);
        plot.addGraph();
    });
    QTest::newRow("after one that was removed") << Prepare([](QCustomPlot& plot) {
        plot.addGraph();
        plot.addGraph();
        plot.removeGraph(0);
    });
    QTest::newRow("on the legend's layer")
        << Prepare([](QCustomPlot& plot) { plot.setCurrentLayer("legend"); });
    QTest::newRow("legend on another layer")
        << Prepare([](QCustomPlot& plot) { plot.legend->setLayer(QString("overlay")); });
}

void tst_PlotLists::curvesStandWhereTheLibraryPutsThem()
{
    QFETCH(Prepare, prepare);
    QCustomPlot bare;
    QCustomPlot plot;
    prepare(bare);
    prepare(plot);
    for (int i = 0; i < 3; ++i) {
        bare.addGraph();
        PlotCurve::addTo(&plot);
        QCOMPARE(listsOf(plot), listsOf(bare));
    }
    bare.removeGraph(0);
    plot.removeGraph(0);
    bare.addGraph();
    PlotCurve::addTo(&plot);
    QCOMPARE(listsOf(plot), listsOf(bare));
}

void tst_PlotLists::curvesCostTheSameHoweverManyThereAre()
{
    const auto processorTime = [](int curves) {
        const std::clock_t start = std::clock();
        {
            PlotView view({false, plot::kReplotQueued});
            for (int i = 0; i < curves; ++i) {
                PlotCurve::addTo(&view);
            }
        }
        return double(std::clock() - start);
    };
    constexpr int times = 25;
    const double few = processorTime(2000);
    const double many = processorTime(2000 * times);
    QVERIFY2(many < 4 * times * few, qPrintable(QString::number(many / few)));
}

NORVO_TEST(tst_PlotLists)
#include "tst_PlotLists.moc"
