// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/PanelWindow.h"

#include "host/panel/file/Diagnostics.h"
#include "host/window/look/PanelStyle.h"
#include "host/window/look/Theme.h"
#include "host/window/look/TouchSize.h"
#include "TestMain.h"

#include <QtTest>
#include <QtWidgets>

using norvo::Diagnostics;
using norvo::PanelLook;
using norvo::PanelWindow;
namespace TouchSize = norvo::TouchSize;

namespace {

Diagnostics someDiagnostics()
{
    Diagnostics diagnostics("p.yaml");
    diagnostics.error({3, 5}, "no such type \"botton\"; did you mean \"button\"?");
    diagnostics.warning({9, 1}, "<b>odd</b> & so");
    diagnostics.warningIn("q.yaml", {1, 1}, "unused");
    return diagnostics;
}

void setPalette(const QColor& background, const QColor& text)
{
    QPalette palette;
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button}) {
        palette.setColor(role, background);
    }
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, text);
    }
    QApplication::setPalette(palette);
}

} // namespace

class tst_PanelWindow : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { QApplication::setPalette(QPalette()); }
    void smallPageGetsTheSmallestSize();
    void largePageGetsItsSizeUpToTheLimit();
    void scrollBarsComeOnlyWhenNeeded();
    void pageFillsTheWindow();
    void closingIsSignalled();
    void keysLeaveAndEnterTheWholeScreen();
    void wholeScreenIsFollowed();
    void nothingLeavesAKeptScreen();
    void errorsAreShownWithTheirPlaces();
    void errorPageBeginsAtItsTop();
    void errorsAreReadAgainByAKey();
    void keyOfTheErrorsIsForAGloveToo();
    void longErrorsAreWrapped();
    void errorsCanBeSelectedAndNotChanged();
    void errorsAreLegible_data();
    void errorsAreLegible();
};

void tst_PanelWindow::smallPageGetsTheSmallestSize()
{
    PanelWindow window("Bench");
    QCOMPARE(window.windowTitle(), QString("Bench"));
    window.fit({1920, 1080});
    QCOMPARE(window.size(), QSize(800, 480));
    window.fit({640, 400});
    QCOMPARE(window.size(), QSize(640, 400));
}

void tst_PanelWindow::largePageGetsItsSizeUpToTheLimit()
{
    PanelWindow window("Bench");
    auto* const content = new QFrame;
    content->setMinimumSize(1000, 700);
    auto* const layout = new QVBoxLayout(window.page());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(content);
    window.fit({1920, 1080});
    QCOMPARE(window.size(), QSize(1000, 700));
    window.fit({900, 1080});
    QCOMPARE(window.size(), QSize(900, 700));
}

void tst_PanelWindow::scrollBarsComeOnlyWhenNeeded()
{
    PanelWindow window("Bench");
    auto* const content = new QFrame;
    content->setMinimumSize(600, 300);
    (new QVBoxLayout(window.page()))->addWidget(content);
    window.fit({800, 480});
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto* const area = window.findChild<QScrollArea*>();
    QVERIFY(!area->horizontalScrollBar()->isVisible());
    QVERIFY(!area->verticalScrollBar()->isVisible());
    window.resize(400, 480);
    QTRY_VERIFY(area->horizontalScrollBar()->isVisible());
    QVERIFY(!area->verticalScrollBar()->isVisible());
}

void tst_PanelWindow::pageFillsTheWindow()
{
    PanelWindow window("Bench");
    window.page()->setAutoFillBackground(true);
    window.page()->setPalette(QPalette(Qt::cyan));
    window.fit({800, 480});
    const QImage picture = window.grab().toImage();
    for (const QPoint& corner : {QPoint(0, 0), QPoint(799, 0), QPoint(0, 479), QPoint(799, 479)}) {
        QCOMPARE(picture.pixelColor(corner), QColor(Qt::cyan));
    }
}

void tst_PanelWindow::closingIsSignalled()
{
    PanelWindow window("Bench");
    QSignalSpy closed(&window, &PanelWindow::closed);
    window.show();
    window.close();
    QCOMPARE(closed.size(), 1);
}

void tst_PanelWindow::keysLeaveAndEnterTheWholeScreen()
{
    PanelWindow window("Bench");
    window.fit({640, 400});
    window.coverScreen();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(window.isFullScreen());
    QCOMPARE(window.geometry(), window.screen()->geometry());
    QTest::keyClick(&window, Qt::Key_Escape);
    QVERIFY(!window.isFullScreen());
    QCOMPARE(window.size(), QSize(640, 400));
    QVERIFY(window.isVisible());
    QVERIFY(window.isVisible());
    window.resize(500, 300);
    QTest::keyClick(&window, Qt::Key_Escape); // There is nothing to leave.
    QVERIFY(window.isVisible());
    QCOMPARE(window.size(), QSize(500, 300));
    QTest::keyClick(&window, Qt::Key_F11);
    QVERIFY(window.isFullScreen());
    QTest::keyClick(&window, Qt::Key_F11);
    QVERIFY(!window.isFullScreen());
    QCOMPARE(window.size(), QSize(500, 300));
}

void tst_PanelWindow::wholeScreenIsFollowed()
{
    PanelWindow window("Bench");
    window.fit({640, 400});
    window.coverScreen();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QRect whole = window.screen()->geometry();
    window.setGeometry(0, 0, 700, 500);
    emit window.screen()->geometryChanged(whole); // As the platform says it.
    QCOMPARE(window.geometry(), whole);
    QVERIFY(window.isFullScreen());
    QTest::keyClick(&window, Qt::Key_Escape);
    emit window.screen()->geometryChanged(whole);
    QTRY_COMPARE(window.size(), QSize(640, 400));
}

void tst_PanelWindow::nothingLeavesAKeptScreen()
{
    PanelWindow window("Bench");
    QSignalSpy closed(&window, &PanelWindow::closed);
    window.keepScreen();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::keyClick(&window, Qt::Key_F11);
    QTest::keyClick(&window, Qt::Key_Escape);
    QTest::keyClick(&window, Qt::Key_F4, Qt::AltModifier);
    QVERIFY(!window.close());
    QVERIFY(window.isFullScreen());
    QVERIFY(window.isVisible());
    QCOMPARE(window.geometry(), window.screen()->geometry());
    QCOMPARE(closed.size(), 0);
}

void tst_PanelWindow::errorsAreShownWithTheirPlaces()
{
    PanelWindow window("Bench");
    window.showErrors(someDiagnostics());
    QCOMPARE(window.findChild<QTextEdit*>()->toPlainText(),
             QString("p.yaml\n"
                     "3:5: error:\nno such type \"botton\"; did you mean \"button\"?\n"
                     "9:1: warning:\n<b>odd</b> & so\n"
                     "q.yaml\n"
                     "1:1: warning:\nunused"));
    const QList<QLabel*> labels = window.page()->findChildren<QLabel*>();
    QCOMPARE(labels.size(), 2);
    QCOMPARE(labels[0]->text(), QString("This panel cannot start"));
    QCOMPARE(labels[1]->text(), QString("1 error, 2 warnings"));
}

void tst_PanelWindow::errorPageBeginsAtItsTop()
{
    Diagnostics diagnostics("p.yaml");
    for (int line = 1; line <= 100; ++line) {
        diagnostics.error({line, 1}, QString("error %1").arg(line));
    }
    PanelWindow window("Bench");
    window.showErrors(diagnostics);
    window.fit({800, 480});
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto* const list = window.findChild<QTextEdit*>();
    QVERIFY(list->verticalScrollBar()->maximum() > 0);
    QCOMPARE(list->verticalScrollBar()->value(), 0);
    QCOMPARE(window.findChild<QScrollArea*>()->verticalScrollBar()->value(), 0);
}

void tst_PanelWindow::errorsAreReadAgainByAKey()
{
    PanelWindow window("Bench");
    window.showErrors(someDiagnostics());
    QVERIFY(!window.page()->findChild<QPushButton*>()); // Nothing would come of it.
    QSignalSpy asked(&window, &PanelWindow::readAgainRequested);
    window.showErrors(someDiagnostics());
    window.fit({800, 480});
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto* const key = window.page()->findChild<QPushButton*>();
    QVERIFY(key);
    const int target = TouchSize::pixels(PanelLook::Touch::Fingers, *window.screen());
    QVERIFY(key->width() >= target && key->height() >= target);
    QTest::mouseClick(key, Qt::LeftButton);
    QCOMPARE(asked.size(), 1);
    QTest::keyClick(&window, Qt::Key_F5);
    QTRY_COMPARE(asked.size(), 2);
    QTest::keyClick(window.findChild<QTextEdit*>(), Qt::Key_F5);
    QTRY_COMPARE(asked.size(), 3);
    window.showErrors(someDiagnostics());
    QCOMPARE(window.page()->findChildren<QPushButton*>().size(), 1);
}

void tst_PanelWindow::keyOfTheErrorsIsForAGloveToo()
{
    constexpr int target = 127; // 20 mm at 160 dpi
    QApplication::setStyle(
        new norvo::PanelStyle(norvo::Theme::of(PanelLook::Theme::Light), target));
    PanelWindow window("Bench");
    const QSignalSpy asked(&window, &PanelWindow::readAgainRequested);
    window.showErrors(someDiagnostics());
    window.fit({800, 480});
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const auto* const key = window.page()->findChild<QPushButton*>();
    const bool isLarge = key && key->width() >= target && key->height() >= target;
    QApplication::setStyle("fusion");
    QVERIFY(isLarge);
}

void tst_PanelWindow::longErrorsAreWrapped()
{
    Diagnostics diagnostics(QString(300, 'f'));
    diagnostics.error({1, 1}, QString(300, 'x') + QString(" word").repeated(100));
    PanelWindow window("Bench");
    window.showErrors(diagnostics);
    window.fit({200, 240});
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.width(), 200);
    for (const QScrollArea* area : window.findChildren<QScrollArea*>()) {
        QCOMPARE(area->horizontalScrollBar()->maximum(), 0);
    }
    QCOMPARE(window.findChild<QTextEdit*>()->horizontalScrollBar()->maximum(), 0);
}

void tst_PanelWindow::errorsCanBeSelectedAndNotChanged()
{
    PanelWindow window("Bench");
    window.showErrors(someDiagnostics());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto* const list = window.findChild<QTextEdit*>();
    const QString before = list->toPlainText();
    const QPoint onFirstWord(10, 12);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, onFirstWord);
    QVERIFY2(before.contains(list->textCursor().selectedText()) &&
                 !list->textCursor().selectedText().isEmpty(),
             "a double click selects a word");
    QTest::keyClicks(list, "x");
    QTest::keyClick(list, Qt::Key_Delete);
    QCOMPARE(list->toPlainText(), before);
}

void tst_PanelWindow::errorsAreLegible_data()
{
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("text");
    QTest::newRow("light") << QColor("#efefef") << QColor("#101010");
    QTest::newRow("dark") << QColor("#202020") << QColor("#f0f0f0");
}

void tst_PanelWindow::errorsAreLegible()
{
    QFETCH(QColor, background);
    QFETCH(QColor, text);
    setPalette(background, text);
    PanelWindow window("Bench");
    window.showErrors(someDiagnostics());
    window.fit({800, 480});
    const QImage picture = window.grab().toImage();
    QCOMPARE(picture.pixelColor(2, 2), background);
    const QList<QWidget*> texts{window.findChildren<QLabel*>()[0],
                                window.findChild<QTextEdit*>()->viewport()};
    for (QWidget* widget : texts) {
        const QPoint corner = widget->mapTo(&window, QPoint());
        int inked = 0;
        for (int x = 0; x < 200; ++x) {
            for (int y = 0; y < widget->height(); ++y) {
                const QColor pixel = picture.pixelColor(corner + QPoint(x, y));
                inked += qAbs(pixel.lightness() - text.lightness()) < 40;
            }
        }
        QVERIFY2(inked > 50, qPrintable(QString("%1 pixels of text").arg(inked)));
    }
}

NORVO_TEST(tst_PanelWindow)
#include "tst_PanelWindow.moc"
