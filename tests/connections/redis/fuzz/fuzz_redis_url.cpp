// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

// Feeds arbitrary text to the parser of Redis URLs. What it accepts must say so consistently, and what it shows must
// be a URL of the same memory.

#include <connections/redis/client/redis_url.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>

using Velk::RedisUrl;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    QString error;
    const std::optional<RedisUrl> url = RedisUrl::parse(text, &error);
    require(url.has_value() == error.isEmpty());
    if (!url)
        return 0;

    require(!url->addresses().isEmpty() && !url->robot().isEmpty() && url->database() >= 0);
    require(url->isSentinel() != url->serviceName().isEmpty());
    const std::optional<RedisUrl> shown = RedisUrl::parse(url->displayText(), &error);
    require(shown.has_value());
    require(shown->displayText() == url->displayText());
    require(shown->addresses() == url->addresses() && shown->robot() == url->robot());
    require(shown->plainPattern() == url->plainPattern() && shown->serviceName() == url->serviceName());
    return 0;
}
