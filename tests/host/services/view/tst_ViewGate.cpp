// SPDX-License-Identifier: GPL-3.0-or-later

#include "TestMain.h"
#include "host/services/view/ViewGate.h"

#include <QtTest>

using norvo::HttpHead;
using norvo::ViewGate;

namespace {

const QByteArray kToken = QByteArrayLiteral("a-long-and-secret-token");

/// The head of a GET at the machine itself.
QByteArray get(const QByteArray& path, const QByteArray& fields = {})
{
    return "GET " + path + " HTTP/1.1\r\nHost: localhost:8080\r\n" + fields + "\r\n";
}

ViewGate::Answer answer(const QByteArray& token, const QByteArray& text)
{
    const auto head = HttpHead::parse(text);
    if (!head) {
        qFatal("no head: %s", text.constData());
    }
    return ViewGate(token).answerTo(*head);
}

} // namespace

class tst_ViewGate : public QObject
{
    Q_OBJECT

private slots:
    void headIsRead();
    void whatIsNoHeadIsNone_data();
    void whatIsNoHeadIsNone();
    void pathsHaveTheirAnswers();
    void nothingButGetIsAnswered();
    void streamNeedsAnUpgrade();
    void withoutATokenTheMachineItselfAsks_data();
    void withoutATokenTheMachineItselfAsks();
    void tokenIsTakenFromFieldAddressOrCookie();
    void wrongTokenIsRefused_data();
    void wrongTokenIsRefused();
    void tokenInTheAddressIsMadeACookie();
    void cookieDoesNotTellTheToken();
    void withATokenTheNameOfTheMachineIsFree();
};

void tst_ViewGate::headIsRead()
{
    const auto head = HttpHead::parse("GET /a/b?token=x%20y&z=1 HTTP/1.1\r\nHost: [::1]:80\r\n"
                                      "AUTHORIZATION:Bearer  abc \r\nCookie: a=1; norvo-view=2\r\n"
                                      "Origin: https://Example.org:8443\r\n\r\nmore");
    QVERIFY(head.has_value());
    QCOMPARE(head->method, QByteArray("GET"));
    QCOMPARE(head->path, QByteArray("/a/b"));
    QCOMPARE(head->queryValue("token"), QByteArray("x y"));
    QCOMPARE(head->hostName(), QByteArray("[::1]"));
    QCOMPARE(head->originName(), QByteArray("example.org"));
    QCOMPARE(head->bearer(), QByteArray("abc"));
    QCOMPARE(head->cookie("norvo-view"), QByteArray("2"));
    QCOMPARE(head->cookie("b"), QByteArray());
    QVERIFY(!head->isUpgrade());
}

void tst_ViewGate::whatIsNoHeadIsNone_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const char* text :
         {"", "\r\n\r\n", "GET / HTTP/1.1\r\n", "GET /\r\n\r\n", "GET a HTTP/1.1\r\n\r\n",
          "GET / FTP/1.1\r\n\r\n", "GET / HTTP/1.1\r\nHost\r\n\r\n",
          "GET / HTTP/1.1\r\n: x\r\n\r\n", "GET / x HTTP/1.1\r\n\r\n", "\x16\x03\x01\r\n\r\n"}) {
        QTest::newRow(text) << QByteArray(text);
    }
}

void tst_ViewGate::whatIsNoHeadIsNone()
{
    QFETCH(QByteArray, text);
    QVERIFY(!HttpHead::parse(text).has_value());
}

void tst_ViewGate::pathsHaveTheirAnswers()
{
    QCOMPARE(answer({}, get("/")), ViewGate::Answer::Page);
    QCOMPARE(answer({}, get("/?token=whatever")), ViewGate::Answer::Page);
    QCOMPARE(answer({}, get("/view.js")), ViewGate::Answer::Script);
    QCOMPARE(answer({}, get("/view.css")), ViewGate::Answer::Style);
    QCOMPARE(answer({}, get("/values")), ViewGate::Answer::Values);
    for (const char* path : {"/view.html", "/../etc/passwd", "/values/", "/set", "//"}) {
        QCOMPARE(answer({}, get(path)), ViewGate::Answer::NotFound);
    }
}

void tst_ViewGate::nothingButGetIsAnswered()
{
    for (const char* method : {"POST", "PUT", "DELETE", "PATCH", "HEAD", "OPTIONS", "get"}) {
        QCOMPARE(answer({}, get("/values").replace("GET", method)), ViewGate::Answer::WrongMethod);
    }
}

void tst_ViewGate::streamNeedsAnUpgrade()
{
    QCOMPARE(answer({}, get("/stream")), ViewGate::Answer::UpgradeNeeded);
    QCOMPARE(answer({}, get("/stream", "Connection: keep-alive, Upgrade\r\n"
                                       "Upgrade: WebSocket\r\n")),
             ViewGate::Answer::Stream);
}

void tst_ViewGate::withoutATokenTheMachineItselfAsks_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isServed");
    const auto from = [](const char* host, const char* origin) {
        return QByteArray("GET /values HTTP/1.1\r\nHost: ") + host + "\r\n" +
               (*origin ? QByteArray("Origin: ") + origin + "\r\n" : QByteArray()) + "\r\n";
    };
    QTest::newRow("localhost") << from("localhost:8080", "") << true;
    QTest::newRow("number") << from("127.0.0.1:8080", "") << true;
    QTest::newRow("version 6") << from("[::1]:8080", "") << true;
    QTest::newRow("own page") << from("localhost", "http://localhost:8080") << true;
    QTest::newRow("another name for it") << from("panel.example.org", "") << false;
    QTest::newRow("name that begins alike") << from("localhost.example.org", "") << false;
    QTest::newRow("page of another") << from("localhost", "https://example.org") << false;
    QTest::newRow("page of nobody") << from("localhost", "null") << false;
    QTest::newRow("shortest scheme") << from("localhost", "a://localhost") << true;
    QTest::newRow("page without a scheme") << from("localhost", "://localhost") << false;
    QTest::newRow("page without a name") << from("localhost", "http://:80") << false;
    QTest::newRow("no name") << QByteArray("GET /values HTTP/1.0\r\n\r\n") << false;
}

void tst_ViewGate::withoutATokenTheMachineItselfAsks()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, isServed);
    QCOMPARE(answer({}, text), isServed ? ViewGate::Answer::Values : ViewGate::Answer::ForeignPage);
}

void tst_ViewGate::tokenIsTakenFromFieldAddressOrCookie()
{
    QCOMPARE(answer(kToken, get("/values", "Authorization: Bearer " + kToken + "\r\n")),
             ViewGate::Answer::Values);
    QCOMPARE(answer(kToken, get("/values?token=" + kToken)), ViewGate::Answer::Values);
    const QByteArray cookie = ViewGate(kToken).setCookie(true).split(';').constFirst();
    QCOMPARE(answer(kToken, get("/values", "Cookie: " + cookie + "\r\n")),
             ViewGate::Answer::Values);
}

void tst_ViewGate::wrongTokenIsRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("none") << get("/values");
    QTest::newRow("empty") << get("/values?token=");
    QTest::newRow("shorter") << get("/values?token=" + kToken.chopped(1));
    QTest::newRow("longer") << get("/values?token=" + kToken + 'x');
    QTest::newRow("another kind") << get("/values", "Authorization: Basic " + kToken + "\r\n");
    QTest::newRow("token as cookie") << get("/values", "Cookie: norvo-view=" + kToken + "\r\n");
    QTest::newRow("empty cookie") << get("/values", "Cookie: norvo-view=\r\n");
    QTest::newRow("missing page") << get("/nothing");
    QTest::newRow("page") << get("/");
}

void tst_ViewGate::wrongTokenIsRefused()
{
    QFETCH(QByteArray, text);
    QCOMPARE(answer(kToken, text), ViewGate::Answer::TokenNeeded);
}

void tst_ViewGate::tokenInTheAddressIsMadeACookie()
{
    QCOMPARE(answer(kToken, get("/?token=" + kToken)), ViewGate::Answer::TakeCookie);
}

void tst_ViewGate::cookieDoesNotTellTheToken()
{
    const QByteArray cookie = ViewGate(kToken).setCookie(true);
    QVERIFY(!cookie.contains(kToken));
    QVERIFY(cookie.contains("; HttpOnly; SameSite=Strict; Secure"));
    QVERIFY(!ViewGate(kToken).setCookie(false).contains("Secure"));
}

void tst_ViewGate::withATokenTheNameOfTheMachineIsFree()
{
    QCOMPARE(answer(kToken,
                    "GET /values?token=" + kToken + " HTTP/1.1\r\nHost: panel.example.org\r\n\r\n"),
             ViewGate::Answer::Values);
}

NORVO_GUILESS_TEST(tst_ViewGate)
#include "tst_ViewGate.moc"
