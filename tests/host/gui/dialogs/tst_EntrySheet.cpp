// SPDX-License-Identifier: GPL-3.0-or-later

#include "ModalDialog.h"
#include "TestMain.h"
#include "norvo/BaseWidget.h"
#include "norvo/NumpadDialog.h"
#include "norvo/ScreenKeyboardDialog.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QtTest>

#include <memory>

namespace {

class FieldDevice : public BaseGuiDevice
{
public:
    explicit FieldDevice(const QList<QPair<QString, QString>>& params)
    {
        for (const auto& [name, value] : params) {
            addParam(name, value);
        }
    }

    BaseWidget* createWidget() override { return new BaseWidget(this, nullptr); }
};

/// A window of the screen's size, with a field of a device somewhere on it, which has the focus.
class FieldOnAPanel
{
public:
    explicit FieldOnAPanel(const QList<QPair<QString, QString>>& params, const QRect& place)
        : m_device(params), m_widget(m_device.createWidget())
    {
        m_window.setGeometry(m_window.screen()->availableGeometry());
        m_widget->setParent(&m_window);
        m_widget->setGeometry(place);
        m_widget->getLayout()->addWidget(&m_field);
        m_window.show();
        m_window.activateWindow();
        m_field.setFocus();
    }

    QWidget& window() { return m_window; }
    void removeField() { m_widget.reset(); }
    bool isReady() { return QTest::qWaitForWindowActive(&m_window) && m_field.hasFocus(); }
    QRect fieldOnScreen() const { return {m_field.mapToGlobal(QPoint()), m_field.size()}; }
    /// Of a point of the window that the field leaves free.
    int lightness() { return m_window.grab().toImage().pixelColor(250, 250).lightness(); }

private:
    QWidget m_window;
    FieldDevice m_device;
    std::unique_ptr<BaseWidget> m_widget;
    QLineEdit& m_field = *new QLineEdit;
};

using Use = std::function<void(QWidget&)>;

int openNumpad(const Use& use, QWidget* parent = nullptr, const QString& label = {})
{
    ModalDialog modal(use);
    NumpadDialog::getDouble(parent, "Input value", label);
    return modal.count();
}

int openKeyboard(const Use& use)
{
    ModalDialog modal(use);
    ScreenKeyboardDialog::getText(nullptr, "Input value");
    return modal.count();
}

QString labelOf(QWidget& dialog)
{
    const auto* const label = dialog.findChild<QLabel*>("label");
    return label && label->isVisible() ? label->text() : QString();
}

const QRect kUpperLeft(0, 0, 200, 30);

} // namespace

class tst_EntrySheet : public QObject
{
    Q_OBJECT

private slots:
    void nameAndUnitOfTheFieldStandAboveTheNumber_data();
    void nameAndUnitOfTheFieldStandAboveTheNumber();
    void labelOfTheCallerComesFirst();
    void fieldOfNoDeviceGivesItsAccessibleName();
    void sheetHasNoFrameButAnEdge();
    void sheetStandsBesideTheField_data();
    void sheetStandsBesideTheField();
    void withoutRoomItStandsInTheMiddle();
    void panelIsDimmedWhileItIsOpen();
    void panelHasTheFocusAgain();
    void dimmingFollowsTheWindow();
    void dimmingGoesWithTheParent();
    void dimmingGoesWithTheField();
};

void tst_EntrySheet::nameAndUnitOfTheFieldStandAboveTheNumber_data()
{
    using Params = QList<QPair<QString, QString>>;
    QTest::addColumn<Params>("params");
    QTest::addColumn<QString>("label");
    QTest::newRow("name and unit") << Params{{"name", "Speed"}, {"units", "rpm"}} << "Speed, rpm";
    QTest::newRow("caption and unit")
        << Params{{"widget/caption", "Level"}, {"widget/units", "m"}} << "Level, m";
    QTest::newRow("name alone") << Params{{"name", "Speed"}, {"units", ""}} << "Speed";
    QTest::newRow("unit alone") << Params{{"name", ""}, {"units", "rpm"}} << "rpm";
    QTest::newRow("in one line") << Params{{"name", "Speed\nof pump"}} << "Speed of pump";
    QTest::newRow("neither") << Params{} << "";
}

void tst_EntrySheet::nameAndUnitOfTheFieldStandAboveTheNumber()
{
    using Params = QList<QPair<QString, QString>>;
    QFETCH(Params, params);
    FieldOnAPanel panel(params, kUpperLeft);
    QVERIFY(panel.isReady());
    int opened = 0;
    const Use isNamed = [&](QWidget& dialog) {
        QTEST(labelOf(dialog), "label");
        QCOMPARE(dialog.windowTitle(), QString("Input value"));
        const auto& display = *dialog.findChild<QLineEdit*>("display");
        const auto& label = *dialog.findChild<QLabel*>("label");
        if (label.isVisible()) {
            QVERIFY(label.geometry().bottom() < display.geometry().top());
            QCOMPARE(display.accessibleName(), label.text());
        }
        ++opened;
    };
    openNumpad(isNamed);
    QVERIFY(panel.isReady());
    openKeyboard(isNamed);
    QCOMPARE(opened, 2);
}

void tst_EntrySheet::labelOfTheCallerComesFirst()
{
    FieldOnAPanel panel({{"name", "Speed"}}, kUpperLeft);
    QVERIFY(panel.isReady());
    openNumpad([](QWidget& dialog) { QCOMPARE(labelOf(dialog), QString("Heater")); }, nullptr,
               "Heater");
}

void tst_EntrySheet::fieldOfNoDeviceGivesItsAccessibleName()
{
    QLineEdit field;
    field.setAccessibleName("Filter");
    field.show();
    field.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&field));
    field.setFocus();
    openNumpad([](QWidget& dialog) { QCOMPARE(labelOf(dialog), QString("Filter")); });
}

void tst_EntrySheet::sheetHasNoFrameButAnEdge()
{
    FieldOnAPanel panel({}, kUpperLeft);
    QVERIFY(panel.isReady());
    const Use hasEdge = [](QWidget& dialog) {
        QVERIFY(dialog.windowFlags() & Qt::FramelessWindowHint);
        QCOMPARE(dialog.frameGeometry(), dialog.geometry());
        const QImage image = dialog.grab().toImage();
        const int ground = image.pixelColor(5, 5).lightness();
        const QPoint edges[] = {
            {0, 50}, {50, 0}, {image.width() - 1, 50}, {50, image.height() - 1}};
        for (const QPoint& edge : edges) {
            QVERIFY(qAbs(image.pixelColor(edge).lightness() - ground) > 40);
        }
    };
    QCOMPARE(openNumpad(hasEdge), 1);
    QVERIFY(panel.isReady());
    QCOMPARE(openKeyboard(hasEdge), 1);
}

void tst_EntrySheet::sheetStandsBesideTheField_data()
{
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    const QSize field(120, 30);
    QTest::addColumn<QRect>("place");
    QTest::newRow("upper left") << QRect(QPoint(0, 0), field);
    QTest::newRow("lower right") << QRect(QPoint(screen.width() - 120, screen.height() - 30),
                                          field);
    QTest::newRow("left, in the middle") << QRect(QPoint(0, screen.height() / 2), field);
    QTest::newRow("above the middle") << QRect(QPoint(300, 150), field);
}

void tst_EntrySheet::sheetStandsBesideTheField()
{
    QFETCH(QRect, place);
    FieldOnAPanel panel({}, place);
    QVERIFY(panel.isReady());
    QCOMPARE(openNumpad([&](QWidget& dialog) {
                 const QRect sheet = dialog.frameGeometry();
                 QVERIFY(dialog.screen()->availableGeometry().contains(sheet));
                 QVERIFY(!sheet.intersects(panel.fieldOnScreen()));
             }),
             1);
}

void tst_EntrySheet::withoutRoomItStandsInTheMiddle()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    FieldOnAPanel panel({}, {QPoint(), screen.size()});
    QVERIFY(panel.isReady());
    QCOMPARE(openNumpad([&](QWidget& dialog) {
                 const QPoint off = dialog.geometry().center() - screen.center();
                 QVERIFY(off.manhattanLength() <= 2);
             }),
             1);
}

void tst_EntrySheet::panelIsDimmedWhileItIsOpen()
{
    FieldOnAPanel panel({}, kUpperLeft);
    QVERIFY(panel.isReady());
    const int before = panel.lightness();
    const auto isDim = [&](QWidget&) { QVERIFY(panel.lightness() < before * 2 / 3); };
    QCOMPARE(openNumpad(isDim), 1);
    QCOMPARE(panel.lightness(), before);
    QVERIFY(panel.isReady());
    QCOMPARE(openKeyboard(isDim), 1);
    QCOMPARE(panel.lightness(), before);
}

void tst_EntrySheet::panelHasTheFocusAgain()
{
    FieldOnAPanel panel({}, kUpperLeft);
    QVERIFY(panel.isReady());
    QCOMPARE(openNumpad([&](QWidget& dialog) { QVERIFY(QTest::qWaitForWindowActive(&dialog)); }),
             1);
    QVERIFY(panel.isReady());
}

void tst_EntrySheet::dimmingFollowsTheWindow()
{
    FieldOnAPanel panel({}, kUpperLeft);
    QVERIFY(panel.isReady());
    panel.window().resize(300, 300);
    const int before = panel.lightness();
    QCOMPARE(openNumpad([&](QWidget&) {
                 panel.window().resize(600, 500);
                 QCoreApplication::processEvents();
                 const QImage image = panel.window().grab().toImage();
                 QVERIFY(image.pixelColor(598, 498).lightness() < before * 2 / 3);
             }),
             1);
}

void tst_EntrySheet::dimmingGoesWithTheParent()
{
    FieldOnAPanel panel({}, kUpperLeft);
    QVERIFY(panel.isReady());
    const int before = panel.lightness();
    auto* const parent = new QWidget;
    QCOMPARE(openNumpad([&](QWidget&) { delete parent; }, parent), 1);
    QCOMPARE(panel.lightness(), before);
}

void tst_EntrySheet::dimmingGoesWithTheField()
{
    FieldOnAPanel panel({}, kUpperLeft);
    QVERIFY(panel.isReady());
    const int before = panel.lightness();
    QCOMPARE(openNumpad([&](QWidget& dialog) {
                 panel.removeField();
                 QTRY_COMPARE(panel.lightness(), before);
                 QVERIFY(dialog.isVisible());
             }),
             1);
}

NORVO_TEST(tst_EntrySheet)
#include "tst_EntrySheet.moc"
