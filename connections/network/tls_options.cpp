// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "tls_options.h"

#include <QCoreApplication>
#include <QFile>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>

#include <algorithm>
#include <array>

namespace Velk {

namespace {

struct Option
{
    const char* name;
    QString TlsOptions::*value;
};

constexpr std::array<Option, 4> options = {{
    {"ca-file", &TlsOptions::caFile},
    {"cert-file", &TlsOptions::certificateFile},
    {"key-file", &TlsOptions::keyFile},
    {"tls-name", &TlsOptions::serverName},
}};

struct TlsMessages
{
    Q_DECLARE_TR_FUNCTIONS(Velk::TlsOptions)
};

std::optional<QByteArray> contentOf(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = TlsMessages::tr("The file %1 cannot be read: %2.").arg(path, file.errorString());
        return std::nullopt;
    }
    return file.readAll();
}

QSslKey keyOf(const QByteArray& pem)
{
    for (const QSsl::KeyAlgorithm algorithm : {QSsl::Rsa, QSsl::Ec, QSsl::Dsa}) {
        const QSslKey key(pem, algorithm);
        if (!key.isNull())
            return key;
    }
    return QSslKey();
}

} // namespace

QStringList TlsOptions::names()
{
    QStringList names;
    for (const Option& option : options)
        names.append(QLatin1String(option.name));
    return names;
}

bool TlsOptions::set(const QString& name, const QString& value)
{
    const auto option = std::find_if(options.cbegin(), options.cend(), [&name](const Option& candidate) {
        return name == QLatin1String(candidate.name);
    });
    if (option == options.cend())
        return false;
    this->*option->value = value;
    return true;
}

bool TlsOptions::check(QString* error) const
{
    const bool hasLonelyKey = !keyFile.isEmpty() && certificateFile.isEmpty();
    if (hasLonelyKey)
        *error = TlsMessages::tr("There is a key-file without the certificate that it belongs to: add cert-file=PATH.");
    return !hasLonelyKey;
}

std::optional<QSslConfiguration> TlsOptions::configuration(QString* error) const
{
    if (!QSslSocket::supportsSsl()) {
        *error = TlsMessages::tr("This installation of Qt has no TLS: install OpenSSL.");
        return std::nullopt;
    }
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setPeerVerifyMode(QSslSocket::VerifyPeer);

    if (!caFile.isEmpty()) {
        const std::optional<QByteArray> pem = contentOf(caFile, error);
        if (!pem)
            return std::nullopt;
        const QList<QSslCertificate> authorities = QSslCertificate::fromData(*pem, QSsl::Pem);
        if (authorities.isEmpty()) {
            *error = TlsMessages::tr("The ca-file %1 holds no certificate in PEM form.").arg(caFile);
            return std::nullopt;
        }
        configuration.setCaCertificates(authorities);
    }

    if (!certificateFile.isEmpty()) {
        const std::optional<QByteArray> pem = contentOf(certificateFile, error);
        if (!pem)
            return std::nullopt;
        const QList<QSslCertificate> chain = QSslCertificate::fromData(*pem, QSsl::Pem);
        if (chain.isEmpty()) {
            *error = TlsMessages::tr("The cert-file %1 holds no certificate in PEM form.").arg(certificateFile);
            return std::nullopt;
        }
        const QString pathOfKey = keyFile.isEmpty() ? certificateFile : keyFile;
        const std::optional<QByteArray> keyPem = contentOf(pathOfKey, error);
        if (!keyPem)
            return std::nullopt;
        const QSslKey key = keyOf(*keyPem);
        if (key.isNull()) {
            *error = TlsMessages::tr("%1 holds no private key in PEM form that is not encrypted.").arg(pathOfKey);
            return std::nullopt;
        }
        configuration.setLocalCertificateChain(chain);
        configuration.setPrivateKey(key);
    }
    return configuration;
}

} // namespace Velk
