// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_NETWORK_SUPPORT_TEST_CERTIFICATES_H
#define TESTS_CONNECTIONS_NETWORK_SUPPORT_TEST_CERTIFICATES_H

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// A certificate authority of the test, and what it has signed: a server's certificate for 127.0.0.1 and localhost, and
/// a client's. A second authority has signed nothing.
class TestCertificates
{
public:
    /// Makes the files with the openssl command; on false errorString() says why.
    bool create();
    QString errorString() const { return m_errorString; }

    QString ca() const { return path("ca.pem"); }
    QString otherCa() const { return path("other.pem"); }
    QString clientCertificate() const { return path("client.pem"); }
    QString clientKey() const { return path("client.key"); }
    QString serverCertificate() const { return path("server.pem"); }
    QString serverKey() const { return path("server.key"); }

private:
    QString path(const char* name) const { return m_directory.filePath(QLatin1String(name)); }
    bool run(const QStringList& arguments);
    bool createAuthority(const QString& name);
    bool createSigned(const QString& name, const QString& extensions);

    QTemporaryDir m_directory;
    QString m_openssl;
    QString m_errorString;
};

#endif
