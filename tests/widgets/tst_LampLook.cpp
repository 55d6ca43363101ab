// SPDX-License-Identifier: GPL-3.0-or-later

#include "Stand.h"

#include "devices/IndicatorDevice.h"
#include "widgets/LampWidget.h"
#include "TestMain.h"

#include <QtTest>

namespace {

QString sheet(const QString& background, const QString& text)
{
    return QString("QLabel { background-color : %1; color : %2; border: 1px solid #222222; "
                   "border-radius: 5px; }")
        .arg(background, text);
}

} // namespace

class tst_LampLook : public QObject
{
    Q_OBJECT

private slots:
    void captionIsShown_data();
    void captionIsShown();
    void emptyCaptionShowsTheObjectName();
    void lampLooksAsItsParametersSay();
    void colourSheetsAreVerbatim_data();
    void colourSheetsAreVerbatim();
    void unknownColourKeepsThePlainLook_data();
    void unknownColourKeepsThePlainLook();
    void unknownColourAfterAKnownOneIsPlainToo();
    void plateIsPaintedInItsColour_data();
    void plateIsPaintedInItsColour();
    void setFontSizeChangesOnlyTheFont();
};

void tst_LampLook::captionIsShown_data()
{
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << "Pump"
                           << "Pump";
    QTest::newRow("backslash n breaks the line") << "Pump\\non"
                                                 << "Pump\non";
    QTest::newRow("every backslash n") << "\\na\\n\\nb"
                                       << "\na\n\nb";
    QTest::newRow("backslash N stays") << "a\\Nb"
                                       << "a\\Nb";
}

void tst_LampLook::captionIsShown()
{
    QFETCH(QString, caption);
    QFETCH(QString, shown);
    Stand<IndicatorDevice> stand({{"widget/caption", caption}});
    QVERIFY(stand.only<QLabel>());
    QCOMPARE(stand.only<QLabel>()->text(), shown);
}

void tst_LampLook::emptyCaptionShowsTheObjectName()
{
    Stand<IndicatorDevice> stand;
    QCOMPARE(stand.only<QLabel>()->text(), QString("device"));
    QCOMPARE(stand.device.getParam("widget/caption").value(), QString("device"));
}

void tst_LampLook::lampLooksAsItsParametersSay()
{
    Stand<IndicatorDevice> stand({{"widget/fontSize", "27"}});
    auto* const lamp = stand.only<QLabel>();
    QCOMPARE(lamp->font().family(), QString("Arial"));
    QCOMPARE(lamp->font().pointSize(), 27);
    QCOMPARE(lamp->font().weight(), 50);
    QVERIFY(!lamp->font().italic());
    QCOMPARE(lamp->alignment(), Qt::AlignHCenter | Qt::AlignVCenter);
    QCOMPARE(stand.widget->getLayout()->itemAtPosition(0, 0)->widget(), lamp);
}

void tst_LampLook::colourSheetsAreVerbatim_data()
{
    QTest::addColumn<QString>("color");
    QTest::addColumn<QString>("lit");
    QTest::addColumn<QString>("dark");
    QTest::newRow("green") << "green" << sheet("green", "white") << sheet("#2e4e18", "gray");
    QTest::newRow("red") << "red" << sheet("red", "white") << sheet("#420000", "gray");
    QTest::newRow("yellow") << "yellow" << sheet("#e5e500", "black") << sheet("#8d6b0f ", "gray");
}

void tst_LampLook::colourSheetsAreVerbatim()
{
    QFETCH(QString, color);
    QFETCH(QString, lit);
    QFETCH(QString, dark);
    Stand<IndicatorDevice> stand({{"widget/color", color}});
    auto* const lamp = stand.only<QLabel>();
    QCOMPARE(lamp->styleSheet(), dark);
    stand.device.input(true);
    QCOMPARE(lamp->styleSheet(), lit);
    stand.device.input(true);
    QCOMPARE(lamp->styleSheet(), lit);
    stand.device.input(false);
    QCOMPARE(lamp->styleSheet(), dark);
}

void tst_LampLook::unknownColourKeepsThePlainLook_data()
{
    QTest::addColumn<QString>("color");
    QTest::newRow("capital G") << "Green";
    QTest::newRow("blue") << "blue";
    QTest::newRow("empty") << "";
}

void tst_LampLook::unknownColourKeepsThePlainLook()
{
    QFETCH(QString, color);
    Stand<IndicatorDevice> stand({{"widget/color", color}});
    QCOMPARE(stand.only<QLabel>()->styleSheet(), QString());
    stand.device.input(true);
    QCOMPARE(stand.only<QLabel>()->styleSheet(), QString());
}

void tst_LampLook::plateIsPaintedInItsColour_data()
{
    QTest::addColumn<QString>("color");
    QTest::addColumn<QColor>("lit");
    QTest::addColumn<QColor>("dark");
    QTest::newRow("green") << "green" << QColor("green") << QColor("#2e4e18");
    QTest::newRow("red") << "red" << QColor("red") << QColor("#420000");
    QTest::newRow("yellow") << "yellow" << QColor("#e5e500") << QColor("#8d6b0f");
}

void tst_LampLook::plateIsPaintedInItsColour()
{
    QFETCH(QString, color);
    QFETCH(QColor, lit);
    QFETCH(QColor, dark);
    Stand<IndicatorDevice> stand({{"widget/color", color}, {"widget/caption", "x"}});
    stand.widget->resize(200, 60);
    stand.widget->show();
    const QPoint besideTheCaption(20, 30);
    QCOMPARE(stand.widget->grab().toImage().pixelColor(besideTheCaption), dark);
    stand.device.input(true);
    QCOMPARE(stand.widget->grab().toImage().pixelColor(besideTheCaption), lit);
}

void tst_LampLook::setFontSizeChangesOnlyTheFont()
{
    Stand<IndicatorDevice> stand;
    auto* const lamp = stand.only<QLabel>();
    lamp->setFont(QFont("Courier", 9, QFont::Bold, true));
    qobject_cast<LampWidget*>(stand.widget.get())->setFontSize(41);
    QCOMPARE(lamp->font().family(), QString("Arial"));
    QCOMPARE(lamp->font().pointSize(), 41);
    QCOMPARE(lamp->font().weight(), 50);
    QVERIFY(!lamp->font().italic());
    QCOMPARE(lamp->styleSheet(), sheet("#2e4e18", "gray"));
}

void tst_LampLook::unknownColourAfterAKnownOneIsPlainToo()
{
    Stand<IndicatorDevice> stand({{"widget/color", "red"}});
    stand.device.setParam("widget/color", "blue");
    stand.widget->initialise();
    stand.device.input(true);
    QCOMPARE(stand.only<QLabel>()->styleSheet(), QString());
}

NORVO_TEST(tst_LampLook)
#include "tst_LampLook.moc"
