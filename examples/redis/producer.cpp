// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

// A robot that keeps its memory on a Redis server, with hiredis: redis_producer HOST PORT ROBOT

#include <hiredis/hiredis.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

struct Disconnect
{
    void operator()(redisContext* server) const { redisFree(server); }
};
using Server = std::unique_ptr<redisContext, Disconnect>;

// Runs a command without blanks in its words; each %s is replaced by the next argument.
template <typename... Words>
void command(const Server& server, const char* format, const Words&... words)
{
    auto* const reply = static_cast<redisReply*>(redisCommand(server.get(), format, words.c_str()...));
    if (!reply || reply->type == REDIS_REPLY_ERROR) {
        std::fprintf(stderr, "%s\n", reply ? reply->str : server->errstr);
        std::exit(1);
    }
    freeReplyObject(reply);
}

std::string now()
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::to_string(std::chrono::duration<double>(sinceEpoch).count());
}

} // namespace

int main(int argc, char* argv[])
{
    const Server server(argc == 4 ? redisConnect(argv[1], std::atoi(argv[2])) : nullptr);
    if (!server || server->err != 0) {
        std::fprintf(stderr, "%s\n", server ? server->errstr : "usage: redis_producer HOST PORT ROBOT");
        return 1;
    }
    const std::string memory = "mem:{" + std::string(argv[3]) + "}:";
    command(server, "SADD %sdata Arm/Temperature Arm/Position", memory);
    command(server, "SADD %sevent Bumper", memory);
    for (int step = 0; step < 5; ++step) {
        const std::string position = "[" + std::to_string(step) + "," + std::to_string(-step) + "]";
        command(server, "SET %sv:Arm/Temperature %s", memory, std::to_string(20.5 + step));
        command(server, "XADD %sv:Arm/Position MAXLEN ~ 10000 * t %s v %s", memory, now(), position);
    }
    command(server, "XADD %se:Bumper MAXLEN ~ 10000 * t %s v \"left\"", memory, now());
    return 0;
}
