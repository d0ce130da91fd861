#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_SECRET_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_SECRET_H

#include <QByteArray>
#include <QString>

#include <optional>

namespace Velk {

/// Who asks a server. Both empty: nobody in particular, no authentication takes place.
struct RedisCredentials
{
    QByteArray user; ///< empty: the server's default user
    QByteArray password;
};

/// A user's name, and the place where the password is kept.
struct RedisSecret
{
    QString user;
    std::optional<QByteArray> password; ///< the password itself
    QString passwordFile;               ///< else: the path of a regular file with nothing but the password in it
    QString passwordVariable;           ///< else: the name of an environment variable that must be set

    /// Reads the password, from the environment variable `fallbackVariable` if it is kept nowhere else; there it may be
    /// missing. Nothing, with *error set to a sentence that says what to do, when the file or the variable cannot be
    /// read. Reads them every time: a changed password is found.
    std::optional<RedisCredentials> credentials(const char* fallbackVariable, QString* error) const;
};

} // namespace Velk

#endif
