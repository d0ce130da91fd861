// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/client/redis_inquiry.h>
#include <connections/redis/support/scripted_server.h>

#include <QSignalSpy>
#include <QTest>

using namespace Velk;

namespace {

constexpr int patienceMs = 60000;

} // namespace

class TestRedisInquiry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_isSilent = false;
        m_server = std::make_unique<ScriptedServer>([this](const QByteArrayList& command) {
            return m_isSilent ? QByteArray() : '+' + command.join('-') + "\r\n";
        });
        m_session = std::make_unique<RedisSession>();
        connectSession();
    }
    void cleanup()
    {
        m_session.reset();
        m_socket.reset();
        m_server.reset();
    }

    void itIsFinishedOnceWhenAllRepliesAreIn()
    {
        RedisInquiry inquiry(m_session.get());
        QStringList order;
        connect(&inquiry, &RedisInquiry::finished, this, [&order] { order << "finished"; });

        inquiry.ask({"GET", "a"}, [&order](const RedisReply& reply) { order << reply.text(); });
        inquiry.ask({"GET", "b"}, [&order](const RedisReply& reply) { order << reply.text(); });
        QVERIFY(inquiry.isActive());

        QTRY_COMPARE_WITH_TIMEOUT(order, (QStringList{"GET-a", "GET-b", "finished"}), patienceMs);
        QVERIFY(!inquiry.isActive());
    }

    void aCallbackMayAskMore()
    {
        RedisInquiry inquiry(m_session.get());
        QStringList order;
        connect(&inquiry, &RedisInquiry::finished, this, [&order] { order << "finished"; });

        inquiry.ask({"GET", "a"}, [&](const RedisReply&) {
            order << "a";
            inquiry.ask({"GET", "b"}, [&order](const RedisReply&) { order << "b"; });
        });

        QTRY_COMPARE_WITH_TIMEOUT(order, (QStringList{"a", "b", "finished"}), patienceMs);
    }

    void aCallbackMayDeleteIt()
    {
        auto inquiry = std::make_unique<RedisInquiry>(m_session.get());
        bool isOver = false;
        inquiry->ask({"GET", "a"}, [&inquiry](const RedisReply&) { inquiry.reset(); });
        inquiry->ask({"GET", "b"}, [](const RedisReply&) { QFAIL("The inquiry is gone."); });

        m_session->send(this, {"GET", "c"}, [&isOver](const RedisReply&) { isOver = true; });

        QTRY_VERIFY_WITH_TIMEOUT(isOver, patienceMs);
        QVERIFY(!inquiry);
    }

    void aReplacedConnectionInterruptsItWithTheNumberOfDueReplies()
    {
        m_isSilent = true;
        RedisInquiry inquiry(m_session.get());
        QSignalSpy interrupted(&inquiry, &RedisInquiry::interrupted);
        QSignalSpy finished(&inquiry, &RedisInquiry::finished);
        bool wasCalled = false;
        inquiry.ask({"GET", "a"}, [&wasCalled](const RedisReply&) { wasCalled = true; });
        inquiry.ask({"GET", "b"}, [&wasCalled](const RedisReply&) { wasCalled = true; });

        m_session->setSocket(nullptr);

        QCOMPARE(interrupted.count(), 1);
        QCOMPARE(interrupted.at(0).at(0).toInt(), 2);
        QVERIFY(!inquiry.isActive());
        QVERIFY(!wasCalled);
        QCOMPARE(finished.count(), 0);
    }

    void withoutDueRepliesItIsNotInterrupted()
    {
        RedisInquiry inquiry(m_session.get());
        QSignalSpy interrupted(&inquiry, &RedisInquiry::interrupted);
        QSignalSpy finished(&inquiry, &RedisInquiry::finished);
        inquiry.ask({"GET", "a"}, [](const RedisReply&) {});
        QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, patienceMs);

        m_session->setSocket(nullptr);

        QCOMPARE(interrupted.count(), 0);
    }

    void whatIsAskedWithoutAConnectionIsAskedAgainWithTheNextOne()
    {
        RedisInquiry inquiry(m_session.get());
        QStringList replies;
        const auto ask = [&] {
            inquiry.ask({"GET", "a"}, [&replies](const RedisReply& reply) { replies << reply.text(); });
        };
        connect(&inquiry, &RedisInquiry::interrupted, this, ask);
        m_session->setSocket(nullptr);

        ask();
        QVERIFY(inquiry.isActive());
        connectSession();

        QTRY_COMPARE_WITH_TIMEOUT(replies, QStringList{"GET-a"}, patienceMs);
    }

    void afterCancellingNothingComes()
    {
        RedisInquiry inquiry(m_session.get());
        QSignalSpy finished(&inquiry, &RedisInquiry::finished);
        QStringList replies;
        inquiry.ask({"GET", "a"}, [&replies](const RedisReply& reply) { replies << reply.text(); });

        inquiry.cancel();
        QVERIFY(!inquiry.isActive());
        inquiry.ask({"GET", "b"}, [&replies](const RedisReply& reply) { replies << reply.text(); });

        QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, patienceMs);
        QCOMPARE(replies, QStringList{"GET-b"});
    }

private:
    void connectSession()
    {
        auto socket = std::make_unique<RedisSocket>();
        socket->open({QStringLiteral("127.0.0.1"), m_server->serverPort()}, std::nullopt, QString());
        m_session->setSocket(socket.get());
        m_socket = std::move(socket);
    }

    bool m_isSilent = false;
    std::unique_ptr<ScriptedServer> m_server;
    std::unique_ptr<RedisSession> m_session;
    std::unique_ptr<RedisSocket> m_socket;
};

QTEST_GUILESS_MAIN(TestRedisInquiry)
#include "tst_redis_inquiry.moc"
