// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "host/services/view/ViewService.h"

#include <QTcpSocket>
#include <QUrl>
#include <QtTest>

#include <memory>
#include <vector>

using norvo::ViewService;
using norvo::ViewSettings;

namespace {

constexpr int kPatience = 60000; ///< ms
constexpr int kMostOpen = 64;

} // namespace

/// Those who connect and say nothing.
class tst_ViewConnections : public QObject
{
    Q_OBJECT

private slots:
    void oneTooManyIsClosedAtOnce();
};

/// The others are given their time to say something first.
void tst_ViewConnections::oneTooManyIsClosedAtOnce()
{
    QWidget window;
    ViewService service(ViewSettings(), {window, "Title", [] { return QByteArray("{}"); }});
    QString error;
    QVERIFY2(service.open(error), qPrintable(error));
    const auto port = quint16(QUrl(service.url()).port());
    QVector<int> closed;
    std::vector<std::unique_ptr<QTcpSocket>> sockets;
    for (int i = 0; i <= kMostOpen; ++i) {
        sockets.push_back(std::make_unique<QTcpSocket>());
        connect(sockets.back().get(), &QTcpSocket::disconnected, this,
                [&closed, i] { closed.append(i); });
        sockets.back()->connectToHost("127.0.0.1", port);
        QVERIFY(sockets.back()->waitForConnected(kPatience));
    }
    QTRY_VERIFY_WITH_TIMEOUT(!closed.isEmpty(), kPatience);
    QCOMPARE(closed.first(), kMostOpen);
    for (const auto& socket : sockets) {
        socket->disconnect(this);
    }
}

NORVO_TEST(tst_ViewConnections)
#include "tst_ViewConnections.moc"
