// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_NETWORK_NETWORK_SECRET_H
#define CONNECTIONS_NETWORK_NETWORK_SECRET_H

#include <QByteArray>
#include <QString>

#include <optional>

namespace Velk {

/// Credentials. Both empty: no authentication.
struct NetworkCredentials
{
    QByteArray user; ///< empty: the server's default user
    QByteArray password;

    bool isEmpty() const { return user.isEmpty() && password.isEmpty(); }
};

/// A user's name, and the place where the password is kept.
struct NetworkSecret
{
    QString user;
    std::optional<QByteArray> password; ///< the password itself
    QString passwordFile;               ///< else: the path of a regular file with nothing but the password in it
    QString passwordVariable;           ///< else: the name of an environment variable that must be set

    /// False, with *error set to a sentence, when more than one of the three is given.
    bool check(QString* error) const;
    /// Whether the text can be the name of an environment variable.
    static bool isVariableName(const QString& text);

    /// Reads the password, from the environment variable `fallbackVariable` if it is kept nowhere else; that variable
    /// need not be set. Nothing, with *error set to a sentence that says what to do, when the file or the variable
    /// cannot be read. Reads them every time: a changed password is found.
    std::optional<NetworkCredentials> credentials(const char* fallbackVariable, QString* error) const;
};

} // namespace Velk

#endif
