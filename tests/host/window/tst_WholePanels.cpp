// SPDX-License-Identifier: GPL-3.0-or-later

#include "ShownPanel.h"
#include "host/window/look/Contrast.h"
#include "host/window/look/Look.h"
#include "host/window/look/TouchSize.h"
#include "TestMain.h"

#include <QtWidgets>

using namespace norvo;

Q_DECLARE_METATYPE(norvo::PanelLook::Theme)
Q_DECLARE_METATYPE(norvo::PanelLook::Touch)

namespace {

constexpr int kStillMs = 3000;

/// The text of an example, read where it stands, since its files are named from there.
QByteArray example(const QString& name)
{
    QDir::setCurrent(NORVO_SOURCE_DIR "/examples/" + name);
    QFile file("panel.yaml");
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

void wear(PanelLook::Theme theme, PanelLook::Touch touch)
{
    PanelLook look;
    look.theme = theme;
    look.touch = touch;
    Look::apply(*qApp, look);
}

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

/// All that stands on the page, but for the parts of what rolls by itself.
QMap<QString, QRect> geometries(const QWidget& window)
{
    QMap<QString, QRect> found;
    for (const auto* const widget : window.findChildren<BaseWidget*>()) {
        found.insert(widget->getObjectName(), widget->geometry());
        int number = 0;
        for (const auto* const part : widget->findChildren<QLabel*>()) {
            found.insert(QString("%1, label %2").arg(widget->getObjectName()).arg(++number),
                         part->geometry());
        }
    }
    return found;
}

} // namespace

/// What holds for every panel as it is seen: on the gallery, which has every type, and on the
/// workstation.
class tst_WholePanels : public QObject
{
    Q_OBJECT

private slots:
    void textsRead_data() { panels(); }
    void textsRead();
    void targetsAreLargeEnough_data() { panels(); }
    void targetsAreLargeEnough();
    void nothingMoves_data() { panels(); }
    void nothingMoves();

private:
    static void panels();
};

void tst_WholePanels::panels()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<PanelLook::Theme>("theme");
    QTest::addColumn<PanelLook::Touch>("touch");
    for (const char* name : {"gallery", "workstation"}) {
        for (const QSize& size : {QSize(800, 480), QSize(1280, 800), QSize(1920, 1080)}) {
            for (const auto theme : {PanelLook::Theme::Light, PanelLook::Theme::Dark}) {
                const bool isDark = theme == PanelLook::Theme::Dark;
                const auto touch = isDark ? PanelLook::Touch::Gloves : PanelLook::Touch::Fingers;
                QTest::newRow(qPrintable(QString("%1 %2 %3")
                                             .arg(name)
                                             .arg(size.width())
                                             .arg(isDark ? "dark, gloves" : "light")))
                    << name << size << theme << touch;
            }
        }
    }
}

/// But for the texts whose ground a type sets in a colour of its own together with the text's.
void tst_WholePanels::textsRead()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QFETCH(PanelLook::Theme, theme);
    QFETCH(PanelLook::Touch, touch);
    wear(theme, touch);
    const ShownPanel shown(example(name), size);
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
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QFETCH(PanelLook::Theme, theme);
    QFETCH(PanelLook::Touch, touch);
    wear(theme, touch);
    const ShownPanel shown(example(name), size);
    QTest::qWait(200);
    const QWidgetList found = targets(shown.window);
    QVERIFY(!found.isEmpty());
    const int least = TouchSize::pixels(touch, *shown.window.screen());
    for (const QWidget* target : found) {
        QVERIFY2(std::min(target->width(), target->height()) >= least,
                 qPrintable(QString("%1: %2 x %3, not %4")
                                .arg(nameOf(*target))
                                .arg(target->width())
                                .arg(target->height())
                                .arg(least)));
    }
}

/// After the first second, in which the first values come.
void tst_WholePanels::nothingMoves()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QFETCH(PanelLook::Theme, theme);
    QFETCH(PanelLook::Touch, touch);
    wear(theme, touch);
    const ShownPanel shown(example(name), size);
    QTest::qWait(1000);
    const auto before = geometries(shown.window);
    QVERIFY(before.size() >= 8);
    QTest::qWait(kStillMs);
    const auto after = geometries(shown.window);
    for (auto part = before.cbegin(); part != before.cend(); ++part) {
        QVERIFY2(after.value(part.key()) == *part, qPrintable(part.key()));
    }
}

NORVO_TEST(tst_WholePanels)
#include "tst_WholePanels.moc"
