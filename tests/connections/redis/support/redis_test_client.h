// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_TEST_CLIENT_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_TEST_CLIENT_H

#include <QByteArray>
#include <QByteArrayList>

#include <memory>

struct redisContext;

/// A program beside the viewer that writes into a server, in a test's hand: each command waits for its reply. It is
/// built on the blocking client of hiredis and shares no code with the connection under test.
class RedisTestClient
{
public:
    explicit RedisTestClient(quint16 port, const QByteArray& password = {});
    ~RedisTestClient();

    /// The reply as text: nil is "(nil)", an error begins with "(error) ", a list is its elements joined by line feeds.
    /// Connects when there is no connection; "(no connection)" when there is none to be had, or no reply in 30 s.
    QByteArray command(const QByteArrayList& arguments);
    /// The elements of a reply that is a list.
    QByteArrayList list(const QByteArrayList& arguments);
    /// Sends all of them before it reads the first reply; the number of replies that are no errors.
    int pipeline(const QList<QByteArrayList>& commands);

private:
    struct ContextDeleter
    {
        void operator()(redisContext* context) const;
    };

    bool connect();
    bool append(const QByteArrayList& arguments);

    quint16 m_port;
    QByteArray m_password;
    std::unique_ptr<redisContext, ContextDeleter> m_context;
};

#endif
