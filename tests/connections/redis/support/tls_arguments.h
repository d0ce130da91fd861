// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_TLS_ARGUMENTS_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_TLS_ARGUMENTS_H

#include <connections/network/support/test_certificates.h>

#include <QStringList>

/// The arguments with which a redis-server speaks TLS on the port, beside its plain port.
inline QStringList tlsArguments(const TestCertificates& certificates, quint16 tlsPort)
{
    return {QStringLiteral("--tls-port"),         QString::number(tlsPort),
            QStringLiteral("--tls-cert-file"),    certificates.serverCertificate(),
            QStringLiteral("--tls-key-file"),     certificates.serverKey(),
            QStringLiteral("--tls-ca-cert-file"), certificates.ca()};
}

#endif
