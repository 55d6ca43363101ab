// SPDX-License-Identifier: GPL-3.0-or-later

#include "widgets/PlotCurve.h"
#include "widgets/PlotView.h"
#include "TestMain.h"

#include <QtTest>

namespace {

/// A legend alone on white, with black letters.
QImage drawn(QCustomPlot& plot)
{
    for (QCPAxis* axis : plot.axisRect()->axes()) {
        axis->setVisible(false);
        axis->grid()->setVisible(false);
    }
    plot.setBackground(Qt::white);
    plot.legend->setBrush(Qt::NoBrush);
    plot.legend->setBorderPen(Qt::NoPen);
    plot.legend->setTextColor(Qt::black);
    plot.legend->setVisible(true);
    plot.resize(500, 300);
    plot.replot();
    return plot.toPixmap(500, 300).toImage();
}

/// Rows in which there is anything but white.
int inkedRows(const QImage& picture)
{
    int rows = 0;
    for (int y = 0; y < picture.height(); ++y) {
        bool isWhite = true;
        for (int x = 0; x < picture.width(); ++x) {
            isWhite = isWhite && picture.pixelColor(x, y) == Qt::white;
        }
        rows += isWhite ? 0 : 1;
    }
    return rows;
}

QImage textAlone(const QString& text, const QFont& font)
{
    QImage picture(500, 300, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setFont(font);
    painter.drawText(20, 100, text);
    return picture;
}

} // namespace

class tst_LegendEntry : public QObject
{
    Q_OBJECT

private slots:
    void takesTheRoomOfTheLibrarysOwn_data();
    void takesTheRoomOfTheLibrarysOwn();
    void lettersAreDrawnDownToTheirLastRow();
    void newNameAndFontAreShown();
    void curveIsShownBesideItsName();
};

void tst_LegendEntry::takesTheRoomOfTheLibrarysOwn_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a word") << "Level";
    QTest::newRow("without") << "";
    QTest::newRow("two lines") << "Level\nof the tank";
    QTest::newRow("another script") << QString::fromUtf8("Уровень ёмкости");
}

void tst_LegendEntry::takesTheRoomOfTheLibrarysOwn()
{
    QFETCH(QString, name);
    PlotView ours({false, norvo::plot::kReplotHint});
    PlotCurve::addTo(&ours)->setName(name);
    QCustomPlot other;
    other.addGraph()->setName(name);
    drawn(ours);
    drawn(other);
    QCOMPARE(ours.legend->item(0)->outerRect().size(), other.legend->item(0)->outerRect().size());
    QCOMPARE(ours.legend->outerRect().size(), other.legend->outerRect().size());
}

void tst_LegendEntry::lettersAreDrawnDownToTheirLastRow()
{
    PlotView plot({false, norvo::plot::kReplotHint});
    auto* const curve = PlotCurve::addTo(&plot);
    curve->setName("gjpqy");
    curve->setPen(Qt::NoPen);
    const QFont font("Arial", 24);
    plot.legend->setFont(font);
    QCOMPARE(inkedRows(drawn(plot)), inkedRows(textAlone("gjpqy", font)));
}

void tst_LegendEntry::newNameAndFontAreShown()
{
    PlotView plot({false, norvo::plot::kReplotHint});
    auto* const curve = PlotCurve::addTo(&plot);
    curve->setName("Oil");
    const QImage first = drawn(plot);
    const int width = plot.legend->outerRect().width();
    curve->setName("Oil of the press");
    const QImage second = drawn(plot);
    QVERIFY(second != first);
    QVERIFY(plot.legend->outerRect().width() > width);
    plot.legend->item(0)->setFont(QFont("Arial", 30));
    QVERIFY(drawn(plot) != second);
    QVERIFY(plot.legend->outerRect().height() > 30);
    plot.legend->item(0)->setFont(plot.legend->font());
    curve->setName("Oil");
    QCOMPARE(drawn(plot), first);
}

void tst_LegendEntry::curveIsShownBesideItsName()
{
    PlotView plot({false, norvo::plot::kReplotHint});
    auto* const curve = PlotCurve::addTo(&plot);
    curve->setPen(QPen(QColor(200, 0, 0), 3));
    const QImage picture = drawn(plot);
    const QRect icon(plot.legend->item(0)->rect().topLeft(), plot.legend->iconSize());
    QCOMPARE(picture.pixelColor(icon.center()), QColor(200, 0, 0));
    QCOMPARE(picture.pixelColor(icon.center() + QPoint(0, 4)), QColor(Qt::white));
}

NORVO_TEST(tst_LegendEntry)
#include "tst_LegendEntry.moc"
