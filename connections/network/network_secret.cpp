// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "network_secret.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace Velk {

namespace {

// A longer file was probably named by mistake.
constexpr qint64 maxPasswordFileSize = 4096;

struct SecretMessages
{
    Q_DECLARE_TR_FUNCTIONS(Velk::NetworkSecret)
};

std::optional<QByteArray> passwordFromFile(const QString& path, QString* error)
{
    // Reading a pipe or a device could block.
    if (!QFileInfo(path).isFile()) {
        *error = SecretMessages::tr(
                     "The password file %1 does not exist or is no regular file: correct the path in the URL.")
                     .arg(path);
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = SecretMessages::tr("The password file %1 cannot be read (%2): check its permissions.")
                     .arg(path, file.errorString());
        return std::nullopt;
    }
    QByteArray password = file.read(maxPasswordFileSize + 1);
    if (password.size() > maxPasswordFileSize) {
        *error = SecretMessages::tr(
                     "The password file %1 is longer than %2 bytes: it must hold the password and nothing else.")
                     .arg(path)
                     .arg(maxPasswordFileSize);
        return std::nullopt;
    }
    // Editors and echo end the only line with a line feed that is not part of the password.
    if (password.endsWith('\n'))
        password.chop(1);
    if (password.endsWith('\r'))
        password.chop(1);
    if (password.isEmpty()) {
        *error = SecretMessages::tr("The password file %1 is empty: it must hold the password.").arg(path);
        return std::nullopt;
    }
    return password;
}

std::optional<QByteArray> passwordFromVariable(const QString& variable, QString* error)
{
    const QByteArray name = variable.toLocal8Bit();
    if (!qEnvironmentVariableIsSet(name.constData())) {
        *error =
            SecretMessages::tr("The environment variable %1, which is to hold the password, is not set.").arg(variable);
        return std::nullopt;
    }
    return qgetenv(name.constData());
}

} // namespace

bool NetworkSecret::check(QString* error) const
{
    const int places = int(password.has_value()) + int(!passwordFile.isEmpty()) + int(!passwordVariable.isEmpty());
    if (places > 1)
        *error = SecretMessages::tr(
            "The URL says in more than one way what the password is: keep one of the password before the "
            "\"@\", the file and the environment variable.");
    return places <= 1;
}

bool NetworkSecret::isVariableName(const QString& text)
{
    static const QRegularExpression name(QStringLiteral("\\A[A-Za-z_][A-Za-z0-9_]*\\z"));
    return name.match(text).hasMatch();
}

std::optional<NetworkCredentials> NetworkSecret::credentials(const char* fallbackVariable, QString* error) const
{
    std::optional<QByteArray> found = password;
    if (!passwordFile.isEmpty())
        found = passwordFromFile(passwordFile, error);
    else if (!passwordVariable.isEmpty())
        found = passwordFromVariable(passwordVariable, error);
    else if (!found)
        found = qgetenv(fallbackVariable);
    if (!found)
        return std::nullopt;
    return NetworkCredentials{user.toUtf8(), *found};
}

} // namespace Velk
