// SPDX-License-Identifier: GPL-3.0-or-later

#include "../../window/ShownPanel.h"
#include "TestMain.h"
#include "host/services/view/PanelPicture.h"
#include "host/window/look/Look.h"

#include "norvo/BaseDevice.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <cstring>

using norvo::Frame;
using norvo::PanelPicture;
using norvo::Tile;

namespace {

/// What somebody sees who is sent the frames.
class Seen
{
public:
    void take(const Frame& frame)
    {
        if (frame.size != m_picture.size()) {
            m_picture = QImage(frame.size, QImage::Format_RGB32);
            m_picture.fill(Qt::magenta);
        }
        for (const Tile& tile : frame.tiles) {
            for (int y = 0; y < tile.image.height(); ++y) {
                std::memcpy(m_picture.scanLine(tile.at.y() + y) + tile.at.x() * int(sizeof(QRgb)),
                            tile.image.constScanLine(y), size_t(tile.image.width()) * sizeof(QRgb));
            }
        }
    }

    /// Where it differs from what the window shows; empty: nowhere.
    QRect differenceFrom(QWidget& window) const
    {
        const QImage shown = window.grab().toImage().convertToFormat(QImage::Format_RGB32);
        QRect different;
        for (int y = 0; y < shown.height(); ++y) {
            for (int x = 0; x < shown.width(); ++x) {
                if (!m_picture.valid(x, y) || shown.pixel(x, y) != m_picture.pixel(x, y)) {
                    different |= QRect(x, y, 1, 1);
                }
            }
        }
        return different;
    }

private:
    QImage m_picture;
};

/// Three labels below each other, 300 pixels high and 200 wide, which draw nothing by themselves.
class Labels
{
public:
    Labels()
    {
        window.resize(200, 300);
        auto* const layout = new QVBoxLayout(&window);
        for (QLabel*& label : labels) {
            label = new QLabel("one");
            layout->addWidget(label);
        }
        window.show();
        picture.setWatched(true);
    }

    Frame take()
    {
        QTest::qWait(20); // What is to be drawn is drawn.
        const Frame frame = picture.take();
        seen.take(frame);
        return frame;
    }

    QWidget window;
    QLabel* labels[3];
    PanelPicture picture{window};
    Seen seen;
};

int pixelsOf(const Frame& frame)
{
    int count = 0;
    for (const Tile& tile : frame.tiles) {
        count += tile.image.width() * tile.image.height();
    }
    return count;
}

} // namespace

class tst_PanelPicture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { norvo::Look::apply(*qApp, {}); }
    void firstFrameIsTheWholePicture();
    void frameWithoutChangesIsEmpty();
    void changeIsSentInItsTiles();
    void textThatLooksAsBeforeIsNoChange();
    void widgetThatComesLaterIsSeen();
    void hiddenWidgetIsGone();
    void scrolledTextIsSeen();
    void newSizeIsAWholePicture();
    void windowThatIsHiddenHasNoPicture();
    void unwatchedPictureListensToNothing();
    void dialogOverTheWindowIsNotSeen();
    void framesAddUpToThePanel();
    void scaledPanelIsSeen();
};

void tst_PanelPicture::firstFrameIsTheWholePicture()
{
    Labels shown;
    const Frame frame = shown.take();
    QCOMPARE(frame.size, QSize(200, 300));
    QCOMPARE(pixelsOf(frame), 200 * 300);
    QCOMPARE(shown.seen.differenceFrom(shown.window), QRect());
}

void tst_PanelPicture::frameWithoutChangesIsEmpty()
{
    Labels shown;
    shown.take();
    for (int i = 0; i < 60; ++i) { // The whole picture is compared now and then.
        const Frame frame = shown.picture.take();
        QCOMPARE(frame.size, QSize(200, 300));
        QVERIFY(frame.tiles.isEmpty());
    }
}

void tst_PanelPicture::changeIsSentInItsTiles()
{
    Labels shown;
    shown.take();
    shown.labels[0]->setText("two");
    const Frame frame = shown.take();
    QVERIFY(!frame.tiles.isEmpty());
    const int tile = PanelPicture::kTile;
    QVERIFY(pixelsOf(frame) <= 4 * tile * tile);
    QCOMPARE(shown.seen.differenceFrom(shown.window), QRect());
}

void tst_PanelPicture::textThatLooksAsBeforeIsNoChange()
{
    Labels shown;
    shown.take();
    shown.labels[0]->update();
    QVERIFY(shown.take().tiles.isEmpty());
}

void tst_PanelPicture::widgetThatComesLaterIsSeen()
{
    Labels shown;
    shown.take();
    auto* const label = new QLabel("new");
    shown.window.layout()->addWidget(label);
    shown.take();
    QCOMPARE(shown.seen.differenceFrom(shown.window), QRect());
    label->setText("newer");
    QVERIFY(!shown.take().tiles.isEmpty());
    QCOMPARE(shown.seen.differenceFrom(shown.window), QRect());
}

void tst_PanelPicture::hiddenWidgetIsGone()
{
    Labels shown;
    shown.take();
    shown.labels[1]->hide();
    shown.take();
    QCOMPARE(shown.seen.differenceFrom(shown.window), QRect());
}

void tst_PanelPicture::scrolledTextIsSeen()
{
    QPlainTextEdit text;
    text.setPlainText(QString("line\nanother\n").repeated(100));
    text.resize(300, 200);
    text.show();
    PanelPicture picture(text);
    picture.setWatched(true);
    Seen seen;
    QTest::qWait(20);
    seen.take(picture.take());
    text.verticalScrollBar()->setValue(33);
    QTest::qWait(20);
    seen.take(picture.take());
    QCOMPARE(seen.differenceFrom(text), QRect());
}

void tst_PanelPicture::newSizeIsAWholePicture()
{
    Labels shown;
    shown.take();
    shown.window.resize(300, 250);
    const Frame frame = shown.take();
    QCOMPARE(frame.size, QSize(300, 250));
    QCOMPARE(pixelsOf(frame), 300 * 250);
    QCOMPARE(shown.seen.differenceFrom(shown.window), QRect());
}

void tst_PanelPicture::windowThatIsHiddenHasNoPicture()
{
    Labels shown;
    shown.window.hide();
    QVERIFY(shown.take().size.isEmpty());
    shown.window.show();
    QCOMPARE(shown.take().size, QSize(200, 300));
}

void tst_PanelPicture::unwatchedPictureListensToNothing()
{
    Labels shown;
    shown.take();
    shown.picture.setWatched(false);
    shown.labels[0]->setText("two");
    QVERIFY(shown.take().size.isEmpty());
    shown.picture.setWatched(true);
    QCOMPARE(pixelsOf(shown.take()), 200 * 300);
}

void tst_PanelPicture::dialogOverTheWindowIsNotSeen()
{
    Labels shown;
    shown.take();
    QWidget pinPad(&shown.window, Qt::Dialog);
    QPushButton key("5", &pinPad);
    pinPad.show();
    key.setDown(true);
    QVERIFY(shown.take().tiles.isEmpty());
}

void tst_PanelPicture::framesAddUpToThePanel()
{
    ShownPanel shown(
        "title: All\n"
        "devices:\n"
        "  digital: {device: output_digital, params: {name: Processor, timeout: 60000, "
        "widget: {row: 0, column: 0, valueSize: 40, precision: 0, maxThreshold: 90}}}\n"
        "  lamp: {device: indicator, params: {text: Lamp, widget: {row: 0, column: 1}}}\n"
        "  bar: {device: output_bar, params: {name: Bar, widget: {row: 1, column: 0}}}\n"
        "  graph: {device: output_graph, params: {name: Graph, widget: {row: 1, column: 1}}}\n"
        "  log: {device: multiline, params: {widget: {row: 2, column: 0, colspan: 2}}}\n",
        {640, 480});
    PanelPicture picture(shown.window);
    picture.setWatched(true);
    Seen seen;
    for (int i = 0; i < 40; ++i) {
        const double value = i % 3 == 0 ? 100 : 90 + i % 10;
        for (const char* id : {"digital", "bar", "graph"}) {
            QMetaObject::invokeMethod(shown.panel.device(id), "input", Q_ARG(double, value));
        }
        QMetaObject::invokeMethod(shown.panel.device("lamp"), "input", Q_ARG(bool, i % 2 == 0));
        QMetaObject::invokeMethod(shown.panel.device("log"), "input",
                                  Q_ARG(QString, QString("line %1").arg(i)));
        QTest::qWait(20);
        seen.take(picture.take());
        if (i < 20) {
            // A graph goes on by itself meanwhile, in its own place.
            const QWidget* const graph = shown.panel.widget("graph");
            const QRect moving(graph->mapTo(&shown.window, QPoint()), graph->size());
            const QRect different = seen.differenceFrom(shown.window);
            QVERIFY2(moving.contains(different) || different.isEmpty(),
                     qPrintable(QString("frame %1: %2,%3 %4x%5")
                                    .arg(i)
                                    .arg(different.x())
                                    .arg(different.y())
                                    .arg(different.width())
                                    .arg(different.height())));
        }
    }
}

void tst_PanelPicture::scaledPanelIsSeen()
{
    ShownPanel shown("title: All\n"
                     "design: 320x240\n"
                     "fit: scale\n"
                     "devices:\n"
                     "  digital: {device: output_digital, params: {timeout: 60000}}\n",
                     {640, 480});
    PanelPicture picture(shown.window);
    picture.setWatched(true);
    Seen seen;
    for (int i = 0; i < 10; ++i) {
        QMetaObject::invokeMethod(shown.panel.device("digital"), "input", Q_ARG(double, i));
        QTest::qWait(20);
        seen.take(picture.take());
        QCOMPARE(seen.differenceFrom(shown.window), QRect());
    }
}

NORVO_TEST(tst_PanelPicture)
#include "tst_PanelPicture.moc"
