// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/redis/memory/redis_key_resolver.h>
#include <connections/redis/support/parsed_reply.h>
#include <connections/redis/support/scripted_server.h>

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Velk;

namespace {

constexpr int patienceMs = 60000;
const QByteArray readId = "1700000002000-0";
const QByteArray newestId = "1700000001000-0"; // of every stream on the server, which has come back older

} // namespace

class TestRedisKeyResolver : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_silentKey.clear();
        m_server = std::make_unique<ScriptedServer>([this](const QByteArrayList& command) {
            if (command.first() == "TYPE")
                return QByteArrayLiteral("+stream\r\n");
            const bool isSilent = command.last() == m_silentKey;
            return isSilent ? QByteArray() : list({bulk("last-generated-id"), bulk(newestId)});
        });
        m_session = std::make_unique<RedisSession>();
        connectSession();
        m_intake = std::make_unique<RedisSampleIntake>(std::make_shared<RedisCarryOver>(&m_ledger));
    }
    void cleanup()
    {
        m_session.reset();
        m_socket.reset();
        m_server.reset();
    }

    void streamsThatCameBackOlderAreReportedTogether()
    {
        RedisKeyResolver resolver(m_session.get(), m_intake.get());
        QSignalSpy resolved(&resolver, &RedisKeyResolver::resolved);
        QSignalSpy reported(m_session.get(), &RedisSession::reported);

        resolver.resolve({streamReadUntil("A", readId), streamReadUntil("B", readId), streamReadUntil("C", newestId)});

        QTRY_COMPARE_WITH_TIMEOUT(resolved.count(), 1, patienceMs);
        QCOMPARE(reported.count(), 1);
        QCOMPARE(reported.first().first().toString(), QString("Redis: older data"));
        const QString message = reported.first().last().toString();
        QVERIFY2(message.contains("of 2 keys, "), qPrintable(message));
    }

    void aResolutionThatWasCutOffLeavesNothingToReport()
    {
        RedisKeyResolver resolver(m_session.get(), m_intake.get());
        QSignalSpy resolved(&resolver, &RedisKeyResolver::resolved);
        QSignalSpy reported(m_session.get(), &RedisSession::reported);
        m_silentKey = "B";
        const RedisWatchedKeyPtr older = streamReadUntil("A", readId);
        resolver.resolve({older, streamReadUntil("B", readId)});
        QTRY_COMPARE_WITH_TIMEOUT(older->sources.front().position.id, newestId, patienceMs); // found, not reported yet

        resolver.clear();
        connectSession();
        resolver.resolve({streamReadUntil("C", newestId)});

        QTRY_COMPARE_WITH_TIMEOUT(resolved.count(), 1, patienceMs);
        QCOMPARE(reported.count(), 0);
    }

private:
    void connectSession()
    {
        auto socket = std::make_unique<RedisSocket>();
        socket->open({QStringLiteral("127.0.0.1"), m_server->serverPort()}, std::nullopt, QString());
        m_session->setSocket(socket.get());
        m_socket = std::move(socket);
    }

    // A key whose stream was read up to this entry.
    RedisWatchedKeyPtr streamReadUntil(const QString& name, const QByteArray& id)
    {
        RedisSource source;
        source.key = name.toUtf8();
        source.isAlwaysStream = true;
        source.position.id = id;
        source.hasPosition = true;
        const RedisWatchedKeyPtr key = m_intake->createKey(name);
        key->sources = {source};
        return key;
    }

    QByteArray m_silentKey; // no answer about this one
    LossLedger m_ledger;
    std::unique_ptr<ScriptedServer> m_server;
    std::unique_ptr<RedisSession> m_session;
    std::unique_ptr<RedisSocket> m_socket;
    std::unique_ptr<RedisSampleIntake> m_intake;
};

QTEST_GUILESS_MAIN(TestRedisKeyResolver)
#include "tst_redis_key_resolver.moc"
