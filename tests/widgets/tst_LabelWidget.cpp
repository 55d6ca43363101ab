// SPDX-License-Identifier: GPL-3.0-or-later

#include "Declarations.h"
#include "Stand.h"

#include "devices/Label.h"
#include "widgets/LabelWidget.h"
#include "TestMain.h"

#include <QtTest>

namespace {

int redPixels(QWidget& widget)
{
    const QImage image = widget.grab().toImage();
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            count += colour.red() > 200 && colour.green() < 60 && colour.blue() < 60;
        }
    }
    return count;
}

} // namespace

class tst_LabelWidget : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSlots();

    void labelLooksAsItsParametersSay();
    void alignmentIsComparedWithCase_data();
    void alignmentIsComparedWithCase();
    void initialTextIsShown_data();
    void initialTextIsShown();
    void initialOutputReachesTheWidget();
    void lateBackslashIsShownAsItIs();
    void numbersAreShownInTheTemplate();
    void warningTurnsTheNextTextRed();
    void warningIsForgottenWhenInitialisedAgain();
    void fontIsSetAgainWithEachText();
    void nothingIsShownAfterDeinitialise();
    void textFromAWireNeverMakesTheWindowLargerThanTheScreen_data();
    void textFromAWireNeverMakesTheWindowLargerThanTheScreen();
};

void tst_LabelWidget::declaresItsSlots()
{
    QCOMPARE(methodTable(LabelWidget::staticMetaObject),
             QStringList({"slot inputWarning(bool)", "slot input(QString)"}));
}

void tst_LabelWidget::labelLooksAsItsParametersSay()
{
    Stand<Label> stand({{"widget/fontSize", "33"}});
    auto* const label = stand.only<QLabel>();
    QVERIFY(label);
    QCOMPARE(label->font().family(), QString("Arial"));
    QCOMPARE(label->font().pointSize(), 33);
    QCOMPARE(label->font().weight(), 50);
    QVERIFY(!label->font().italic());
    QVERIFY(label->wordWrap());
    QCOMPARE(stand.widget->getLayout()->itemAtPosition(0, 0)->widget(), label);
}

void tst_LabelWidget::alignmentIsComparedWithCase_data()
{
    QTest::addColumn<QString>("alignment");
    QTest::addColumn<int>("flags");
    QTest::newRow("left") << "left" << int(Qt::AlignLeft | Qt::AlignVCenter);
    QTest::newRow("right") << "right" << int(Qt::AlignRight | Qt::AlignVCenter);
    QTest::newRow("center") << "center" << int(Qt::AlignHCenter | Qt::AlignVCenter);
    QTest::newRow("capital L is centred") << "Left" << int(Qt::AlignHCenter | Qt::AlignVCenter);
    QTest::newRow("unknown is centred") << "top" << int(Qt::AlignHCenter | Qt::AlignVCenter);
}

void tst_LabelWidget::alignmentIsComparedWithCase()
{
    QFETCH(QString, alignment);
    QFETCH(int, flags);
    Stand<Label> stand({{"widget/alignment", alignment}});
    QCOMPARE(int(stand.only<QLabel>()->alignment()), flags);
}

void tst_LabelWidget::initialTextIsShown_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("shown");
    QTest::newRow("plain") << "Pump"
                           << "Pump";
    QTest::newRow("%0 is an em dash") << "%0 V" << QString(QChar(0x2014)) + " V";
    QTest::newRow("%1 stays visible") << "%1 V"
                                      << "%1 V";
    QTest::newRow("backslash n breaks the line") << "a\\nb"
                                                 << "a\nb";
    QTest::newRow("every backslash n") << "a\\n\\nb"
                                       << "a\n\nb";
    QTest::newRow("backslash N stays") << "a\\Nb"
                                       << "a\\Nb";
}

void tst_LabelWidget::initialTextIsShown()
{
    QFETCH(QString, value);
    QFETCH(QString, shown);
    Stand<Label> stand({{"Value", value}});
    QCOMPARE(stand.only<QLabel>()->text(), shown);
}

void tst_LabelWidget::initialOutputReachesTheWidget()
{
    Stand<Label> stand({{"Value", "%0"}});
    stand.only<QLabel>()->clear();
    stand.device.postInitialisation();
    QCOMPARE(stand.only<QLabel>()->text(), QString(QChar(0x2014)));
}

void tst_LabelWidget::lateBackslashIsShownAsItIs()
{
    Stand<Label> stand({{"Value", "x"}});
    stand.device.input(QString("a\\nb"));
    QCOMPARE(stand.only<QLabel>()->text(), QString("a\\nb"));
}

void tst_LabelWidget::numbersAreShownInTheTemplate()
{
    Stand<Label> stand({{"Value", "T = %1 C"}, {"widget/precision", "2"}});
    stand.device.input(3.14159);
    QCOMPARE(stand.only<QLabel>()->text(), QString("T = 3.14 C"));
    stand.device.input(qQNaN());
    QCOMPARE(stand.only<QLabel>()->text(), QString("-"));
    stand.device.input(-1.0);
    QCOMPARE(stand.only<QLabel>()->text(), QString("T = -1.00 C"));
}

void tst_LabelWidget::warningTurnsTheNextTextRed()
{
    Stand<Label> stand({{"Value", "old"}, {"widget/fontSize", "40"}});
    auto* const label = stand.only<QLabel>();
    stand.widget->resize(300, 100);
    stand.widget->show();

    stand.device.inputWarning(true);
    QCOMPARE(label->text(), QString("old"));
    QCOMPARE(redPixels(*stand.widget), 0);
    stand.device.input(QString("X"));
    QCOMPARE(label->text(), QString("<font color='red'>X</font>"));
    QVERIFY(redPixels(*stand.widget) > 50);

    stand.device.inputWarning(false);
    QCOMPARE(label->text(), QString("<font color='red'>X</font>"));
    QVERIFY(redPixels(*stand.widget) > 50);
    stand.device.input(QString("X"));
    QCOMPARE(label->text(), QString("X"));
    QCOMPARE(redPixels(*stand.widget), 0);
}

void tst_LabelWidget::warningIsForgottenWhenInitialisedAgain()
{
    Stand<Label> stand;
    stand.device.inputWarning(true);
    stand.widget->deinitialise();
    stand.widget->initialise();
    stand.device.input(QString("X"));
    const auto labels = stand.widget->findChildren<QLabel*>();
    QCOMPARE(labels.last()->text(), QString("X"));
}

void tst_LabelWidget::fontIsSetAgainWithEachText()
{
    Stand<Label> stand({{"widget/fontSize", "20"}});
    auto* const label = stand.only<QLabel>();
    label->setFont(QFont("Courier", 7, QFont::Bold, true));
    stand.device.input(QString("text"));
    QCOMPARE(label->font().family(), QString("Arial"));
    QCOMPARE(label->font().pointSize(), 20);
    QCOMPARE(label->font().weight(), 50);
    QVERIFY(!label->font().italic());
}

void tst_LabelWidget::nothingIsShownAfterDeinitialise()
{
    Stand<Label> stand({{"Value", "last"}});
    stand.widget->deinitialise();
    QVERIFY(!stand.widget->isInitialised());
    stand.device.input(QString("text"));
    stand.device.inputWarning(true);
    QCOMPARE(stand.only<QLabel>()->text(), QString("last"));
}

void tst_LabelWidget::textFromAWireNeverMakesTheWindowLargerThanTheScreen_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("unbroken") << QString(9'000, 'x');
    QTest::newRow("lines") << QString("x\n").repeated(4'000);
    QTest::newRow("marked") << "<b>" + QString(3'000, 'x') + QString("<br>x").repeated(200) +
                                   "</b>";
}

void tst_LabelWidget::textFromAWireNeverMakesTheWindowLargerThanTheScreen()
{
    QFETCH(QString, text);
    QWidget window;
    auto* const column = new QVBoxLayout(&window);
    column->setContentsMargins(0, 0, 0, 0);
    Stand<Label> alone;
    Stand<Label> inAWindow;
    column->addWidget(inAWindow.widget.get());
    for (QWidget* const shown : {static_cast<QWidget*>(alone.widget.get()), &window}) {
        shown->resize(400, 200);
        shown->show();
        QVERIFY(QTest::qWaitForWindowExposed(shown));
    }
    alone.device.input(text);
    inAWindow.device.input(text);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    const QSize screen = window.screen()->availableSize();
    for (const QSize& size : {alone.widget->size(), window.size()}) {
        QVERIFY(size.height() > 200 || size.width() > 400); // it grows, but to that only
        QCOMPARE(size.boundedTo(screen), size);
    }
    QVERIFY(alone.only<QLabel>()->heightForWidth(1) <= screen.height());
}

NORVO_TEST(tst_LabelWidget)
#include "tst_LabelWidget.moc"
