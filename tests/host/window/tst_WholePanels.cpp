// SPDX-License-Identifier: GPL-3.0-or-later

#include "WholePanels.h"
#include "host/window/look/Contrast.h"
#include "host/window/look/Look.h"
#include "host/window/look/TouchSize.h"
#include "TestMain.h"

#include <QtWidgets>

using namespace norvo;

Q_DECLARE_METATYPE(norvo::PanelLook)

namespace {

/// The contrast of what is drawn over the ground, which is the colour that most pixels have.
double contrastOf(QWidget& widget)
{
    const QImage image = widget.grab().toImage();
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ++counts[image.pixel(x, y)];
        }
    }
    const auto ground = std::max_element(counts.cbegin(), counts.cend()).key();
    double best = 1;
    for (auto colour = counts.cbegin(); colour != counts.cend(); ++colour) {
        best = std::max(best, contrast(QColor(ground), QColor(colour.key())));
    }
    return best;
}

/// What a finger works, but for keys that a field has inside of it.
QWidgetList targets(const QWidget& window)
{
    QWidgetList found;
    for (auto* const widget : window.findChildren<QWidget*>()) {
        const bool isTarget =
            qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
            qobject_cast<QAbstractSpinBox*>(widget) || qobject_cast<QSlider*>(widget) ||
            (qobject_cast<QLineEdit*>(widget) &&
             !qobject_cast<QAbstractSpinBox*>(widget->parentWidget()));
        if (isTarget && widget->isVisible()) {
            found.append(widget);
        }
    }
    return found;
}

QString nameOf(const QWidget& widget)
{
    const QWidget* device = &widget;
    while (device && !device->inherits("BaseWidget")) {
        device = device->parentWidget();
    }
    return QString("%1 of %2")
        .arg(widget.metaObject()->className(),
             device ? static_cast<const BaseWidget*>(device)->getObjectName()
                    : QString("the window"));
}

} // namespace

/// What holds for every panel as it is seen: on the gallery, on the workstation, and on the
/// smallest examples of all types side by side.
class tst_WholePanels : public QObject
{
    Q_OBJECT

private slots:
    void textsRead_data() { panels(); }
    void textsRead();
    void targetsAreLargeEnough_data() { panels(); }
    void targetsAreLargeEnough();
    void galleryNeedsNoScrollBarAt1280By800();

private:
    static void panels();
    static ShownPanel show();
};

void tst_WholePanels::panels()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<PanelLook>("look");
    PanelLook light;
    light.theme = PanelLook::Theme::Light;
    PanelLook dark;
    dark.theme = PanelLook::Theme::Dark;
    dark.touch = PanelLook::Touch::Gloves;
    for (const char* name : {"gallery", "workstation", ""}) {
        for (const QSize& size : {QSize(800, 480), QSize(1280, 800), QSize(1920, 1080)}) {
            const QByteArray row =
                QByteArray(*name ? name : "all types") + ' ' + QByteArray::number(size.width());
            QTest::newRow(row + " light") << name << size << light;
            QTest::newRow(row + " dark, gloves") << name << size << dark;
        }
    }
}

/// The panel of a row.
ShownPanel tst_WholePanels::show()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QFETCH(PanelLook, look);
    Look::apply(*qApp, look);
    return ShownPanel(name.isEmpty() ? allTypes() : exampleOf(name), size);
}

/// But for the texts whose ground a type sets in a colour of its own together with the text's.
void tst_WholePanels::textsRead()
{
    const ShownPanel shown = show();
    QTest::qWait(1000);
    int count = 0;
    for (auto* const label : shown.window.findChildren<QLabel*>()) {
        const bool hasOwnColours =
            label->styleSheet().contains(QRegularExpression("(^|[ ;{])color *:"));
        if (!label->isVisible() || label->text().isEmpty() || hasOwnColours ||
            label->size().isEmpty()) {
            continue;
        }
        const double found = contrastOf(*label);
        QVERIFY2(
            found >= kReadable,
            qPrintable(QString("%1: \"%2\" %3").arg(nameOf(*label), label->text()).arg(found)));
        ++count;
    }
    QVERIFY2(count >= 4, qPrintable(QString::number(count)));
}

void tst_WholePanels::targetsAreLargeEnough()
{
    QFETCH(PanelLook, look);
    const ShownPanel shown = show();
    QTest::qWait(200);
    const QWidgetList found = targets(shown.window);
    QVERIFY(!found.isEmpty());
    const int least = TouchSize::pixels(look.touch, *shown.window.screen());
    for (const QWidget* target : found) {
        QVERIFY2(std::min(target->width(), target->height()) >= least,
                 qPrintable(QString("%1: %2 x %3, not %4")
                                .arg(nameOf(*target))
                                .arg(target->width())
                                .arg(target->height())
                                .arg(least)));
    }
}

void tst_WholePanels::galleryNeedsNoScrollBarAt1280By800()
{
    if (QGuiApplication::primaryScreen()->logicalDotsPerInch() > 120) {
        QSKIP("What is touched is larger on this screen.");
    }
    Look::apply(*qApp, {});
    const ShownPanel shown(exampleOf("gallery"), {1280, 800});
    QTest::qWait(1000);
    const auto areas = shown.window.findChildren<QScrollArea*>();
    QVERIFY(!areas.isEmpty());
    for (const QScrollArea* area : areas) {
        QCOMPARE(area->verticalScrollBar()->maximum(), 0);
        QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
    }
}

NORVO_TEST(tst_WholePanels)
#include "tst_WholePanels.moc"
