// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "Stand.h"

#include "devices/MultilineDevice.h"
#include "widgets/TextWidget.h"
#include "TestMain.h"

#include <QtTest>

namespace {

TextWidget& textWidget(const Stand<MultilineDevice>& stand)
{
    return *qobject_cast<TextWidget*>(stand.widget.get());
}

void show(const Stand<MultilineDevice>& stand)
{
    stand.widget->resize(400, 200);
    stand.widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(stand.widget.get()));
}

void appendNumbers(MultilineDevice& device, int count)
{
    for (int i = 0; i < count; ++i) {
        device.input(i);
    }
}

} // namespace

class tst_TextWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSlot();

    void textAreaLooksAsItsParametersSay();
    void textAreaIsEditableByHand();
    void setFontSizeChangesTheFont();

    void eachValueIsALineAtOnce_data();
    void eachValueIsALineAtOnce();
    void inputWhileNotRunningAppendsNothing();
    void destroyedTextAreaIsNoticed();

    void viewFollowsNewLines();
    void firstLineStaysVisibleWithoutScrolling_data();
    void firstLineStaysVisibleWithoutScrolling();
    void scrollEnableTakesEffectWithTheNextLine();
};

void tst_TextWidget::declaresItsSlot()
{
    QCOMPARE(methodTable(TextWidget::staticMetaObject), QStringList("slot input(QString)"));
}

void tst_TextWidget::textAreaLooksAsItsParametersSay()
{
    Stand<MultilineDevice> stand({{"widget/fontSize", "17"}});
    auto* const area = stand.only<QTextEdit>();
    QVERIFY(area);
    QCOMPARE(area->font().family(), QString("Courier"));
    QCOMPARE(area->font().pointSize(), 17);
    QCOMPARE(area->font().weight(), 50);
    QVERIFY(!area->font().italic());
    QCOMPARE(area->toPlainText(), QString());
    QCOMPARE(stand.widget->getLayout()->itemAtPosition(0, 0)->widget(), area);
}

void tst_TextWidget::textAreaIsEditableByHand()
{
    Stand<MultilineDevice> stand;
    show(stand);
    auto* const area = stand.only<QTextEdit>();
    QVERIFY(!area->isReadOnly());
    stand.device.input(1);
    QTest::mouseClick(area->viewport(), Qt::LeftButton);
    QTest::keyClicks(area, "x");
    QCOMPARE(area->toPlainText().remove('x'), QString("1"));
    QCOMPARE(area->toPlainText().size(), 2);
}

void tst_TextWidget::setFontSizeChangesTheFont()
{
    Stand<MultilineDevice> stand;
    QCOMPARE(stand.only<QTextEdit>()->font().pointSize(), 30);
    textWidget(stand).setFontSize(11);
    QCOMPARE(stand.only<QTextEdit>()->font().family(), QString("Courier"));
    QCOMPARE(stand.only<QTextEdit>()->font().pointSize(), 11);
}

void tst_TextWidget::eachValueIsALineAtOnce_data()
{
    QTest::addColumn<bool>("wasShown");
    QTest::addColumn<bool>("isShown");
    QTest::newRow("never shown") << false << false;
    QTest::newRow("visible") << true << true;
    QTest::newRow("hidden again") << true << false;
}

void tst_TextWidget::eachValueIsALineAtOnce()
{
    QFETCH(bool, wasShown);
    QFETCH(bool, isShown);
    Stand<MultilineDevice> stand;
    if (wasShown) {
        show(stand);
        stand.widget->setVisible(isShown);
    }
    auto* const area = stand.only<QTextEdit>();
    using uchar_t = unsigned char;
    stand.device.input(uchar_t(7));
    QCOMPARE(area->toPlainText(), QString("7"));
    stand.device.input(1e-7);
    QCOMPARE(area->toPlainText(), QString("7\n1e-07"));
    stand.device.input(false);
    stand.device.input(QByteArray("\x05"));
    stand.device.input(QByteArray());
    stand.device.input(QString("end"));
    QCOMPARE(area->toPlainText(), QString("7\n1e-07\nfalse\n05 \n\nend"));
    QCOMPARE(area->document()->blockCount(), 6);
}

void tst_TextWidget::inputWhileNotRunningAppendsNothing()
{
    Stand<MultilineDevice> stand;
    stand.device.setRunning(false);
    stand.device.input(7);
    stand.device.input(QString("text"));
    QCOMPARE(stand.only<QTextEdit>()->toPlainText(), QString());
}

void tst_TextWidget::destroyedTextAreaIsNoticed()
{
    Stand<MultilineDevice> stand;
    show(stand);
    stand.widget->hide();
    stand.device.input(7);
    delete stand.only<QTextEdit>();
    stand.device.input(8);
    textWidget(stand).setFontSize(8);
    textWidget(stand).scrollEnable(false);
    stand.widget->show();
    QVERIFY(stand.widget->findChildren<QTextEdit*>().isEmpty());
}

void tst_TextWidget::viewFollowsNewLines()
{
    Stand<MultilineDevice> stand;
    show(stand);
    auto* const bar = stand.only<QTextEdit>()->verticalScrollBar();
    appendNumbers(stand.device, 50);
    QVERIFY(bar->maximum() > 500);
    QCOMPARE(bar->value(), bar->maximum());
}

void tst_TextWidget::firstLineStaysVisibleWithoutScrolling_data()
{
    QTest::addColumn<bool>("isShownBefore");
    QTest::newRow("shown, then filled") << true;
    QTest::newRow("filled, then shown") << false;
}

void tst_TextWidget::firstLineStaysVisibleWithoutScrolling()
{
    QFETCH(bool, isShownBefore);
    Stand<MultilineDevice> stand({{"widget/disableScrolling", "true"}});
    if (isShownBefore) {
        show(stand);
    }
    appendNumbers(stand.device, 50);
    if (!isShownBefore) {
        show(stand);
    }
    auto* const area = stand.only<QTextEdit>();
    QVERIFY(area->verticalScrollBar()->maximum() > 500);
    QCOMPARE(area->verticalScrollBar()->value(), area->verticalScrollBar()->minimum());
    QTextCursor first(area->document());
    QVERIFY(area->viewport()->rect().contains(area->cursorRect(first).center()));
}

void tst_TextWidget::scrollEnableTakesEffectWithTheNextLine()
{
    Stand<MultilineDevice> stand;
    show(stand);
    auto* const bar = stand.only<QTextEdit>()->verticalScrollBar();
    appendNumbers(stand.device, 50);
    textWidget(stand).scrollEnable(false);
    QCOMPARE(bar->value(), bar->maximum());
    stand.device.input(1);
    QCOMPARE(bar->value(), bar->minimum());
    bar->setValue(bar->maximum());
    stand.device.input(QString("<b>marked</b>"));
    QCOMPARE(bar->value(), bar->minimum());
    textWidget(stand).scrollEnable(true);
    QCOMPARE(bar->value(), bar->minimum());
    stand.device.input(1);
    QCOMPARE(bar->value(), bar->maximum());
}

NORVO_TEST(tst_TextWidget)
#include "tst_TextWidget.moc"
