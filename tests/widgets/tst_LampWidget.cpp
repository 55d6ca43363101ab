#include "Declarations.h"
#include "MessageLog.h"
#include "Recorder.h"
#include "Stand.h"

#include "devices/ButtonDevice.h"
#include "devices/IndicatorDevice.h"
#include "widgets/LampWidget.h"

#include <QtTest>

namespace {

const QString kMessage = "debug: LampWidget: Error! Attached to incompatible device";

class EventCount : public QObject
{
public:
    EventCount(QObject* watched, QEvent::Type type) : m_type(type)
    {
        watched->installEventFilter(this);
    }
    int count = 0;

private:
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == m_type;
        return false;
    }
    QEvent::Type m_type;
};

class CountingDevice : public IndicatorDevice
{
public:
    int outputReceivers() const { return receivers(SIGNAL(output(bool))); }
};

QString sheet(const QString& background, const QString& text)
{
    return QString("QLabel { background-color : %1; color : %2; border: 1px solid #222222; "
                   "border-radius: 5px; }")
        .arg(background, text);
}

} // namespace

class tst_LampWidget : public QObject
{
    Q_OBJECT

private slots:
    void deviceMakesItsWidget();
    void declaresItsSlot();
    void foreignDeviceIsToldOnceAndLeavesTheWidgetEmpty();
    void noDeviceIsToldToo();

    void captionIsShown_data();
    void captionIsShown();
    void emptyCaptionShowsTheObjectName();
    void lampLooksAsItsParametersSay();
    void colourSheetsLetterForLetter_data();
    void colourSheetsLetterForLetter();
    void unknownColourKeepsThePlainLook_data();
    void unknownColourKeepsThePlainLook();
    void plateIsPaintedInItsColour_data();
    void plateIsPaintedInItsColour();

    void startsDarkAndFollowsTheDevice();
    void inputWhileNotRunningChangesNothing();
    void setFontSizeChangesOnlyTheFont();
    void sheetIsSetOnlyWhenTheStateChanges();
    void foreignSheetIsReplacedWithTheNextValue();
    void everyValueUpdatesTheWidget();
    void secondInitialiseLeavesOneConnectionAndOneLamp();
};

void tst_LampWidget::deviceMakesItsWidget()
{
    IndicatorDevice device;
    const std::unique_ptr<BaseWidget> widget(device.createWidget());
    QCOMPARE(widget->metaObject()->className(), "LampWidget");
    QVERIFY(!widget->parent());
    QVERIFY(!widget->isInitialised());
    widget->initialise();
    QVERIFY(widget->isInitialised());
}

void tst_LampWidget::declaresItsSlot()
{
    QCOMPARE(methodTable(LampWidget::staticMetaObject), QStringList("slot input(bool)"));
}

void tst_LampWidget::foreignDeviceIsToldOnceAndLeavesTheWidgetEmpty()
{
    ButtonDevice button;
    LampWidget widget(&button, nullptr);
    MessageLog log;
    widget.initialise();
    QCOMPARE(log.take(), QStringList(kMessage));
    widget.input(true);
    widget.setState(true);
    widget.setFontSize(20);
    QVERIFY(widget.findChildren<QWidget*>().isEmpty());
    QVERIFY(!widget.isInitialised());

    Recorder recorder(&button);
    button.click();
    QCOMPARE(recorder.take(), QStringList("clicked()"));
}

void tst_LampWidget::noDeviceIsToldToo()
{
    LampWidget widget(nullptr, nullptr);
    MessageLog log;
    widget.initialise();
    QCOMPARE(log.take(), QStringList(kMessage));
}

void tst_LampWidget::captionIsShown_data()
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

void tst_LampWidget::captionIsShown()
{
    QFETCH(QString, caption);
    QFETCH(QString, shown);
    Stand<IndicatorDevice> stand({{"widget/caption", caption}});
    QVERIFY(stand.only<QLabel>());
    QCOMPARE(stand.only<QLabel>()->text(), shown);
}

void tst_LampWidget::emptyCaptionShowsTheObjectName()
{
    Stand<IndicatorDevice> stand;
    QCOMPARE(stand.only<QLabel>()->text(), QString("device"));
    QCOMPARE(stand.device.getParam("widget/caption").value(), QString("device"));
}

void tst_LampWidget::lampLooksAsItsParametersSay()
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

void tst_LampWidget::colourSheetsLetterForLetter_data()
{
    QTest::addColumn<QString>("color");
    QTest::addColumn<QString>("lit");
    QTest::addColumn<QString>("dark");
    QTest::newRow("green") << "green" << sheet("green", "white") << sheet("#2e4e18", "gray");
    QTest::newRow("red") << "red" << sheet("red", "white") << sheet("#420000", "gray");
    QTest::newRow("yellow") << "yellow" << sheet("#e5e500", "black") << sheet("#8d6b0f ", "gray");
}

void tst_LampWidget::colourSheetsLetterForLetter()
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

void tst_LampWidget::unknownColourKeepsThePlainLook_data()
{
    QTest::addColumn<QString>("color");
    QTest::newRow("capital G") << "Green";
    QTest::newRow("blue") << "blue";
    QTest::newRow("empty") << "";
}

void tst_LampWidget::unknownColourKeepsThePlainLook()
{
    QFETCH(QString, color);
    Stand<IndicatorDevice> stand({{"widget/color", color}});
    QCOMPARE(stand.only<QLabel>()->styleSheet(), QString());
    stand.device.input(true);
    QCOMPARE(stand.only<QLabel>()->styleSheet(), QString());
}

void tst_LampWidget::plateIsPaintedInItsColour_data()
{
    QTest::addColumn<QString>("color");
    QTest::addColumn<QColor>("lit");
    QTest::addColumn<QColor>("dark");
    QTest::newRow("green") << "green" << QColor("green") << QColor("#2e4e18");
    QTest::newRow("red") << "red" << QColor("red") << QColor("#420000");
    QTest::newRow("yellow") << "yellow" << QColor("#e5e500") << QColor("#8d6b0f");
}

void tst_LampWidget::plateIsPaintedInItsColour()
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

void tst_LampWidget::startsDarkAndFollowsTheDevice()
{
    Stand<IndicatorDevice> stand;
    const QString dark = stand.only<QLabel>()->styleSheet();
    QCOMPARE(dark, sheet("#2e4e18", "gray"));
    stand.device.input(true);
    QVERIFY(stand.only<QLabel>()->styleSheet() != dark);
    stand.device.input(false);
    QCOMPARE(stand.only<QLabel>()->styleSheet(), dark);
}

void tst_LampWidget::inputWhileNotRunningChangesNothing()
{
    Stand<IndicatorDevice> stand;
    stand.device.setRunning(false);
    stand.device.input(true);
    QCOMPARE(stand.only<QLabel>()->styleSheet(), sheet("#2e4e18", "gray"));
}

void tst_LampWidget::setFontSizeChangesOnlyTheFont()
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

void tst_LampWidget::sheetIsSetOnlyWhenTheStateChanges()
{
    Stand<IndicatorDevice> stand;
    stand.widget->show();
    EventCount changes(stand.only<QLabel>(), QEvent::StyleChange);
    stand.device.input(false);
    QCOMPARE(changes.count, 0);
    stand.device.input(true);
    QVERIFY(changes.count > 0);
    changes.count = 0;
    stand.device.input(true);
    QCOMPARE(changes.count, 0);
}

void tst_LampWidget::foreignSheetIsReplacedWithTheNextValue()
{
    Stand<IndicatorDevice> stand;
    stand.only<QLabel>()->setStyleSheet("QLabel { color : blue; }");
    stand.device.input(false);
    QCOMPARE(stand.only<QLabel>()->styleSheet(), sheet("#2e4e18", "gray"));
}

void tst_LampWidget::everyValueUpdatesTheWidget()
{
    Stand<IndicatorDevice> stand;
    stand.widget->show();
    QVERIFY(QTest::qWaitForWindowExposed(stand.widget.get()));
    QCoreApplication::processEvents();
    EventCount paints(stand.widget.get(), QEvent::Paint);
    stand.device.input(false);
    stand.device.input(false);
    QCOMPARE(paints.count, 0);
    QTRY_COMPARE(paints.count, 1);
}

void tst_LampWidget::secondInitialiseLeavesOneConnectionAndOneLamp()
{
    Stand<CountingDevice> stand({{"widget/caption", "first"}});
    QCOMPARE(stand.device.outputReceivers(), 1);
    connect(&stand.device, SIGNAL(output(bool)), stand.widget.get(), SLOT(input(bool)));
    stand.device.setParam("widget/caption", "second");
    stand.device.setParam("widget/color", "red");
    stand.device.input(true);
    stand.widget->initialise();
    QCOMPARE(stand.device.outputReceivers(), 1);
    QVERIFY(stand.only<QLabel>());
    QCOMPARE(stand.only<QLabel>()->text(), QString("second"));
    QCOMPARE(stand.only<QLabel>()->styleSheet(), sheet("#420000", "gray"));
    QCOMPARE(stand.widget->getLayout()->count(), 1);
    stand.device.input(true);
    QCOMPARE(stand.only<QLabel>()->styleSheet(), sheet("red", "white"));
}

QTEST_MAIN(tst_LampWidget)
#include "tst_LampWidget.moc"
