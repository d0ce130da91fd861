#include "redis_tls.h"

#include "redis_url.h"

#include <QCoreApplication>
#include <QFile>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>

namespace Velk {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("Velk::RedisTls", text);
}

std::optional<QByteArray> contentOf(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = tr("The file %1 cannot be read: %2.").arg(path, file.errorString());
        return std::nullopt;
    }
    return file.readAll();
}

} // namespace

std::optional<QSslConfiguration> redisTlsConfiguration(const RedisUrl& url, QString* error)
{
    if (!QSslSocket::supportsSsl()) {
        *error = tr("This installation of Qt has no TLS: install OpenSSL.");
        return std::nullopt;
    }
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setPeerVerifyMode(QSslSocket::VerifyPeer);

    if (!url.caFile().isEmpty()) {
        const std::optional<QByteArray> pem = contentOf(url.caFile(), error);
        if (!pem)
            return std::nullopt;
        const QList<QSslCertificate> authorities = QSslCertificate::fromData(*pem, QSsl::Pem);
        if (authorities.isEmpty()) {
            *error = tr("The ca-file %1 holds no certificate in PEM form.").arg(url.caFile());
            return std::nullopt;
        }
        configuration.setCaCertificates(authorities);
    }

    if (!url.certificateFile().isEmpty()) {
        const std::optional<QByteArray> pem = contentOf(url.certificateFile(), error);
        if (!pem)
            return std::nullopt;
        const QList<QSslCertificate> chain = QSslCertificate::fromData(*pem, QSsl::Pem);
        if (chain.isEmpty()) {
            *error = tr("The cert-file %1 holds no certificate in PEM form.").arg(url.certificateFile());
            return std::nullopt;
        }
        const QString keyFile = url.keyFile().isEmpty() ? url.certificateFile() : url.keyFile();
        const std::optional<QByteArray> keyPem = contentOf(keyFile, error);
        if (!keyPem)
            return std::nullopt;
        QSslKey key;
        for (const QSsl::KeyAlgorithm algorithm : {QSsl::Rsa, QSsl::Ec, QSsl::Dsa}) {
            if (key.isNull())
                key = QSslKey(*keyPem, algorithm);
        }
        if (key.isNull()) {
            *error = tr("%1 holds no private key in PEM form that is not encrypted.").arg(keyFile);
            return std::nullopt;
        }
        configuration.setLocalCertificateChain(chain);
        configuration.setPrivateKey(key);
    }
    return configuration;
}

} // namespace Velk
