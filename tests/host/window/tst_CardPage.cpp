// SPDX-License-Identifier: GPL-3.0-or-later

#include "ShownPanel.h"
#include "TestMain.h"
#include "host/window/layout/CardPage.h"
#include "host/window/layout/PageGrid.h"

#include <QScreen>

using namespace norvo;

/// The cards behind the widgets.
class tst_CardPage : public QObject
{
    Q_OBJECT

private slots:
    void partsLookAsTheWhole_data();
    void partsLookAsTheWhole();
    void cardThatMovesLeavesNothingBehind();
};

void tst_CardPage::partsLookAsTheWhole_data()
{
    QTest::addColumn<int>("side"); // Of a part, in pixels.
    QTest::newRow("of corners") << 7;
    QTest::newRow("with edges") << 23;
    QTest::newRow("larger than a card") << 300;
}

/// Whatever part of the page is drawn anew.
void tst_CardPage::partsLookAsTheWhole()
{
    QFETCH(int, side);
    const ShownPanel shown(
        "devices:\n"
        "  a: {device: output_digital, params: {widget: {row: 0, column: 0}}}\n"
        "  b: {device: output_digital, params: {widget: {row: 0, column: 1}}}\n"
        "  c: {device: output_digital, params: {widget: {row: 1, column: 0}}}\n");
    auto* const page = shown.window.page()->findChild<CardPage*>();
    QVERIFY(page);
    QPalette distinct = page->palette();
    distinct.setColor(QPalette::AlternateBase, Qt::cyan);
    page->setPalette(distinct);

    QImage whole(page->size(), QImage::Format_ARGB32_Premultiplied);
    whole.fill(Qt::transparent);
    QImage inParts = whole;
    page->render(&whole, {}, {}, QWidget::DrawWindowBackground);
    for (int y = 0; y < page->height(); y += side) {
        for (int x = 0; x < page->width(); x += side) {
            page->render(&inParts, {x, y}, QRect(x, y, side, side) & page->rect(),
                         QWidget::DrawWindowBackground);
        }
    }
    QVERIFY(whole.pixelColor(page->findChild<BaseWidget*>()->pos()) == QColor(Qt::cyan));
    QCOMPARE(inParts, whole);
}

/// Of a page on the screen, whose columns move a little.
void tst_CardPage::cardThatMovesLeavesNothingBehind()
{
    ShownPanel shown("devices:\n"
                     "  a: {device: output_digital, params: {widget: {row: 0, column: 0}}}\n"
                     "  b: {device: output_digital, params: {widget: {row: 0, column: 1}}}\n");
    const auto inWindow = [&] {
        return shown.window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    };
    const auto onScreen = [&] {
        const QPixmap seen = shown.window.screen()->grabWindow(shown.window.winId());
        return seen.toImage().convertToFormat(QImage::Format_RGB32);
    };
    QTRY_COMPARE_WITH_TIMEOUT(onScreen(), inWindow(), 60000);
    const QRect before = shown.panel.widget("b")->geometry();
    auto* const grid =
        qobject_cast<PageGrid*>(shown.window.page()->findChild<CardPage*>()->layout());
    QVERIFY(grid);
    grid->setWeights({}, {40, 41});
    QTRY_VERIFY_WITH_TIMEOUT(shown.panel.widget("b")->geometry() != before, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(onScreen(), inWindow(), 60000);
}

NORVO_TEST(tst_CardPage)
#include "tst_CardPage.moc"
