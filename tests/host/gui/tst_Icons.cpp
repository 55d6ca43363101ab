// SPDX-License-Identifier: GPL-3.0-or-later

#include "ModalDialog.h"

#include "norvo/NumpadDialog.h"
#include "TestMain.h"

#include <QtTest>

/// The arrows of the input field, as a style sheet asks for them: by a name without an ending.
class tst_Icons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void isThereInBothSizes_data();
    void isThereInBothSizes();
    void screenIsTheOneOfThisRun();
    void pointsItsWay_data();
    void pointsItsWay();
};

void tst_Icons::initTestCase()
{
    // A call keeps the linker from leaving the library out, and its resources with it.
    ModalDialog modal([](QWidget& dialog) { dialog.close(); });
    QCOMPARE(NumpadDialog::getInt(nullptr, "", "", 1), 1);
}

void tst_Icons::isThereInBothSizes_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("collapse") << ":/icons/norvogui_collapse";
    QTest::newRow("expand") << ":/icons/norvogui_expand";
}

void tst_Icons::isThereInBothSizes()
{
    QFETCH(QString, name);
    const QPixmap single(name);
    QCOMPARE(single.size(), QSize(32, 32));
    QCOMPARE(single.devicePixelRatio(), 1.0);
    const QPixmap twice(name + "@2x");
    QCOMPARE(twice.size(), QSize(64, 64));
    QCOMPARE(twice.devicePixelRatio(), 2.0);

    // An icon, which is what a style sheet makes of the name, takes the one that the screen needs.
    QWindow window;
    const QPixmap icon = QIcon(name).pixmap(&window, QSize(32, 32));
    const QPixmap& expected = window.devicePixelRatio() == 2 ? twice : single;
    QCOMPARE(icon.size(), expected.size());
    QCOMPARE(icon.devicePixelRatio(), expected.devicePixelRatio());
    QCOMPARE(icon.toImage().convertToFormat(QImage::Format_ARGB32),
             expected.toImage().convertToFormat(QImage::Format_ARGB32));
}

void tst_Icons::screenIsTheOneOfThisRun()
{
    QCOMPARE(qApp->devicePixelRatio(), qEnvironmentVariable("QT_SCALE_FACTOR", "1").toDouble());
}

void tst_Icons::pointsItsWay_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isUp");
    QTest::newRow("collapse points up") << ":/icons/norvogui_collapse" << true;
    QTest::newRow("expand points down") << ":/icons/norvogui_expand" << false;
}

void tst_Icons::pointsItsWay()
{
    QFETCH(QString, name);
    QFETCH(bool, isUp);
    const QImage image = QPixmap(name).toImage();
    const auto alpha = [&](int x, int y) { return image.pixelColor(x, y).alpha(); };
    QVERIFY(alpha(16, isUp ? 12 : 20) > 200);
    QCOMPARE(alpha(16, isUp ? 20 : 12), 0);
    QVERIFY(alpha(8, isUp ? 20 : 12) > 100);
    QCOMPARE(alpha(0, 0), 0);
}

NORVO_TEST(tst_Icons)
#include "tst_Icons.moc"
