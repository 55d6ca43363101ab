// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/TestPanel.h"
#include "host/panel/file/PanelFile.h"
#include "host/program/Display.h"
#include "host/program/PluginSet.h"
#include "host/window/look/Look.h"
#include "host/window/look/Theme.h"
#include "host/window/look/TouchSize.h"
#include "norvo/BaseWidget.h"
#include "TestMain.h"

#include <QCheckBox>
#include <QGuiApplication>
#include <QLabel>
#include <QtTest>

#include <algorithm>

using namespace norvo;

/// What the look gives to the types, and what it leaves to them, on the plug-ins as they are built.
class tst_TypesInLook : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void controlsAreLargeEnough_data();
    void controlsAreLargeEnough();
    void plotsHaveTheirGround_data();
    void plotsHaveTheirGround();
    void fontsOfTypesStay();
    void digitsHaveAirAboveAndBelow();

private:
    PluginSet m_plugins;
};

namespace {

void wear(PanelLook::Theme theme, PanelLook::Touch touch = PanelLook::Touch::Fingers)
{
    PanelLook look;
    look.theme = theme;
    look.touch = touch;
    Look::apply(*qApp, look);
}

PanelDescription panelOf(const QByteArray& device)
{
    Diagnostics diagnostics("panel.yaml");
    return PanelFile::parse("devices:\n  it: " + device, "panel.yaml", diagnostics);
}

QWidget* partOf(const QWidget& widget, const char* className)
{
    for (QWidget* part : widget.findChildren<QWidget*>()) {
        if (part->inherits(className)) {
            return part;
        }
    }
    return nullptr;
}

} // namespace

Q_DECLARE_METATYPE(norvo::PanelLook::Theme)
Q_DECLARE_METATYPE(norvo::PanelLook::Touch)

void tst_TypesInLook::initTestCase()
{
    m_plugins.load(NORVO_BUILD_DIR "/plugins");
    QVERIFY(!m_plugins.isEmpty());
}

void tst_TypesInLook::controlsAreLargeEnough_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<QByteArray>("part");
    QTest::addColumn<PanelLook::Touch>("touch");
    using Row = QPair<QByteArray, QByteArray>;
    for (const auto touch : {PanelLook::Touch::Fingers, PanelLook::Touch::Gloves}) {
        for (const auto& [device, part] : {Row("{device: button}", "QPushButton"),
                                           {"{device: checkbox}", "QCheckBox"},
                                           {"{device: dropdownlist}", "QComboBox"},
                                           {"{device: slider}", "QSlider"},
                                           {"{device: input, params: {type: string}}", "QLineEdit"},
                                           {"{device: input}", "QDoubleSpinBox"}}) {
            QTest::newRow(device + (touch == PanelLook::Touch::Gloves ? " gloves" : " fingers"))
                << device << part << touch;
        }
    }
}

void tst_TypesInLook::controlsAreLargeEnough()
{
    QFETCH(QByteArray, device);
    QFETCH(QByteArray, part);
    QFETCH(PanelLook::Touch, touch);
    wear(PanelLook::Theme::Light, touch);
    TestPanel panel(m_plugins.manager(), panelOf(device));
    QWidget page;
    panel.start(&page);
    page.resize(1, 1); // as small as it can be
    page.show();
    const QWidget* const control = partOf(*panel.widget("it"), part);
    QVERIFY(control);
    const int least = TouchSize::pixels(touch, *QGuiApplication::primaryScreen());
    QVERIFY2(control->width() >= least && control->height() >= least,
             qPrintable(QString("%1x%2").arg(control->width()).arg(control->height())));
    QVERIFY2(control->height() >= control->minimumSizeHint().height(),
             qPrintable(QString("%1 pixels high").arg(control->height())));
}

void tst_TypesInLook::plotsHaveTheirGround_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::newRow("by time") << QByteArray("{device: output_graph}");
    QTest::newRow("of an array") << QByteArray("{device: output_vector}");
}

void tst_TypesInLook::plotsHaveTheirGround()
{
    QFETCH(QByteArray, device);
    wear(PanelLook::Theme::Dark);
    TestPanel panel(m_plugins.manager(), panelOf(device));
    QWidget page;
    panel.start(&page);
    page.resize(600, 400);
    page.show();
    QWidget* const plot = partOf(*panel.widget("it"), "QCustomPlot");
    QVERIFY(plot);
    QCOMPARE(plot->grab().toImage().pixelColor(2, 2), Theme::of(PanelLook::Theme::Dark).plot);
}

void tst_TypesInLook::fontsOfTypesStay()
{
    wear(PanelLook::Theme::Light);
    TestPanel panel(m_plugins.manager(), panelOf("{device: checkbox, params: {widget/size: 31}}"));
    QWidget page;
    panel.start(&page);
    page.show();
    const auto* const box = panel.widget("it")->findChild<QCheckBox*>();
    QVERIFY(box);
    QCOMPARE(box->font().family(), QString("Arial"));
    QCOMPARE(box->font().pointSize(), 31);
}

void tst_TypesInLook::digitsHaveAirAboveAndBelow()
{
    Display::substituteFonts();
    wear(PanelLook::Theme::Light);
    TestPanel panel(m_plugins.manager(), panelOf("{device: output_digital}"));
    QWidget page;
    panel.start(&page);
    page.resize(1, 1); // as small as it can be
    page.show();
    const auto labels = panel.widget("it")->findChildren<QLabel*>();
    const auto digits = std::find_if(labels.cbegin(), labels.cend(), [](const QLabel* label) {
        return label->font().family() == "Digital-7";
    });
    QVERIFY(digits != labels.cend());
    const QImage picture = (*digits)->grab().toImage();
    const auto hasDigit = [&picture](int y) {
        for (int x = 4; x < picture.width() - 4; ++x) {
            if (picture.pixelColor(x, y) == Qt::white) {
                return true;
            }
        }
        return false;
    };
    int first = 0;
    while (first < picture.height() && !hasDigit(first)) {
        ++first;
    }
    int last = picture.height() - 1;
    while (last > first && !hasDigit(last)) {
        --last;
    }
    const int height = last + 1 - first;
    QVERIFY(height > 10);
    QVERIFY2(first >= height / 10, qPrintable(QString::number(first)));
    QVERIFY2(picture.height() - 1 - last >= height / 10, qPrintable(QString::number(last)));
}

NORVO_TEST(tst_TypesInLook)
#include "tst_TypesInLook.moc"
