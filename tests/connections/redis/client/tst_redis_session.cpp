// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/client/redis_session.h>
#include <connections/redis/support/scripted_server.h>

#include <QDeadlineTimer>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace Velk;

namespace {

constexpr int patienceMs = 60000;

std::unique_ptr<RedisSocket> socketTo(quint16 port)
{
    auto socket = std::make_unique<RedisSocket>();
    socket->open({QStringLiteral("127.0.0.1"), port}, std::nullopt, QString());
    return socket;
}

QByteArray askRedirection(const ScriptedServer& node)
{
    return "-ASK 1 127.0.0.1:" + QByteArray::number(node.serverPort()) + "\r\n";
}

} // namespace

class TestRedisSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void repliesComeInTheOrderOfTheCommands()
    {
        ScriptedServer server([](const QByteArrayList& command) { return '+' + command.join('-') + "\r\n"; });
        RedisSession session;
        const auto socket = socketTo(server.serverPort());
        session.setSocket(socket.get());
        QStringList replies;
        const auto append = [&replies](const RedisReply& reply) { replies << reply.text(); };

        session.send(this, {"GET", "a"}, append);
        session.send(this, {"GET", "b"}, append);

        QTRY_COMPARE_WITH_TIMEOUT(replies, (QStringList{"GET-a", "GET-b"}), patienceMs);
    }

    void aCommandWithoutAConnectionIsNotRun()
    {
        RedisSession session;
        bool wasCalled = false;

        session.send(this, {"PING"}, [&wasCalled](const RedisReply&) { wasCalled = true; });

        QVERIFY(!session.isUp());
        QVERIFY(!wasCalled);
    }

    void anErrorIsReportedBeforeTheCallbackRuns_data()
    {
        QTest::addColumn<QByteArray>("error");
        QTest::addColumn<int>("permissions");
        QTest::addColumn<bool>("isReported");
        QTest::newRow("about the server") << QByteArray("-LOADING x\r\n") << int(RedisSession::ReportRefused) << true;
        QTest::newRow("permission") << QByteArray("-NOPERM x\r\n") << int(RedisSession::ReportRefused) << true;
        QTest::newRow("permission, when it is the question")
            << QByteArray("-NOPERM x\r\n") << int(RedisSession::ProbeGranted) << false;
        QTest::newRow("another one, with the same question")
            << QByteArray("-LOADING x\r\n") << int(RedisSession::ProbeGranted) << true;
        QTest::newRow("about one key") << QByteArray("-WRONGTYPE x\r\n") << int(RedisSession::ReportRefused) << false;
        QTest::newRow("about one value") << QByteArray("-ERR no such key\r\n") << int(RedisSession::ReportRefused)
                                         << false;
    }
    void anErrorIsReportedBeforeTheCallbackRuns()
    {
        QFETCH(QByteArray, error);
        QFETCH(int, permissions);
        QFETCH(bool, isReported);
        ScriptedServer server([error](const QByteArrayList&) { return error; });
        RedisSession session;
        const auto socket = socketTo(server.serverPort());
        session.setSocket(socket.get());
        QStringList order;
        connect(&session, &RedisSession::refused, this, [&order] { order << "refused"; });

        session.send(
            this, {"GET", "a"}, [&order](const RedisReply& reply) { order << (reply.isError() ? "error" : "reply"); },
            RedisSession::Permissions(permissions));

        QTRY_VERIFY_WITH_TIMEOUT(order.contains("error"), patienceMs);
        QCOMPARE(order, isReported ? (QStringList{"refused", "error"}) : QStringList{"error"});
    }

    void aReplyOfAFormerConnectionIsDropped()
    {
        ScriptedServer server([](const QByteArrayList&) { return QByteArray("-MOVED 1 127.0.0.1:1\r\n"); });
        RedisSession session;
        auto socket = socketTo(server.serverPort());
        session.setSocket(socket.get());
        bool wasCalled = false;
        // As a connection does that follows a redirection: the session is without a socket when the slot returns.
        connect(&session, &RedisSession::refused, this, [&] {
            session.setSocket(nullptr);
            socket.release()->deleteLater();
        });
        QSignalSpy refused(&session, &RedisSession::refused);

        session.send(this, {"GET", "a"}, [&wasCalled](const RedisReply&) { wasCalled = true; });
        QTRY_COMPARE_WITH_TIMEOUT(refused.count(), 1, patienceMs);

        QVERIFY(!wasCalled);
    }

    void aReplyForAnAskerThatIsGoneIsDropped()
    {
        ScriptedServer server([](const QByteArrayList&) { return QByteArray("+OK\r\n"); });
        RedisSession session;
        const auto socket = socketTo(server.serverPort());
        session.setSocket(socket.get());
        auto asker = std::make_unique<QObject>();
        bool wasCalled = false;
        bool isOver = false;

        session.send(asker.get(), {"GET", "a"}, [&wasCalled](const RedisReply&) { wasCalled = true; });
        session.send(this, {"GET", "b"}, [&isOver](const RedisReply&) { isOver = true; });
        asker.reset();
        QTRY_VERIFY_WITH_TIMEOUT(isOver, patienceMs);

        QVERIFY(!wasCalled);
    }

    void aRedirectedCommandIsRunAtTheAskedNode()
    {
        ScriptedServer node([](const QByteArrayList& command) { return '+' + command.front() + "\r\n"; });
        ScriptedServer server([&node](const QByteArrayList&) { return askRedirection(node); });
        RedisSession session;
        session.openNode = [](const NetworkAddress& address) { return socketTo(address.port); };
        const auto socket = socketTo(server.serverPort());
        session.setSocket(socket.get());
        QStringList replies;

        for (const QByteArray key : {"a", "b"})
            session.send(this, {"GET", key}, [&replies](const RedisReply& reply) { replies << reply.text(); });

        QTRY_COMPARE_WITH_TIMEOUT(replies, (QStringList{"GET", "GET"}), patienceMs);
        QCOMPARE(node.commands(), (QByteArrayList{"ASKING", "GET a", "ASKING", "GET b"}));
        QCOMPARE(node.connectionCount(), 1);
    }

    void anAskedNodeThatStaysSilentEndsInTheRedirectionsError()
    {
        ScriptedServer node([](const QByteArrayList&) { return QByteArray(); });
        ScriptedServer server([&node](const QByteArrayList&) { return askRedirection(node); });
        RedisSession session;
        session.openNode = [](const NetworkAddress& address) { return socketTo(address.port); };
        session.setRedirectionTimeout(50);
        const auto socket = socketTo(server.serverPort());
        session.setSocket(socket.get());
        QStringList replies;

        session.send(this, {"GET", "a"}, [&replies](const RedisReply& reply) { replies << reply.text(); });

        QTRY_COMPARE_WITH_TIMEOUT(replies, QStringList{QString::fromLatin1(askRedirection(node).mid(1)).trimmed()},
                                  patienceMs);
    }

    void anAskedNodeThatCannotBeReachedEndsInTheRedirectionsError()
    {
        ScriptedServer node([](const QByteArrayList&) { return QByteArray(); });
        const QByteArray redirection = askRedirection(node);
        node.close();
        ScriptedServer server([redirection](const QByteArrayList&) { return redirection; });
        RedisSession session;
        session.openNode = [](const NetworkAddress& address) { return socketTo(address.port); };
        session.setRedirectionTimeout(patienceMs);
        const auto socket = socketTo(server.serverPort());
        session.setSocket(socket.get());
        QStringList replies;

        session.send(this, {"GET", "a"}, [&replies](const RedisReply& reply) { replies << reply.text(); });

        QTRY_COMPARE_WITH_TIMEOUT(replies, QStringList{QString::fromLatin1(redirection.mid(1)).trimmed()}, patienceMs);
    }

    void aSessionMayGoWhileAReplyOfTheAskedNodeWaits()
    {
        ScriptedServer node([](const QByteArrayList&) { return QByteArray("+OK\r\n"); });
        ScriptedServer server([&node](const QByteArrayList&) { return askRedirection(node); });
        auto session = std::make_unique<RedisSession>();
        QPointer<RedisSocket> asked;
        session->openNode = [&asked](const NetworkAddress& address) {
            auto socket = socketTo(address.port);
            asked = socket.get();
            return socket;
        };
        const auto socket = socketTo(server.serverPort());
        session->setSocket(socket.get());
        bool wasCalled = false;
        session->send(this, {"GET", "a"}, [&wasCalled](const RedisReply&) { wasCalled = true; });

        // Replies are handled from the event loop: here they have arrived and are not handled yet.
        const QDeadlineTimer deadline(patienceMs);
        while (!wasCalled && !deadline.hasExpired() && !(asked && asked->hasUnreadReplies()))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QVERIFY(asked && asked->hasUnreadReplies());
        session->setSocket(nullptr);
        session.reset();
        QTRY_VERIFY_WITH_TIMEOUT(!asked, patienceMs);

        QVERIFY(!wasCalled);
    }
};

QTEST_GUILESS_MAIN(TestRedisSession)
#include "tst_redis_session.moc"
