// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/gui/qml/QmlRenderer.h"
#include "TestMain.h"

#include <QtTest>

class tst_QmlRenderer : public QObject
{
    Q_OBJECT

private slots:
    void openGlThatIsComputedIsKnownByItsName_data()
    {
        QTest::addColumn<QByteArray>("renderer");
        QTest::addColumn<bool>("isSoftware");
        const auto row = [](const char* renderer, bool isSoftware) {
            QTest::newRow(*renderer ? renderer : "none") << QByteArray(renderer) << isSoftware;
        };
        row("", true);
        row("llvmpipe (LLVM 15.0.6, 256 bits)", true);
        row("Gallium 0.4 on llvmpipe (LLVM 3.8, 256 bits)", true);
        row("softpipe", true);
        row("Mesa DRI swrast", true);
        row("Software Rasterizer", true);
        row("Google SwiftShader", true);
        row("Mesa Intel(R) UHD Graphics 620 (KBL GT2)", false);
        row("V3D 4.2", false);
        row("Mali-G31 (Panfrost)", false);
        row("AMD Radeon Graphics (radeonsi, renoir, LLVM 15.0.6, DRM 3.49)", false);
        row("NVIDIA GeForce GTX 1650/PCIe/SSE2", false);
    }
    void openGlThatIsComputedIsKnownByItsName()
    {
        QFETCH(QByteArray, renderer);
        QTEST(norvo::isSoftwareOpenGl(renderer), "isSoftware");
    }
};

NORVO_GUILESS_TEST(tst_QmlRenderer)
#include "tst_QmlRenderer.moc"
