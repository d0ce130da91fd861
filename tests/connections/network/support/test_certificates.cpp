// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "test_certificates.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

namespace {

// Keys of elliptic curves are generated in an instant.
QStringList newKey()
{
    return {QStringLiteral("-newkey"), QStringLiteral("ec"), QStringLiteral("-pkeyopt"),
            QStringLiteral("ec_paramgen_curve:prime256v1"), QStringLiteral("-nodes")};
}

} // namespace

bool TestCertificates::create()
{
    m_openssl = QStandardPaths::findExecutable(QStringLiteral("openssl"));
    if (m_openssl.isEmpty())
        m_errorString = QStringLiteral("openssl is missing: install the Debian package openssl.");
    return !m_openssl.isEmpty() && createAuthority(QStringLiteral("ca")) && createAuthority(QStringLiteral("other")) &&
           createSigned(QStringLiteral("server"), QStringLiteral("subjectAltName=IP:127.0.0.1,DNS:localhost\n")) &&
           createSigned(QStringLiteral("client"), QStringLiteral("extendedKeyUsage=clientAuth\n"));
}

bool TestCertificates::run(const QStringList& arguments)
{
    QProcess openssl;
    openssl.setProcessChannelMode(QProcess::MergedChannels);
    openssl.setWorkingDirectory(m_directory.path());
    openssl.start(m_openssl, arguments);
    if (openssl.waitForFinished(60000) && openssl.exitCode() == 0)
        return true;
    m_errorString = QStringLiteral("openssl %1 failed:\n%2")
                        .arg(arguments.join(QLatin1Char(' ')), QString::fromUtf8(openssl.readAll()));
    return false;
}

bool TestCertificates::createAuthority(const QString& name)
{
    return run(QStringList{QStringLiteral("req"), QStringLiteral("-x509")} + newKey() +
               QStringList{QStringLiteral("-keyout"), name + QStringLiteral(".key"), QStringLiteral("-out"),
                           name + QStringLiteral(".pem"), QStringLiteral("-days"), QStringLiteral("2"),
                           QStringLiteral("-subj"), QStringLiteral("/CN=Test authority ") + name});
}

bool TestCertificates::createSigned(const QString& name, const QString& extensions)
{
    const QString request = name + QStringLiteral(".csr");
    QFile file(m_directory.filePath(name + QStringLiteral(".ext")));
    file.open(QIODevice::WriteOnly);
    file.write(extensions.toUtf8());
    file.close();
    return run(QStringList{QStringLiteral("req")} + newKey() +
               QStringList{QStringLiteral("-keyout"), name + QStringLiteral(".key"), QStringLiteral("-out"), request,
                           QStringLiteral("-subj"), QStringLiteral("/CN=") + name}) &&
           run({QStringLiteral("x509"), QStringLiteral("-req"), QStringLiteral("-in"), request, QStringLiteral("-CA"),
                QStringLiteral("ca.pem"), QStringLiteral("-CAkey"), QStringLiteral("ca.key"),
                QStringLiteral("-CAcreateserial"), QStringLiteral("-days"), QStringLiteral("2"),
                QStringLiteral("-extfile"), file.fileName(), QStringLiteral("-out"), name + QStringLiteral(".pem")});
}
