// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_DECLARATIONS_TEST_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_DECLARATIONS_TEST_H

#include <connections/redis/src/redis_declarations.h>

#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

/// "SADD mem:{arm1}:data Angle Speed": the commands of a write, each with its names sorted.
inline QByteArrayList text(const Velk::RedisWrite& write)
{
    QByteArrayList commands;
    for (QByteArrayList command : write.commands) {
        // The names come after the set of SADD and SREM.
        const QByteArray verb = command.first();
        std::sort(command.begin() + (verb == "HSET" ? command.size() : verb == "DEL" ? 1 : 2), command.end());
        commands << command.join(' ');
    }
    return commands;
}

inline QByteArrayList text(const std::vector<Velk::RedisWrite>& writes)
{
    QByteArrayList commands;
    for (const Velk::RedisWrite& write : writes)
        commands << text(write);
    return commands;
}

inline QStringList sorted(const QSet<QString>& names)
{
    QStringList list = names.values();
    list.sort();
    return list;
}

inline void refuse(const std::vector<Velk::RedisWrite>& writes)
{
    for (const Velk::RedisWrite& write : writes)
        write.refused();
}

/// What the server answers is what the test calls: nothing, refused(), or unanswered() and repeatAll().
class RedisDeclarationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_declarations = std::make_unique<Velk::RedisDeclarations>(Velk::RedisLayout("arm1")); }

protected:
    QByteArrayList written() { return text(m_declarations->write()); }
    /// Waits until the pause after a refusal is over.
    bool waitUntilDue()
    {
        QSignalSpy due(m_declarations.get(), &Velk::RedisDeclarations::due);
        return m_declarations->isPausing() && due.wait(60000) && !m_declarations->isPausing();
    }

    std::unique_ptr<Velk::RedisDeclarations> m_declarations;
};

#endif
