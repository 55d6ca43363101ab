#include "GaugePicture.h"
#include "Stand.h"

#include "devices/LumenoBarDevice.h"
#include "devices/OutputBarDevice.h"
#include "widgets/OutputBarLumeno.h"
#include "widgets/ValueBarWidget.h"
#include "TestMain.h"

#include <QtTest>

namespace {

void sizesAndBackgrounds(const QVector<QSize>& sizes)
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QColor>("behind");
    QTest::addColumn<double>("scale");
    const QVector<QColor> backgrounds{Qt::white, Qt::black, QColor("#7F3399")};
    for (const QSize& size : sizes) {
        for (const QColor& behind : backgrounds) {
            for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
                QTest::addRow("%d x %d on %s, scaled by %g", size.width(), size.height(),
                              qPrintable(behind.name()), scale)
                    << size << behind << scale;
            }
        }
    }
}

/// A widget that keeps its pixmap from paint to paint and one that draws all anew.
template <class Device, class Widget>
class Twins
{
public:
    Twins(const typename Stand<Device>::Params& params, const QSize& size)
        : m_kept(params), m_anew(params)
    {
        m_kept.widget->resize(size);
        m_anew.widget->resize(size);
        static_cast<Widget&>(*m_anew.widget).setCached(false);
    }

    void input(double value)
    {
        m_kept.device.input(value);
        m_anew.device.input(value);
    }
    Widget& kept() { return static_cast<Widget&>(*m_kept.widget); }
    Widget& anew() { return static_cast<Widget&>(*m_anew.widget); }
    bool alike(const QColor& behind, double scale)
    {
        return pictureOf(kept(), behind, scale) == pictureOf(anew(), behind, scale);
    }

private:
    Stand<Device> m_kept;
    Stand<Device> m_anew;
};

} // namespace

/// Whether pictures that come out of pixmaps are those that would be drawn anew.
class tst_GaugePixmaps : public QObject
{
    Q_OBJECT

private slots:
    void valueBarLooksAsDrawnAnew_data();
    void valueBarLooksAsDrawnAnew();
    void valueBarAtAnotherScaleLooksAsDrawnAnew();
    void panelLooksAsDrawnDirectly_data();
    void panelLooksAsDrawnDirectly();
    void lumenoLooksAsDrawnAnew_data();
    void lumenoLooksAsDrawnAnew();
    void lumenoScaleLooksAsDrawnDirectly_data();
    void lumenoScaleLooksAsDrawnDirectly();
    void lumenoInAnotherSizeOrColourLooksAsDrawnAnew();
};

void tst_GaugePixmaps::valueBarLooksAsDrawnAnew_data()
{
    sizesAndBackgrounds({{400, 120}, {210, 75}, {101, 61}, {37, 29}});
}

void tst_GaugePixmaps::valueBarLooksAsDrawnAnew()
{
    QFETCH(QSize, size);
    QFETCH(QColor, behind);
    QFETCH(double, scale);
    Twins<OutputBarDevice, ValueBarWidget> bars(
        {{"widget/minThreshold", "0.2"}, {"widget/precision", "1"}}, size);
    QVERIFY(bars.alike(behind, scale));
    for (const double value : {0.3, 1.0, -0.2, 1.2}) {
        bars.input(value);
        QVERIFY2(bars.alike(behind, scale), qPrintable(QString::number(value)));
    }
    bars.kept().SetThreshold(0.1, 0.4);
    bars.anew().SetThreshold(0.1, 0.4);
    QVERIFY(bars.alike(behind, scale));
}

void tst_GaugePixmaps::valueBarAtAnotherScaleLooksAsDrawnAnew()
{
    Twins<OutputBarDevice, ValueBarWidget> bars({}, {300, 100});
    for (const double scale : {1.0, 2.0, 1.0, 1.1, 3.0, 0.5}) {
        QVERIFY(bars.alike(Qt::cyan, scale));
    }
}

void tst_GaugePixmaps::panelLooksAsDrawnDirectly_data()
{
    sizesAndBackgrounds({{400, 120}, {210, 75}, {101, 61}, {37, 29}});
}

void tst_GaugePixmaps::panelLooksAsDrawnDirectly()
{
    QFETCH(QSize, size);
    QFETCH(QColor, behind);
    QFETCH(double, scale);
    Stand<OutputBarDevice> stand({{"widget/minThreshold", "0.2"}, {"widget/arrowHeight", "0"}});
    stand.widget->resize(size);
    auto& bar = static_cast<ValueBarWidget&>(*stand.widget);
    stand.device.input(qQNaN()); // No pointer.
    const QImage shown = pictureOf(bar, behind, scale);

    QImage direct(shown.size(), shown.format());
    direct.fill(behind);
    QPainter painter(&direct);
    painter.scale(scale, scale);
    bar.updateScale(painter);
    painter.end();
    QVERIFY(largestDifference(shown, direct) <= 1);
    QImage empty(shown.size(), shown.format());
    empty.fill(behind);
    QVERIFY(largestDifference(shown, empty) > 50);
}

void tst_GaugePixmaps::lumenoLooksAsDrawnAnew_data()
{
    sizesAndBackgrounds({{120, 220}, {91, 171}, {200, 400}});
}

void tst_GaugePixmaps::lumenoLooksAsDrawnAnew()
{
    QFETCH(QSize, size);
    QFETCH(QColor, behind);
    QFETCH(double, scale);
    Twins<LumenoBarDevice, OutputBarLumeno> gauges(
        {{"widget/name", "Oil\\npump"}, {"widget/units", "bar"}, {"widget/precision", "1"}}, size);
    QVERIFY(gauges.alike(behind, scale));
    gauges.input(0.4);
    QVERIFY(gauges.alike(behind, scale));
    QVERIFY(gauges.alike(behind, scale));
}

void tst_GaugePixmaps::lumenoScaleLooksAsDrawnDirectly_data()
{
    sizesAndBackgrounds({{120, 220}, {91, 171}, {200, 400}});
}

void tst_GaugePixmaps::lumenoScaleLooksAsDrawnDirectly()
{
    QFETCH(QSize, size);
    QFETCH(QColor, behind);
    QFETCH(double, scale);
    Stand<LumenoBarDevice> stand({{"widget/name", "Oil\\npump"}, {"widget/precision", "1"}});
    stand.widget->resize(size);
    QPalette palette;
    palette.setColor(QPalette::Text, QColor("#FF8800"));
    stand.widget->setPalette(palette);
    const auto& gauge = static_cast<OutputBarLumeno&>(*stand.widget);
    const QImage shown = pictureOf(*stand.widget, behind, scale);

    QImage direct(shown.size(), shown.format());
    direct.fill(behind);
    QPainter painter(&direct);
    painter.scale(scale, scale);
    gauge.drawScale(painter);
    painter.end();
    // Below the value, which is no part of the scale.
    const int top = int(40 * scale);
    const QRect below(0, top, shown.width(), shown.height() - top);
    QVERIFY(largestDifference(shown.copy(below), direct.copy(below)) <= 1);
    QImage empty(shown.size(), shown.format());
    empty.fill(behind);
    QVERIFY(largestDifference(shown.copy(below), empty.copy(below)) > 50);
}

void tst_GaugePixmaps::lumenoInAnotherSizeOrColourLooksAsDrawnAnew()
{
    Twins<LumenoBarDevice, OutputBarLumeno> gauges({{"widget/name", "Oil"}}, {120, 220});
    QVERIFY(gauges.alike(Qt::white, 1.0));
    for (const QSize& size : {QSize(140, 220), QSize(140, 260), QSize(120, 220)}) {
        gauges.kept().resize(size);
        gauges.anew().resize(size);
        QVERIFY(gauges.alike(Qt::white, 1.0));
        QVERIFY(gauges.alike(Qt::white, 2.0));
    }
    QPalette palette;
    palette.setColor(QPalette::Text, Qt::red);
    gauges.kept().setPalette(palette);
    gauges.anew().setPalette(palette);
    QVERIFY(gauges.alike(Qt::white, 2.0));
}

NORVO_TEST(tst_GaugePixmaps)
#include "tst_GaugePixmaps.moc"
