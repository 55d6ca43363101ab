// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"

#include "host/editor/wiring/PortKeys.h"
#include "host/window/look/TouchSize.h"

#include <QtTest>

using norvo::Port;
using norvo::PortKeys;

/// The keys of a device's ports, over its edges.
class tst_PortKeys : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void keysStandAroundTheEdges();
    void keysStayOnTheCanvas_data();
    void keysStayOnTheCanvas();
    void sidesOfANarrowDeviceDoNotOverlap();
    void keyIsAFingerWide();
    void longNameTakesHalfOfANarrowCanvas();
    void longNameTakesNoMoreOfAWideOne();
    void whatFindsNoRoomIsBehindTheLastKey();
    void keysGoWithTheirOwner();

private:
    static QVector<PortKeys::Key> keysNamed(const QStringList& names, bool isOutput)
    {
        QVector<PortKeys::Key> keys;
        for (const QString& name : names) {
            keys.append(PortKeys::Key{{"device", name, isOutput, {name + "()"}, {}}, {}});
        }
        return keys;
    }
    QVector<QRect> places(const PortKeys& keys, const QStringList& names, bool isOutput) const
    {
        QVector<QRect> found;
        for (const auto& key : keysNamed(names, isOutput)) {
            found.append(keys.keyRect(key.port));
        }
        return found;
    }
    int target() const
    {
        return norvo::TouchSize::pixels(norvo::PanelLook::Touch::Fingers, *m_canvas);
    }

    std::unique_ptr<QWidget> m_canvas;
    const QStringList m_two{"first one", "second one"};
};

void tst_PortKeys::init()
{
    m_canvas = std::make_unique<QWidget>();
    m_canvas->resize(800, 600);
    m_canvas->show();
}

void tst_PortKeys::keysStandAroundTheEdges()
{
    const QRect device(300, 200, 300, 100);
    const PortKeys keys(*m_canvas, device, keysNamed(m_two, false), keysNamed(m_two, true));
    const auto inputs = places(keys, m_two, false);
    const auto outputs = places(keys, m_two, true);
    QCOMPARE(inputs[0].left(), device.left() - inputs[0].width() / 2);
    QCOMPARE(inputs[1].left(), inputs[0].left());
    QCOMPARE(outputs[0].left(), device.right() - outputs[0].width() / 2);
    const int middle = (inputs[0].top() + inputs[1].bottom()) / 2;
    QVERIFY(std::abs(middle - device.center().y()) <= 3);
}

void tst_PortKeys::keysStayOnTheCanvas_data()
{
    QTest::addColumn<QRect>("device");
    QTest::newRow("left") << QRect(0, 200, 400, 100);
    QTest::newRow("right") << QRect(400, 200, 400, 100);
    QTest::newRow("narrow at the right") << QRect(780, 200, 20, 100);
    QTest::newRow("top") << QRect(300, 0, 300, 20);
    QTest::newRow("bottom") << QRect(300, 580, 300, 20);
    QTest::newRow("all of it") << QRect(0, 0, 800, 600);
}

void tst_PortKeys::keysStayOnTheCanvas()
{
    QFETCH(QRect, device);
    const PortKeys both(*m_canvas, device, keysNamed(m_two, false), keysNamed(m_two, true));
    const PortKeys ins(*m_canvas, device, keysNamed(m_two, false), {});
    const PortKeys outs(*m_canvas, device, {}, keysNamed(m_two, true));
    const auto all = places(both, m_two, false) + places(both, m_two, true) +
                     places(ins, m_two, false) + places(outs, m_two, true);
    QCOMPARE(all.size(), 8);
    for (const QRect& key : all) {
        QVERIFY2(m_canvas->rect().contains(key), qPrintable(QString::number(key.left())));
    }
    QVERIFY(places(both, m_two, false)[0].right() < places(both, m_two, true)[0].left());
}

void tst_PortKeys::sidesOfANarrowDeviceDoNotOverlap()
{
    const QRect device(400, 200, 20, 100);
    const PortKeys keys(*m_canvas, device, keysNamed(m_two, false), keysNamed(m_two, true));
    const QRect input = places(keys, m_two, false)[0];
    const QRect output = places(keys, m_two, true)[0];
    QVERIFY(input.right() < output.left());
    QVERIFY(output.left() - input.right() < 10); // And no further apart than that takes.
}

void tst_PortKeys::keyIsAFingerWide()
{
    const PortKeys keys(*m_canvas, {300, 200, 300, 100}, keysNamed({"i"}, false), {});
    QCOMPARE(places(keys, {"i"}, false)[0].size(), QSize(target(), target()));
}

void tst_PortKeys::longNameTakesHalfOfANarrowCanvas()
{
    m_canvas->resize(300, 400);
    const QString name(100, 'm');
    const PortKeys keys(*m_canvas, {50, 100, 200, 100}, keysNamed({name}, false), {});
    QVERIFY(places(keys, {name}, false)[0].width() <= 150);
    QVERIFY(places(keys, {name}, false)[0].width() > 100);
}

void tst_PortKeys::longNameTakesNoMoreOfAWideOne()
{
    m_canvas->resize(2000, 400);
    const QString name(100, 'm');
    const PortKeys keys(*m_canvas, {900, 100, 200, 100}, keysNamed({name}, false), {});
    QVERIFY(places(keys, {name}, false)[0].width() <= 220);
    QVERIFY(places(keys, {name}, false)[0].width() > 170);
}

void tst_PortKeys::whatFindsNoRoomIsBehindTheLastKey()
{
    QStringList names;
    for (int i = 0; i < 40; ++i) {
        names.append(QString("port%1").arg(i));
    }
    PortKeys keys(*m_canvas, {300, 200, 300, 100}, keysNamed(names, false), {});
    const QSignalSpy listWanted(&keys, &PortKeys::listWanted);
    auto* const all = m_canvas->findChild<QPushButton*>("allInputs");
    QVERIFY(all);
    QVERIFY(m_canvas->rect().contains(all->geometry()));
    QTest::mouseClick(all, Qt::LeftButton);
    QCOMPARE(listWanted.size(), 1);
    QCOMPARE(listWanted.first().first().toBool(), false);
    QVERIFY(!keys.keyRect(keysNamed({"port0"}, false).first().port).isEmpty());
    QVERIFY(keys.keyRect(keysNamed({"port39"}, false).first().port).isEmpty());
}

void tst_PortKeys::keysGoWithTheirOwner()
{
    {
        const PortKeys keys(*m_canvas, {300, 200, 300, 100}, keysNamed(m_two, false), {});
        QCOMPARE(m_canvas->findChildren<QPushButton*>().size(), 2);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_canvas->findChildren<QPushButton*>().size(), 0);
}

NORVO_TEST(tst_PortKeys)

#include "tst_PortKeys.moc"
