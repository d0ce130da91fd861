// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

// Feeds arbitrary bytes, as a server or somebody on its port may send them, to all that reads replies: the limiter, the
// protocol reader, and what looks into replies. The bytes come in pieces of a size that the first byte chooses, and
// what the limiter lets through must not depend on it.

#include <connections/link/json_value.h>
#include <connections/redis/client/redis_error.h>
#include <connections/redis/client/redis_reply.h>
#include <connections/redis/client/redis_reply_limiter.h>
#include <connections/redis/memory/redis_stream_entry.h>
#include <connections/redis/memory/redis_stream_position.h>
#include <connections/redis/memory/redis_value.h>

#include <hiredis/hiredis.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

using namespace Velk;

namespace {

// Small, so that short inputs reach them.
constexpr RedisReplyLimiter::Limits limits = {100, 400, 50};

struct ReaderDeleter
{
    void operator()(redisReader* reader) const { redisReaderFree(reader); }
};

struct ReplyDeleter
{
    void operator()(redisReply* reply) const { freeReplyObject(reply); }
};

void require(bool condition)
{
    if (!condition)
        std::abort();
}

void lookInto(const RedisReply& reply)
{
    require(reply.view().size() <= 64 * 1024);
    require(reply.isArray() || reply.size() == 0);
    reply.integer();
    if (reply.isError()) {
        const RedisError error = RedisError::of(reply.view());
        require(!error.title().isEmpty() && !error.message(QStringLiteral("server")).isEmpty());
    }
    // What a value becomes survives being written and read.
    const QVariant value = redisValue(reply.view());
    const QByteArray written = JsonValue::write(value);
    require(JsonValue::write(redisValue(written)) == written);

    const RedisStreamEntry entry = RedisStreamEntry::of(reply);
    require(std::isfinite(entry.stamp));
    RedisStreamPosition position;
    require(position.countTrimmed(reply) >= 0);
    require(RedisStreamPosition::endOf(reply).countTrimmed(reply) >= 0);
    require(!isOlderStreamId(entry.id, entry.id));
    reply.field("v");
    for (qsizetype i = 0; i < reply.size(); ++i)
        lookInto(reply.at(i));
    require(reply.at(reply.size()).isNull() && reply.at(-1).isNull());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const auto* const bytes = reinterpret_cast<const char*>(data) + 1;
    const auto length = qint64(size) - 1;
    const auto pieceLength = std::max<qint64>(1, data[0]);

    RedisReplyLimiter whole(limits);
    QByteArray wholeOutput;
    const bool isProtocol = whole.filter(bytes, length, &wholeOutput);

    const std::unique_ptr<redisReader, ReaderDeleter> reader(redisReaderCreate());
    RedisReplyLimiter limiter(limits);
    QByteArray output;
    bool isProtocolInPieces = true;
    for (qint64 at = 0; at < length && isProtocolInPieces; at += pieceLength) {
        QByteArray piece;
        isProtocolInPieces = limiter.filter(bytes + at, std::min(pieceLength, length - at), &piece);
        output += piece;
        require(redisReaderFeed(reader.get(), piece.constData(), std::size_t(piece.size())) == REDIS_OK);
        void* next = nullptr;
        do {
            if (redisReaderGetReply(reader.get(), &next) != REDIS_OK)
                return 0;
            const std::unique_ptr<redisReply, ReplyDeleter> reply(static_cast<redisReply*>(next));
            if (reply)
                lookInto(RedisReply(reply.get()));
        } while (next);
    }
    require(isProtocol == isProtocolInPieces && limiter.errorString() == whole.errorString());
    require(output == wholeOutput);
    return 0;
}
