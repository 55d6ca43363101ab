// SPDX-License-Identifier: GPL-3.0-or-later

#include "norvo/BaseDevice.h"
#include "norvo/DeviceManager.h"
#include "norvo/DevicePluginInterface.h"
#include "norvo/DoubleVec.h"
#include "TestMain.h"

#include <QLibrary>
#include <QPluginLoader>
#include <QtTest>

#include <memory>

namespace {

class Source : public QObject
{
    Q_OBJECT

signals:
    void output(DoubleVec data);
};

class Sink : public QObject
{
    Q_OBJECT

public slots:
    void input(DoubleVec data) { received.append(data); }

public:
    QVector<DoubleVec> received;
};

} // namespace

/// The plot library is in the process before any of this, and has had its own way with arrays.
class tst_DoubleVec : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QLibrary plot("libQCustomPlot.so.2.1");
        // Found before any plug-in's own symbols, as in a program that is linked with it.
        plot.setLoadHints(QLibrary::ExportExternalSymbolsHint);
        QVERIFY2(plot.load(), qPrintable(plot.errorString()));
        using TypeId = int (*)();
        const auto plotsTypeId =
            TypeId(plot.resolve("_ZN11QMetaTypeIdI7QVectorIdEE14qt_metatype_idEv"));
        QVERIFY2(plotsTypeId, "the plot library no longer exports its array type");
        QCOMPARE(QMetaType::typeName(plotsTypeId()), "QVector<double>");
        QCOMPARE(QMetaType::type("DoubleVec"), 0);
    }

    void queuedWireCarriesArraysBetweenDevicesOfAPlugin()
    {
        QPluginLoader loader(NORVO_BUILD_DIR "/tests/fixtures/relays/libfixture_relays.so");
        auto* const plugin = qobject_cast<DevicePluginInterface*>(loader.instance());
        QVERIFY2(plugin, qPrintable(loader.errorString()));
        DeviceManager manager;
        plugin->registerDeviceType(manager);
        const std::unique_ptr<BaseDevice> from(manager.createDevice("array_relay"));
        const std::unique_ptr<BaseDevice> to(manager.createDevice("array_relay"));

        QVERIFY(connect(from.get(), SIGNAL(output(DoubleVec)), to.get(), SLOT(input(DoubleVec)),
                        Qt::QueuedConnection));
        QVERIFY(QMetaType::type("DoubleVec") != 0);
        QVERIFY(QMetaObject::invokeMethod(from.get(), "input", Q_ARG(DoubleVec, DoubleVec({1}))));
        QCOMPARE(from->property("arrays").toInt(), 1);
        QCOMPARE(to->property("arrays").toInt(), 0);
        QTRY_COMPARE(to->property("arrays").toInt(), 1);
        QCOMPARE(to->property("last").userType(), QMetaType::type("DoubleVec"));
        QCOMPARE(to->property("last").value<DoubleVec>(), DoubleVec({1}));
    }

    void isFoundByItsName()
    {
        const int type = qMetaTypeId<DoubleVec>();
        QCOMPARE(QMetaType::type("DoubleVec"), type);
        QCOMPARE(QMetaType::typeName(type), "DoubleVec");
    }

    void hasTheAgreedSizeAndFlags()
    {
        const QMetaType type(qMetaTypeId<DoubleVec>());
        QCOMPARE(type.sizeOf(), 8);
        QCOMPARE(int(type.flags()), 0x103);
        QCOMPARE(int(QMetaType::typeFlags(qMetaTypeId<DoubleVec>())),
                 int(QMetaType::NeedsConstruction | QMetaType::NeedsDestruction |
                     QMetaType::WasDeclaredAsMetaType));
    }

    void queuedConnectionCarriesTheSharedArray()
    {
        Source source;
        Sink sink;
        QVERIFY(connect(&source, SIGNAL(output(DoubleVec)), &sink, SLOT(input(DoubleVec)),
                        Qt::QueuedConnection));
        const DoubleVec data{1, 2.5, -3};
        emit source.output(data);
        QVERIFY(sink.received.isEmpty());
        QTRY_COMPARE(sink.received.size(), 1);
        QCOMPARE(sink.received.first(), data);
        QCOMPARE(sink.received.first().constData(), data.constData());
    }

    void metaTypeCopiesAndDestroys()
    {
        const DoubleVec data{1, 2};
        const QVariant variant = QVariant::fromValue(data);
        QCOMPARE(QString(variant.typeName()), QString("DoubleVec"));
        QVariant copy = variant;
        QCOMPARE(copy.value<DoubleVec>(), data);
        copy.clear();
        QCOMPARE(variant.value<DoubleVec>(), data);
    }
};

NORVO_GUILESS_TEST(tst_DoubleVec)

#include "tst_DoubleVec.moc"
