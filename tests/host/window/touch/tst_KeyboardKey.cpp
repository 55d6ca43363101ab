// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/window/touch/KeyboardKey.h"
#include "TestMain.h"

#include <QtTest>

using namespace norvo;

namespace {

/// How often what is drawn begins along a row of a picture.
int piecesIn(const QImage& picture, int y)
{
    const QRgb ground = picture.pixel(0, 0);
    int pieces = 0;
    for (int x = 1; x < picture.width(); ++x) {
        pieces += picture.pixel(x - 1, y) == ground && picture.pixel(x, y) != ground;
    }
    return pieces;
}

} // namespace

/// The key that opens the keyboard on the screen.
class tst_KeyboardKey : public QObject
{
    Q_OBJECT

private slots:
    void pictureIsAKeyboard();
};

/// A frame, two rows of keys in it, the space bar below them.
void tst_KeyboardKey::pictureIsAKeyboard()
{
    KeyboardKey key;
    key.resize(240, 240); // So that nothing runs into what is beside it.
    const QImage picture = key.grab().toImage();
    QVector<int> rows;
    for (int y = 0; y < picture.height(); ++y) {
        const int pieces = piecesIn(picture, y);
        if (rows.isEmpty() || rows.last() != pieces) {
            rows.append(pieces);
        }
    }
    // With the frame's two sides.
    QCOMPARE(rows.count(6), 2);
    QCOMPARE(rows.count(3), 1);
    QVERIFY(rows.lastIndexOf(6) < rows.indexOf(3));
}

NORVO_TEST(tst_KeyboardKey)
#include "tst_KeyboardKey.moc"
