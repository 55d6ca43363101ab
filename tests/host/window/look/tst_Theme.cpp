// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/look/Contrast.h"
#include "host/window/look/Look.h"
#include "host/window/look/Theme.h"
#include "TestMain.h"

#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QTabBar>
#include <QtTest>

using namespace norvo;

class tst_Theme : public QObject
{
    Q_OBJECT

private slots:
    void textsRead_data();
    void textsRead();
    void whatIsOnStandsOut_data();
    void whatIsOnStandsOut();
    void limitLinesAndCurvesReadOnPlots_data();
    void limitLinesAndCurvesReadOnPlots();
    void systemIsAsDarkAsThePlatform();
    void oneFamilyAndASizeForEachKind();
    void fontOfATypeStays();
};

namespace {

void addThemes()
{
    QTest::addColumn<PanelLook::Theme>("theme");
    QTest::newRow("light") << PanelLook::Theme::Light;
    QTest::newRow("dark") << PanelLook::Theme::Dark;
}

} // namespace

Q_DECLARE_METATYPE(norvo::PanelLook::Theme)

void tst_Theme::textsRead_data()
{
    addThemes();
}

void tst_Theme::textsRead()
{
    QFETCH(PanelLook::Theme, theme);
    const Theme& colors = Theme::of(theme);
    const QPalette palette = colors.palette();
    using Roles = QPair<QPalette::ColorRole, QPalette::ColorRole>;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (const Roles& pair : {Roles{QPalette::WindowText, QPalette::Window},
                                  {QPalette::WindowText, QPalette::AlternateBase},
                                  {QPalette::Text, QPalette::Base},
                                  {QPalette::Text, QPalette::Window},
                                  {QPalette::PlaceholderText, QPalette::Base},
                                  {QPalette::ButtonText, QPalette::Button},
                                  {QPalette::HighlightedText, QPalette::Highlight},
                                  {QPalette::ToolTipText, QPalette::ToolTipBase}}) {
            const double ratio =
                contrast(palette.color(group, pair.first), palette.color(group, pair.second));
            QVERIFY2(ratio >= kReadable, qPrintable(QString("group %1: %2 on %3: %4")
                                                        .arg(group)
                                                        .arg(pair.first)
                                                        .arg(pair.second)
                                                        .arg(ratio)));
        }
    }
    QVERIFY(contrast(colors.textOnAccent, colors.accent) >= kReadable);
    QVERIFY(contrast(colors.textOnPlot, colors.plot) >= kReadable);
    QVERIFY(contrast(colors.text, colors.card) >= kReadable);
    QVERIFY(contrast(colors.quiet, colors.card) >= kReadable);
}

void tst_Theme::whatIsOnStandsOut_data()
{
    addThemes();
}

void tst_Theme::whatIsOnStandsOut()
{
    QFETCH(PanelLook::Theme, theme);
    const Theme& colors = Theme::of(theme);
    QVERIFY(contrast(colors.accent, colors.button) >= 3);
    QVERIFY(contrast(colors.accent, colors.page) >= 3);
}

void tst_Theme::limitLinesAndCurvesReadOnPlots_data()
{
    addThemes();
}

void tst_Theme::limitLinesAndCurvesReadOnPlots()
{
    QFETCH(PanelLook::Theme, theme);
    const Theme& colors = Theme::of(theme);
    for (const QColor& line : {QColor(Qt::darkRed), QColor(Qt::blue), colors.selection}) {
        QVERIFY2(contrast(line, colors.plot) >= 3, qPrintable(line.name()));
    }
    QCOMPARE(colors.plotPalette().color(QPalette::Base), colors.plot);
    QCOMPARE(colors.plotPalette().color(QPalette::Text), colors.textOnPlot);
}

/// Also after a panel has set its own palette.
void tst_Theme::systemIsAsDarkAsThePlatform()
{
    const bool isDark = QApplication::palette().color(QPalette::Window).lightness() < 128;
    QCOMPARE(Theme::of(PanelLook::Theme::System).page.lightness() < 128, isDark);
    PanelLook other;
    other.theme = isDark ? PanelLook::Theme::Light : PanelLook::Theme::Dark;
    Look::apply(*qApp, other);
    QCOMPARE(Theme::of(PanelLook::Theme::System).page.lightness() < 128, isDark);
}

void tst_Theme::oneFamilyAndASizeForEachKind()
{
    Look::apply(*qApp, PanelLook());
    QLabel label;
    QLineEdit line;
    QTabBar tabs;
    QWidget other;
    const QVector<QPair<QWidget*, int>> sizes{{&other, 13}, {&tabs, 14}, {&label, 18}, {&line, 22}};
    for (const auto& [widget, points] : sizes) {
        widget->ensurePolished();
        QCOMPARE(widget->font().family(), QString("Liberation Sans"));
        QCOMPARE(widget->font().pointSize(), points);
    }
}

void tst_Theme::fontOfATypeStays()
{
    Look::apply(*qApp, PanelLook());
    QLabel label;
    label.setFont(QFont("Liberation Mono", 7));
    label.ensurePolished();
    QCOMPARE(label.font().family(), QString("Liberation Mono"));
    QCOMPARE(label.font().pointSize(), 7);
}

NORVO_TEST(tst_Theme)
#include "tst_Theme.moc"
