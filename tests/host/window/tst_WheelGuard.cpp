// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/touch/WheelGuard.h"

#include "ShownPanel.h"
#include "TestMain.h"
#include "Wheel.h"

using norvo::WheelGuard;

namespace {

const QByteArray kPanel = "devices:\n"
                          "  first: {device: button}\n"
                          "  target: {device: input, params: {max: 100, value step: 5}}\n"
                          "  speed: {device: slider}\n"
                          "  gear: {device: dropdownlist, params: {options: one|two|three}}\n";

/// What the wheel could change there.
int valueOf(const QWidget& field)
{
    if (const auto* const spin = qobject_cast<const QDoubleSpinBox*>(&field)) {
        return int(spin->value());
    }
    const auto* const list = qobject_cast<const QComboBox*>(&field);
    return list ? list->currentIndex() : qobject_cast<const QSlider*>(&field)->value();
}

/// Has no focus, and stands on its least value with room above.
QWidget* fieldOf(const ShownPanel& shown, const QString& id)
{
    const QMap<QString, QWidget*> fields{{"target", shown.only<QDoubleSpinBox>("target")},
                                         {"speed", shown.only<QSlider>("speed")},
                                         {"gear", shown.only<QComboBox>("gear")}};
    return fields.value(id);
}

/// As the window system says it: to the window, which finds what is under the pointer. One notch
/// towards the hand.
void turnWheelOfTheMouse(const norvo::PanelWindow& window, const QWidget& over)
{
    const QPoint place = over.mapTo(&window, over.rect().center());
    QWheelEvent wheel(place, window.mapToGlobal(place), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    qApp->notify(window.windowHandle(), &wheel);
}

void addFields()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<int>("notches"); // Towards greater values.
    QTest::newRow("number field") << "target" << 3;
    QTest::newRow("slider") << "speed" << 3;
    QTest::newRow("drop-down list") << "gear" << -1;
}

} // namespace

class tst_WheelGuard : public QObject
{
    Q_OBJECT

private slots:
    void wheelChangesNothingWithoutFocus_data() { addFields(); }
    void wheelChangesNothingWithoutFocus();
    void wheelChangesWhatHasTheFocus_data() { addFields(); }
    void wheelChangesWhatHasTheFocus();
    void wheelGivesNoFocus();
    void wheelOverAFieldScrollsThePage();
    void wheelStillScrollsALog();
    void wheelReachesADocumentThatHasTheFocusOnly();
    void wheelTurnsNoPage();
};

void tst_WheelGuard::wheelChangesNothingWithoutFocus()
{
    QFETCH(QString, id);
    QFETCH(int, notches);
    const WheelGuard guard(*qApp);
    const ShownPanel shown(kPanel);
    shown.only<QPushButton>("first")->setFocus();
    QWidget* const field = fieldOf(shown, id);
    const int before = valueOf(*field);
    turnWheel(*field, notches);
    for (QLineEdit* inner : field->findChildren<QLineEdit*>()) {
        turnWheel(*inner, notches);
    }
    QCOMPARE(valueOf(*field), before);
}

void tst_WheelGuard::wheelChangesWhatHasTheFocus()
{
    QFETCH(QString, id);
    QFETCH(int, notches);
    const WheelGuard guard(*qApp);
    const ShownPanel shown(kPanel);
    QApplication::setActiveWindow(const_cast<norvo::PanelWindow*>(&shown.window));
    QWidget* const field = fieldOf(shown, id);
    const int before = valueOf(*field);
    field->setFocus();
    turnWheel(*field, notches);
    QVERIFY(valueOf(*field) > before);
}

void tst_WheelGuard::wheelGivesNoFocus()
{
    const WheelGuard guard(*qApp);
    const ShownPanel shown(kPanel);
    for (const QWidget* widget : shown.window.findChildren<QWidget*>()) {
        QVERIFY2(widget->focusPolicy() != Qt::WheelFocus, widget->metaObject()->className());
    }
    QCOMPARE(fieldOf(shown, "target")->focusPolicy(), Qt::StrongFocus); // A tap gives it.
}

void tst_WheelGuard::wheelOverAFieldScrollsThePage()
{
    const WheelGuard guard(*qApp);
    const ShownPanel shown(kPanel, {640, 150});
    QScrollBar* const page = shown.window.findChild<QScrollArea*>()->verticalScrollBar();
    QVERIFY(page->maximum() > 0);
    QWidget* const field = fieldOf(shown, "target");
    shown.window.findChild<QScrollArea*>()->ensureWidgetVisible(field);
    const int before = page->value();
    turnWheelOfTheMouse(shown.window, *field);
    QVERIFY(page->value() > before);
    QCOMPARE(valueOf(*field), 0);
    QVERIFY(!field->hasFocus());
}

void tst_WheelGuard::wheelStillScrollsALog()
{
    const WheelGuard guard(*qApp);
    const ShownPanel shown("devices:\n  log: {device: multiline}\n");
    auto* const log = shown.only<QTextEdit>("log");
    log->setPlainText(QString("line\n").repeated(200));
    log->verticalScrollBar()->setValue(0);
    turnWheel(*log->viewport(), -1);
    QVERIFY(log->verticalScrollBar()->value() > 0);
}

void tst_WheelGuard::wheelReachesADocumentThatHasTheFocusOnly()
{
    const WheelGuard guard(*qApp);
    ShownPanel shown("devices:\n"
                     "  first: {device: button}\n"
                     "  qml:\n"
                     "    device: qml_widget\n"
                     "    params:\n"
                     "      sourceType: parameter\n"
                     "      sourceCode: 'import QtQuick 2.15; Rectangle { width: 400; height: 300; "
                     "color: \"navy\"; MouseArea { anchors.fill: parent; onWheel: parent.color = "
                     "\"lime\" } }'\n");
    const QWidget* const face = shown.panel.widget("qml");
    QWidget* const quick = face->findChild<QWidget*>();
    const auto colour = [&] {
        const QPoint place = quick->mapTo(&shown.window, QPoint(50, 50));
        return shown.window.grab().toImage().pixelColor(place);
    };
    QApplication::setActiveWindow(&shown.window);
    shown.only<QPushButton>("first")->setFocus();
    QVERIFY(QTest::qWaitFor([&] { return colour() == QColor("navy"); }, 10000));
    turnWheelOfTheMouse(shown.window, *quick);
    QVERIFY(!QTest::qWaitFor([&] { return colour() == QColor("lime"); }, 200));
    QTest::mouseClick(quick, Qt::LeftButton, {}, QPoint(50, 50));
    QVERIFY(quick->hasFocus());
    turnWheel(*quick, 1);
    QVERIFY(QTest::qWaitFor([&] { return colour() == QColor("lime"); }, 10000));
}

void tst_WheelGuard::wheelTurnsNoPage()
{
    const WheelGuard guard(*qApp);
    const ShownPanel shown("devices:\n"
                           "  a: {device: button, params: {widget/area: One}}\n"
                           "  b: {device: button, params: {widget/area: Two}}\n");
    const auto* const pages = shown.window.findChild<QTabWidget*>();
    QCOMPARE(pages->currentIndex(), 0);
    for (QWidget* widget : shown.window.findChildren<QWidget*>()) {
        if (widget->isVisible()) { // The bar of tabs, which the keys stand for, is not.
            turnWheel(*widget, -1);
        }
        QVERIFY2(pages->currentIndex() == 0, widget->metaObject()->className());
    }
}

NORVO_TEST(tst_WheelGuard)
#include "tst_WheelGuard.moc"
