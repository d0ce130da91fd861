// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_key_lists.h"

#include <QTimer>

#include <utility>

namespace Velk {

namespace {

const QByteArray namesPerPortion = "5000";
constexpr int movingPauseMs = 250;

} // namespace

RedisKeyLists::RedisKeyLists(RedisSession* session)
    : m_session(session)
{}

RedisKeyLists::~RedisKeyLists()
{
    finishAll();
}

QFuture<QStringList> RedisKeyLists::fetch(const QByteArray& indexKey)
{
    m_fetches.emplace_back(m_session, indexKey);
    const FetchRef fetch = std::prev(m_fetches.end());
    connect(&fetch->inquiry, &RedisInquiry::interrupted, this, [this, fetch] { ask(fetch); });
    const QFuture<QStringList> future = fetch->list.future();
    ask(fetch);
    return future;
}

void RedisKeyLists::finishAll()
{
    while (!m_fetches.empty())
        finish(m_fetches.begin(), QStringList());
}

void RedisKeyLists::ask(FetchRef fetch)
{
    fetch->names.clear();
    fetch->inquiry.ask({"SCARD", fetch->indexKey}, [this, fetch](const RedisReply& reply) {
        if (reply.isError())
            onError(fetch, reply);
        else if (reply.integer() > maxNamesAtOnce)
            scan(fetch, "0");
        else
            askAll(fetch);
    });
}

void RedisKeyLists::askAll(FetchRef fetch)
{
    fetch->inquiry.ask({"SMEMBERS", fetch->indexKey}, [this, fetch](const RedisReply& reply) {
        if (reply.isError()) {
            onError(fetch, reply);
            return;
        }
        QStringList names;
        names.reserve(reply.size());
        for (qsizetype i = 0; i < reply.size(); ++i) {
            if (reply.at(i).isError()) {
                // The names are so long that they do not fit in one reply.
                scan(fetch, "0");
                return;
            }
            names.append(reply.at(i).text());
        }
        finish(fetch, names);
    });
}

void RedisKeyLists::scan(FetchRef fetch, const QByteArray& cursor)
{
    fetch->inquiry.ask({"SSCAN", fetch->indexKey, cursor, "COUNT", namesPerPortion},
                       [this, fetch](const RedisReply& reply) {
                           if (reply.isError()) {
                               onError(fetch, reply);
                               return;
                           }
                           const RedisReply names = reply.at(1);
                           for (qsizetype i = 0; i < names.size(); ++i) {
                               if (names.at(i).isText())
                                   fetch->names.insert(names.at(i).text());
                           }
                           const QByteArray next = reply.at(0).bytes();
                           if (next.isEmpty() || next == "0")
                               finish(fetch, fetch->names.values());
                           else
                               scan(fetch, next);
                       });
}

void RedisKeyLists::onError(FetchRef fetch, const RedisReply& reply)
{
    const RedisError error = RedisError::of(reply.view());
    if (error.kind == RedisError::Ask || error.kind == RedisError::TryAgain) {
        // The set is being moved to another node, or the node there does not answer.
        QTimer::singleShot(movingPauseMs, &fetch->inquiry, [this, fetch] { ask(fetch); });
        return;
    }
    if (error.kind == RedisError::WrongType)
        m_session->report(error.title(),
                          tr("The key %1 on %2 is not a set, so the robot's keys cannot be listed. Check which program "
                             "writes it.")
                              .arg(QString::fromUtf8(fetch->indexKey), m_session->server()));
    finish(fetch, QStringList());
}

void RedisKeyLists::finish(FetchRef fetch, const QStringList& names)
{
    ListFetch list = std::move(fetch->list);
    m_fetches.erase(fetch);
    list.finish(names);
}

} // namespace Velk
