// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/PanelPages.h"

#include "host/window/ErrorTile.h"
#include "host/panel/plan/Placement.h"
#include "host/window/layout/PageGrid.h"
#include "TestMain.h"

#include <QGridLayout>
#include <QLabel>
#include <QPointer>
#include <QScrollArea>
#include <QTabWidget>
#include <QTextDocument>
#include <QtTest>

#include <cmath>

using norvo::ErrorTile;
using norvo::PanelPages;

namespace {

double luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

/// As reading guidelines define it; 4.5 is needed for text.
double contrast(const QColor& a, const QColor& b)
{
    const double high = qMax(luminance(a), luminance(b));
    const double low = qMin(luminance(a), luminance(b));
    return (high + 0.05) / (low + 0.05);
}

QWidget* pageOf(const QTabWidget& tabs, int index)
{
    return qobject_cast<QScrollArea*>(tabs.widget(index))->widget();
}

} // namespace

class tst_PanelPages : public QObject
{
    Q_OBJECT

private slots:
    void withoutAreasThereIsOneGridAndNoTab();
    void eachAreaIsATab();
    void newAreasLeaveThePageThatIsShown();
    void newAreasKeepWidgetsAndDropTiles();
    void tileBreaksItsTextIntoLines();
    void widgetsCoverTheirCells();
    void tileShowsIdAndError();
    void tileIsNoHigherThanItsText();
    void tipOfATileShowsTheErrorVerbatim_data();
    void tipOfATileShowsTheErrorVerbatim();
    void tileIsLegible_data();
    void tileIsLegible();
};

void tst_PanelPages::withoutAreasThereIsOneGridAndNoTab()
{
    PanelPages pages;
    pages.setAreas({});
    QVERIFY(!pages.findChild<QTabWidget*>());
    QVERIFY(pages.grid(""));
}

void tst_PanelPages::eachAreaIsATab()
{
    PanelPages pages;
    pages.setAreas({"Motors", "Heat & air"});
    auto* tabs = pages.findChild<QTabWidget*>();
    QVERIFY(tabs);
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->tabText(0), "Motors");
    QCOMPARE(tabs->tabText(1), "Heat && air"); // a single one would be a mnemonic
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(pages.grid("Motors")->parentWidget(), pageOf(*tabs, 0));
    QCOMPARE(pages.grid("Heat & air")->parentWidget(), pageOf(*tabs, 1));
    QVERIFY(!pages.grid("motors"));
}

void tst_PanelPages::newAreasLeaveThePageThatIsShown()
{
    const auto shownPage = [](const PanelPages& pages) {
        const auto* const tabs = pages.findChild<QTabWidget*>();
        return tabs->tabText(tabs->currentIndex());
    };
    PanelPages pages;
    pages.setAreas({"Motors", "Air"});
    pages.findChild<QTabWidget*>()->setCurrentIndex(1);
    pages.setAreas({"Doors", "Motors", "Air"});
    QCOMPARE(shownPage(pages), "Air");
    pages.setAreas({"Doors", "Motors"}); // Its place is taken by the one before.
    QCOMPARE(shownPage(pages), "Motors");
    pages.setAreas({"Doors", "Engines", "Air"}); // Or by the one that it may have become.
    QCOMPARE(shownPage(pages), "Engines");
}

void tst_PanelPages::newAreasKeepWidgetsAndDropTiles()
{
    PanelPages pages;
    pages.setAreas({"Motors"});
    const QPointer<QWidget> widget = new QWidget;
    pages.place(widget, {"Motors", 0, 0, 1, 1});
    pages.placeError("pump", "no reason given", {"Motors", 1, 0, 1, 1});
    QCOMPARE(pages.findChildren<ErrorTile*>().size(), 1);
    pages.setAreas({"Air"});
    QVERIFY(widget);
    QCOMPARE(widget->parentWidget(), &pages);
    QCOMPARE(pages.findChildren<ErrorTile*>().size(), 0);
}

void tst_PanelPages::tileBreaksItsTextIntoLines()
{
    const ErrorTile tile("pump", QString("the device gives no reason ").repeated(20));
    QVERIFY2(tile.minimumSizeHint().width() < 300,
             qPrintable(QString::number(tile.minimumSizeHint().width())));
    QVERIFY(tile.heightForWidth(300) > tile.heightForWidth(900));
}

void tst_PanelPages::widgetsCoverTheirCells()
{
    PanelPages pages;
    pages.setAreas({});
    auto* widget = new QWidget;
    pages.place(widget, {"", 2, 1, 3, 4});

    int row, column, rowspan, colspan;
    QCOMPARE(pages.grid("")->indexOf(widget), 0);
    pages.grid("")->getItemPosition(0, &row, &column, &rowspan, &colspan);
    QCOMPARE(row, 2);
    QCOMPARE(column, 1);
    QCOMPARE(rowspan, 3);
    QCOMPARE(colspan, 4);
}

void tst_PanelPages::tileShowsIdAndError()
{
    const ErrorTile tile("pump", "no <such> file\nand more");
    QCOMPARE(tile.objectName(), "pump");
    const auto labels = tile.findChildren<QLabel*>();
    QCOMPARE(labels.size(), 3);
    QVERIFY(labels[2]->text().contains("start the panel again"));
    QCOMPARE(labels[0]->text(), "pump");
    QVERIFY(labels[0]->font().bold());
    QCOMPARE(labels[1]->text(), "no <such> file\nand more");
    QCOMPARE(labels[1]->textFormat(), Qt::PlainText);
    QVERIFY(labels[1]->wordWrap());
}

void tst_PanelPages::tileIsNoHigherThanItsText()
{
    PanelPages pages;
    pages.setAreas({});
    pages.placeError("pump", "no reason given", {"", 0, 0, 1, 1});
    pages.placeError("valve", QString(" word").repeated(60), {"", 1, 0, 1, 1});
    pages.resize(500, 900);
    pages.show();
    QVERIFY(QTest::qWaitForWindowExposed(&pages));
    for (const ErrorTile* tile : pages.findChildren<ErrorTile*>()) {
        QVERIFY(tile->height() <= tile->heightForWidth(tile->width()));
        for (const QLabel* label : tile->findChildren<QLabel*>()) {
            QVERIFY(label->height() >= label->heightForWidth(label->width()));
        }
    }
}

void tst_PanelPages::tipOfATileShowsTheErrorVerbatim_data()
{
    QTest::addColumn<QString>("error");
    QTest::newRow("lines") << "no <such> file\nand more";
    QTest::newRow("marks") << "no <b>such</b> file";
    QTest::newRow("quotes") << "unknown device type \"pmup\"";
    QTest::newRow("entity") << "heat & air, &amp; more";
}

void tst_PanelPages::tipOfATileShowsTheErrorVerbatim()
{
    QFETCH(QString, error);
    const QString tip = ErrorTile("pump", error).toolTip();
    QTextDocument shown; // A tip takes for marked text what looks like it.
    Qt::mightBeRichText(tip) ? shown.setHtml(tip) : shown.setPlainText(tip);
    QCOMPARE(shown.toPlainText(), error);
}

void tst_PanelPages::tileIsLegible_data()
{
    QTest::addColumn<QColor>("window");
    QTest::addColumn<QColor>("text");
    QTest::newRow("onALightPanel") << QColor("#efefef") << QColor("#000000");
    QTest::newRow("onADarkPanel") << QColor("#202020") << QColor("#ffffff");
}

void tst_PanelPages::tileIsLegible()
{
    QFETCH(QColor, window);
    QFETCH(QColor, text);
    const QPalette before = QApplication::palette();
    QApplication::setPalette(
        QPalette(text, window, window, window, window, text, text, window, window));
    const auto restore = qScopeGuard([&before] { QApplication::setPalette(before); });
    QWidget panel;
    panel.resize(300, 200);
    auto* tile = new ErrorTile("pump", "MMMMMMMM", &panel);
    tile->setGeometry(20, 20, 260, 160);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));

    const QImage image = panel.grab().toImage();
    const QColor background = image.pixelColor(270, 170); // within the tile, clear of text
    const QColor border = image.pixelColor(150, 20);
    QVERIFY(contrast(background, border) > 3);
    QVERIFY(contrast(border, window) > 2);

    // The darkest and the lightest pixel of the error's text.
    const QLabel* error = tile->findChildren<QLabel*>()[1];
    const QRect area(error->mapTo(&panel, QPoint(0, 0)), error->size());
    double best = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            best = qMax(best, contrast(background, image.pixelColor(x, y)));
        }
    }
    QVERIFY2(best > 7, qPrintable(QString::number(best)));
}

NORVO_TEST(tst_PanelPages)
#include "tst_PanelPages.moc"
