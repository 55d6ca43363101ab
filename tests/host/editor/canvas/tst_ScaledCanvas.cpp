// SPDX-License-Identifier: GPL-3.0-or-later

#include "../walk/LiveEditor.h"
#include "TestMain.h"

#include "host/editor/canvas/PageCover.h"
#include "host/editor/wiring/WireCanvas.h"
#include "host/window/look/TouchSize.h"

#include <QGraphicsView>

using norvo::TouchSize::pixels;

namespace {

const QByteArray kPanel = "design: 2400x1600\n"
                          "fit: scale\n"
                          "devices:\n"
                          "  go: {device: button, params: {text: Go}}\n"
                          "  lamp: {device: label}\n";

} // namespace

/// A panel that is shown smaller than it was designed, in the editor.
class tst_ScaledCanvas : public QObject
{
    Q_OBJECT

private slots:
    void whatIsTouchedIsAsLargeAsAFinger();
    void portsAreAsLargeAsAFinger();
    void anotherSizeOfTheWindowIsFollowed();

private:
    static double scaleOf(const LiveEditor& editor)
    {
        return norvo::TouchSize::scaledBy(editor.pages())->transform().m11();
    }
    /// Of a finger, on the screen.
    static int finger(const LiveEditor& editor)
    {
        return pixels(norvo::PanelLook::Touch::Fingers, *editor.window().screen());
    }
    /// Of the numbers beside and above the page, on the screen.
    static QSizeF gutters(const LiveEditor& editor)
    {
        const norvo::PageCover& cover = *editor.shown<norvo::PageCover>();
        return QSizeF(cover.gutter(Qt::Vertical).width(), cover.gutter(Qt::Horizontal).height()) *
               scaleOf(editor);
    }
};

void tst_ScaledCanvas::whatIsTouchedIsAsLargeAsAFinger()
{
    LiveEditor editor(kPanel);
    QVERIFY(scaleOf(editor) < 0.6);
    QTRY_VERIFY_WITH_TIMEOUT(gutters(editor).width() >= finger(editor) - 1, 60000);
    QTRY_VERIFY_WITH_TIMEOUT(gutters(editor).height() >= finger(editor) - 1, 60000);
}

void tst_ScaledCanvas::portsAreAsLargeAsAFinger()
{
    LiveEditor editor(kPanel);
    editor.openPane("wires");
    auto* const canvas = editor.pages().findChild<norvo::WireCanvas*>();
    QVERIFY(canvas);
    LiveEditor::settle(); // The pane beside it makes it smaller.
    QTest::mouseClick(canvas, Qt::LeftButton, {}, canvas->scene().deviceRect("go").center());
    LiveEditor::settle();
    const auto keys = canvas->findChildren<QPushButton*>();
    QVERIFY(!keys.isEmpty());
    for (const QPushButton* const key : keys) {
        QVERIFY(key->isVisible());
        const double height = key->height() * scaleOf(editor);
        QVERIFY2(height >= finger(editor) - 1, qPrintable(QString::number(height)));
    }
}

void tst_ScaledCanvas::anotherSizeOfTheWindowIsFollowed()
{
    LiveEditor editor(kPanel);
    editor.window().resize(800, 480);
    QTRY_VERIFY_WITH_TIMEOUT(scaleOf(editor) < 0.3, 60000);
    QTRY_VERIFY_WITH_TIMEOUT(gutters(editor).height() >= finger(editor) - 1, 60000);
    QVERIFY(gutters(editor).height() < 1.5 * finger(editor));
}

NORVO_TEST(tst_ScaledCanvas)
#include "tst_ScaledCanvas.moc"
