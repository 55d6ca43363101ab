// SPDX-License-Identifier: GPL-3.0-or-later

#include "ServedView.h"
#include "TestMain.h"

#include <QProcess>
#include <QSignalSpy>
#include <QSslSocket>
#include <QTemporaryDir>

using norvo::ViewSettings;

/// Who is answered, and how: tokens, origins, certificates, requests that are none.
class tst_ViewAccess : public QObject
{
    Q_OBJECT

private slots:
    void headInPiecesIsRead();
    void headThatIsTooLongIsRefused();
    void whatAViewerSendsIsIgnored();
    void pageOfAnotherMachineSeesNothing();
    void tokenIsNeeded();
    void portInUseIsReported();
    void fileThatIsNoCertificateIsReported();
    void encryptedPanelIsSeen();
};

void tst_ViewAccess::headInPiecesIsRead()
{
    const Served served;
    QTcpSocket socket;
    socket.connectToHost("127.0.0.1", served.port());
    QTRY_COMPARE_WITH_TIMEOUT(socket.state(), QAbstractSocket::ConnectedState, kPatience);
    for (const char letter : get("/values")) {
        socket.write(&letter, 1);
        socket.flush();
        QTest::qWait(1);
    }
    QTRY_VERIFY_WITH_TIMEOUT(socket.bytesAvailable() > 100, kPatience);
    QVERIFY(socket.readAll().endsWith("{\"asked\":1}"));
}

void tst_ViewAccess::headThatIsTooLongIsRefused()
{
    const Served served;
    const QByteArray answer =
        answerTo(served.port(), get("/", "X: " + QByteArray(20000, 'x') + "\r\n"));
    QVERIFY(answer.isEmpty() || answer.startsWith("HTTP/1.1 400 "));
    QCOMPARE(served.asked, 0);
}

void tst_ViewAccess::whatAViewerSendsIsIgnored()
{
    Served served;
    Looking viewer(served.port());
    QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
    for (int i = 0; i < 100; ++i) {
        viewer.sendTextMessage("{\"click\":[10,10]}");
        viewer.sendBinaryMessage(QByteArray(500, '\0'));
    }
    served.label.setText("two");
    QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
}

void tst_ViewAccess::pageOfAnotherMachineSeesNothing()
{
    const Served served;
    Looking viewer(served.port(), "/stream", "https://example.org");
    QSignalSpy refused(&viewer, QOverload<QAbstractSocket::SocketError>::of(&QWebSocket::error));
    QTRY_VERIFY_WITH_TIMEOUT(refused.count() > 0, kPatience);
    QCOMPARE(viewer.tileCount, 0);
}

void tst_ViewAccess::tokenIsNeeded()
{
    ViewSettings settings;
    settings.token = kToken;
    Served served(settings);
    QVERIFY(answerTo(served.port(), get("/values")).startsWith("HTTP/1.1 401 "));
    QVERIFY(answerTo(served.port(), get("/values", "Authorization: Bearer " + kToken + "\r\n"))
                .startsWith("HTTP/1.1 200 "));
    const QByteArray redirection = answerTo(served.port(), get("/?token=" + kToken));
    QVERIFY(redirection.startsWith("HTTP/1.1 303 "));
    QVERIFY(redirection.contains("\r\nLocation: /\r\n"));
    QVERIFY(redirection.contains("\r\nSet-Cookie: norvo-view="));
    Looking stranger(served.port());
    QSignalSpy refused(&stranger, QOverload<QAbstractSocket::SocketError>::of(&QWebSocket::error));
    QTRY_VERIFY_WITH_TIMEOUT(refused.count() > 0, kPatience);
    Looking viewer(served.port(), "/stream?token=" + kToken);
    QTRY_VERIFY_WITH_TIMEOUT(viewer.isAt(served.window), kPatience);
}

void tst_ViewAccess::portInUseIsReported()
{
    const Served first;
    ViewSettings settings;
    settings.port = first.port();
    const Served second(settings);
    QVERIFY(!second.isOpen);
    QVERIFY2(
        second.error.startsWith(QString("cannot listen at 127.0.0.1, port %1: ").arg(first.port())),
        qPrintable(second.error));
}

void tst_ViewAccess::fileThatIsNoCertificateIsReported()
{
    ViewSettings settings;
    settings.certificateFile = "nothing.pem";
    settings.keyFile = "nothing.key";
    const Served served(settings);
    QVERIFY(!served.isOpen);
    QCOMPARE(served.error, QString("nothing.pem holds no certificate in PEM form"));
}

void tst_ViewAccess::encryptedPanelIsSeen()
{
    const QTemporaryDir folder;
    ViewSettings settings;
    settings.certificateFile = folder.filePath("panel.pem");
    settings.keyFile = folder.filePath("panel.key");
    QCOMPARE(QProcess::execute("openssl", {"req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days",
                                           "2", "-subj", "/CN=localhost", "-keyout",
                                           settings.keyFile, "-out", settings.certificateFile}),
             0);
    const Served served(settings);
    QVERIFY2(served.isOpen, qPrintable(served.error));
    QVERIFY(served.service.url().startsWith("https://"));
    QSslSocket socket;
    socket.connectToHostEncrypted("127.0.0.1", served.port());
    socket.ignoreSslErrors(); // Of a certificate that nobody has signed.
    socket.write(get("/values"));
    QTRY_VERIFY_WITH_TIMEOUT(socket.bytesAvailable() > 100, kPatience);
    QVERIFY(socket.readAll().endsWith("{\"asked\":1}"));
    QVERIFY(!answerTo(served.port(), get("/values")).contains("asked"));
}

NORVO_TEST(tst_ViewAccess)
#include "tst_ViewAccess.moc"
