#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_TLS_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_TLS_H

#include <QSslConfiguration>
#include <QString>

#include <optional>

namespace Velk {

class RedisUrl;

/// What the URL says about TLS, with its files read. Nothing, with *error set to a sentence, when one of them cannot be
/// used.
std::optional<QSslConfiguration> redisTlsConfiguration(const RedisUrl& url, QString* error);

} // namespace Velk

#endif
