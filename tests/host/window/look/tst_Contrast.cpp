// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/panel/TestPanel.h"
#include "host/panel/file/PanelFile.h"
#include "host/program/PluginSet.h"
#include "host/window/look/Contrast.h"
#include "host/window/look/Look.h"
#include "norvo/BaseDevice.h"
#include "norvo/BaseWidget.h"
#include "TestMain.h"

#include <QLabel>
#include <QtTest>

using namespace norvo;

/// What reads on what, on the plug-ins as they are built.
class tst_Contrast : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void ratioIsThatOfTheGuidelines();
    void captionOfAReadoutReads_data();
    void captionOfAReadoutReads();
    void captionOfAGraphReads_data();
    void captionOfAGraphReads();
    void colorThatASheetNamesStays();
    void groundIsFoundInASheet_data();
    void groundIsFoundInASheet();
    void usualTextComesBackWithTheGround();

private:
    PluginSet m_plugins;
};

namespace {

void addThemes()
{
    QTest::addColumn<PanelLook::Theme>("theme");
    QTest::newRow("light") << PanelLook::Theme::Light;
    QTest::newRow("dark") << PanelLook::Theme::Dark;
}

void wear(PanelLook::Theme theme)
{
    PanelLook look;
    look.theme = theme;
    Look::apply(*qApp, look);
}

/// The contrast of what the label paints: of its ground, which is most of it, to the pixel that
/// differs most.
double paintedContrast(QLabel& label)
{
    const QImage picture = label.grab().toImage();
    const QColor ground = picture.pixelColor(picture.width() - 5, picture.height() / 2);
    double most = 1;
    for (int y = 3; y < picture.height() - 3; ++y) {
        for (int x = 3; x < picture.width() - 3; ++x) {
            most = qMax(most, contrast(ground, picture.pixelColor(x, y)));
        }
    }
    return most;
}

QLabel* labelWith(const QWidget& widget, const QString& text)
{
    for (QLabel* label : widget.findChildren<QLabel*>()) {
        if (label->text() == text) {
            return label;
        }
    }
    return nullptr;
}

PanelDescription onePanel(const QByteArray& device)
{
    Diagnostics diagnostics("panel.yaml");
    return PanelFile::parse("devices:\n  it: " + device, "panel.yaml", diagnostics);
}

} // namespace

Q_DECLARE_METATYPE(norvo::PanelLook::Theme)

void tst_Contrast::initTestCase()
{
    m_plugins.load(NORVO_BUILD_DIR "/plugins");
    QVERIFY(!m_plugins.isEmpty());
}

void tst_Contrast::ratioIsThatOfTheGuidelines()
{
    QCOMPARE(contrast(Qt::black, Qt::white), 21.0);
    QCOMPARE(contrast(Qt::white, Qt::black), 21.0);
    QCOMPARE(contrast(Qt::red, Qt::red), 1.0);
    QVERIFY(qAbs(contrast("#333333", Qt::black) - 1.66) < 0.01);
}

void tst_Contrast::captionOfAReadoutReads_data()
{
    addThemes();
}

/// Also while it blinks in alarm.
void tst_Contrast::captionOfAReadoutReads()
{
    QFETCH(PanelLook::Theme, theme);
    wear(theme);
    TestPanel panel(m_plugins.manager(),
                    onePanel("{device: output_with_progress, params: {name: Memory}}"));
    QWidget page;
    panel.start(&page);
    page.show();
    QLabel* const caption = labelWith(*panel.widget("it"), "Memory");
    QVERIFY(caption);
    QVERIFY(QMetaObject::invokeMethod(panel.device("it"), "input", Q_ARG(double, 50)));
    QVERIFY2(caption->styleSheet().contains("#333333"), qPrintable(caption->styleSheet()));
    QCOMPARE(caption->font().pointSize(), 18);
    const double quiet = paintedContrast(*caption);
    QVERIFY2(quiet >= kReadable, qPrintable(QString::number(quiet)));
    caption->setStyleSheet(caption->styleSheet().replace("#333333", "red"));
    const double loud = paintedContrast(*caption);
    QVERIFY2(loud >= kReadable, qPrintable(QString::number(loud)));
}

void tst_Contrast::captionOfAGraphReads_data()
{
    addThemes();
}

/// Its ground is a role of the palette.
void tst_Contrast::captionOfAGraphReads()
{
    QFETCH(PanelLook::Theme, theme);
    wear(theme);
    TestPanel panel(m_plugins.manager(), onePanel("{device: output_graph, params: {name: Level}}"));
    QWidget page;
    panel.start(&page);
    page.show();
    QLabel* const caption = labelWith(*panel.widget("it"), "Level");
    QVERIFY(caption);
    const double ratio = paintedContrast(*caption);
    QVERIFY2(ratio >= kReadable, qPrintable(QString::number(ratio)));
}

void tst_Contrast::colorThatASheetNamesStays()
{
    wear(PanelLook::Theme::Light);
    QLabel label("text");
    label.setStyleSheet("QLabel { background-color: #333333; color: #444444 }");
    label.show();
    QVERIFY(paintedContrast(label) < 2);
}

void tst_Contrast::groundIsFoundInASheet_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::addColumn<bool>("isDark");
    const auto row = [](const char* name, const char* sheet, bool isDark) {
        QTest::newRow(name) << sheet << isDark;
    };
    row("alone", "background: black", true);
    row("by its longer name", "background-color: black", true);
    row("in a rule without blanks", "QLabel{background:black}", true);
    row("with blanks around the colon", "QLabel { background-color : black ; }", true);
    row("behind another", "border: 1px solid red; background-color: black;", true);
    row("on a line of its own", "border: none;\nbackground:\n black\n", true);
    row("behind a state", "QLabel:enabled { background: black }", true);
    row("where a text has its colour, too", "color: red; background: black", false);
    row("of what is selected", "selection-background-color: black", false);
    row("that is a picture", "background-image: none", false);
    row("in the value of another", "border-image: background", false);
    row("without a value", "background:", false);
    row("named and not set", "background", false);
}

/// A text that the sheet does not colour becomes white on a dark ground.
void tst_Contrast::groundIsFoundInASheet()
{
    QFETCH(QString, sheet);
    QFETCH(bool, isDark);
    wear(PanelLook::Theme::Light);
    QLabel label("text");
    label.setStyleSheet(sheet);
    label.show();
    QCOMPARE(label.palette().color(QPalette::WindowText) == QColor(Qt::white), isDark);
}

void tst_Contrast::usualTextComesBackWithTheGround()
{
    wear(PanelLook::Theme::Light);
    QLabel label("text");
    label.setStyleSheet("background: black");
    label.show();
    QCOMPARE(label.palette().color(QPalette::WindowText), QColor(Qt::white));
    label.setStyleSheet("background: white");
    QCOMPARE(label.palette().color(QPalette::WindowText),
             QApplication::palette().color(QPalette::WindowText));
}

NORVO_TEST(tst_Contrast)
#include "tst_Contrast.moc"
