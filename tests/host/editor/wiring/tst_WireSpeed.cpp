// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/editor/wiring/WiredPanel.h"
#include "TestMain.h"

#include <QElapsedTimer>

using norvo::WireCanvas;

namespace {

constexpr int kPairs = 500;

/// A thousand devices and as many connections on one page.
QByteArray thousand()
{
    QByteArray text = "devices:\n";
    for (int i = 0; i < kPairs; ++i) {
        const int row = i / 20;
        const int column = 2 * (i % 20);
        text += QString("  go%1: {device: button, params: {widget: {row: %2, column: %3}}}\n"
                        "  lamp%1: {device: indicator, params: {widget: {row: %2, column: %4}}}\n")
                    .arg(i)
                    .arg(row)
                    .arg(column)
                    .arg(column + 1)
                    .toUtf8();
    }
    text += "connections:\n";
    for (int i = 0; i < kPairs; ++i) {
        text += QString("  - go%1.toggled -> lamp%1.input\n"
                        "  - go%1.toggled -> lamp%2.input\n")
                    .arg(i)
                    .arg((i + 37) % kPairs)
                    .toUtf8();
    }
    return text;
}

/// Counts how often a widget is painted.
class PaintCount : public QObject
{
public:
    explicit PaintCount(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count = 0;
};

} // namespace

class tst_WireSpeed : public QObject
{
    Q_OBJECT

private slots:
    void ofAThousandDevices();
    void nothingIsPaintedWhereNothingChanges();
};

void tst_WireSpeed::ofAThousandDevices()
{
    WiredPanel panel(thousand(), {1280, 800});
    QCOMPARE(panel.canvas->scene().lines().size(), 2 * kPairs);
    QElapsedTimer timer;
    QPixmap picture(panel.canvas->size());
    timer.start();
    panel.canvas->update();
    panel.session->select({"go7"}); // Lays and draws all lines anew.
    const qint64 laid = timer.elapsed();
    panel.canvas->render(&picture);
    qInfo("1,000 connections: laid in %lld ms, drawn in %lld ms", laid, timer.restart() - laid);
    panel.canvas->render(&picture);
    qInfo("drawn again, unchanged, in %lld ms", timer.restart());

    QTest::mouseClick(panel.canvas, Qt::LeftButton, {},
                      panel.canvas->scene().deviceRect("go0").center());
    qInfo("ports opened in %lld ms", timer.restart());
    QPushButton* const key = panel.key("go0.toggled");
    QVERIFY(key);
    panel.settle();
    timer.restart();
    QTest::mouseClick(key, Qt::LeftButton);
    const qint64 found = timer.elapsed();
    panel.canvas->render(&picture);
    qInfo("what fits found in %lld ms, shown after %lld ms", found, timer.elapsed());

    const QRect lamp = panel.canvas->scene().deviceRect("lamp1");
    panel.tap(lamp.center());
    QCOMPARE(panel.connections().last(), QString("go0.toggled -> lamp1.input"));
}

void tst_WireSpeed::nothingIsPaintedWhereNothingChanges()
{
    WiredPanel panel("devices:\n"
                     "  go: {device: button, params: {mode: toggle}}\n"
                     "  lamp: {device: indicator}\n"
                     "connections:\n"
                     "  - go.toggled -> lamp.input\n");
    QTest::qWait(500); // Until all stands.
    PaintCount paints(*panel.canvas);
    QTest::qWait(1500);
    QCOMPARE(paints.count, 0);
    QTest::mouseClick(panel.panel().widget("go")->findChild<QPushButton*>(), Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(paints.count > 0, 60000);
}

NORVO_TEST(tst_WireSpeed)
#include "tst_WireSpeed.moc"
