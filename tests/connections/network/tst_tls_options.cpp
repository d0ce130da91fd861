// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/test_certificates.h"

#include <connections/network/tls_options.h>

#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>
#include <QTest>

using Velk::TlsOptions;

class TestTlsOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(m_certificates.create(), qPrintable(m_certificates.errorString())); }

    void eachOptionIsSetByItsName()
    {
        TlsOptions options;

        for (const QString& name : TlsOptions::names())
            QVERIFY2(options.set(name, "value of " + name), qPrintable(name));

        QCOMPARE(options.caFile, QString("value of ca-file"));
        QCOMPARE(options.certificateFile, QString("value of cert-file"));
        QCOMPARE(options.keyFile, QString("value of key-file"));
        QCOMPARE(options.serverName, QString("value of tls-name"));
        QVERIFY(!options.set("ca", "x"));
    }

    void aKeyNeedsItsCertificate()
    {
        QString error;
        TlsOptions options;
        QVERIFY(options.check(&error));
        options.keyFile = "me.key";
        QVERIFY(!options.check(&error));
        QCOMPARE(error, QString("There is a key-file without the certificate that it belongs to: add cert-file=PATH."));
        options.certificateFile = "me.pem";
        QVERIFY(options.check(&error));
    }

    void theServerIsAlwaysVerified()
    {
        QString error;

        const auto configuration = TlsOptions().configuration(&error);

        QVERIFY2(configuration, qPrintable(error));
        QCOMPARE(configuration->peerVerifyMode(), QSslSocket::VerifyPeer);
    }

    void theFilesAreInTheConfiguration()
    {
        QString error;
        TlsOptions options;
        options.caFile = m_certificates.ca();
        options.certificateFile = m_certificates.clientCertificate();
        options.keyFile = m_certificates.clientKey();

        const auto configuration = options.configuration(&error);

        QVERIFY2(configuration, qPrintable(error));
        QCOMPARE(configuration->caCertificates(), QSslCertificate::fromPath(m_certificates.ca()));
        QCOMPARE(configuration->localCertificateChain(), QSslCertificate::fromPath(m_certificates.clientCertificate()));
        QVERIFY(!configuration->privateKey().isNull());
    }

    void aFileThatCannotBeUsedIsAnError_data()
    {
        QTest::addColumn<QString>("ca");
        QTest::addColumn<QString>("certificate");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("expected");
        const QString ca = m_certificates.ca();
        const QString certificate = m_certificates.clientCertificate();
        const QString key = m_certificates.clientKey();
        QTest::newRow("an authority that is missing") << "/nonexistent/ca.pem"
                                                      << ""
                                                      << ""
                                                      << "The file /nonexistent/ca.pem cannot be read: ";
        QTest::newRow("no authority in the file") << key << ""
                                                  << ""
                                                  << "holds no certificate in PEM form.";
        QTest::newRow("a certificate that is missing")
            << ca << "/nonexistent/me.pem" << key << "The file /nonexistent/me.pem cannot be read: ";
        QTest::newRow("no certificate in the file") << ca << key << key << "holds no certificate in PEM form.";
        QTest::newRow("a key that is missing") << ca << certificate << "/nonexistent/me.key"
                                               << "The file /nonexistent/me.key cannot be read: ";
        QTest::newRow("no key in the certificate's file") << ca << certificate << ""
                                                          << "holds no private key in PEM form that is not encrypted.";
    }
    void aFileThatCannotBeUsedIsAnError()
    {
        QFETCH(QString, ca);
        QFETCH(QString, certificate);
        QFETCH(QString, key);
        QFETCH(QString, expected);
        QString error;
        TlsOptions options;
        options.caFile = ca;
        options.certificateFile = certificate;
        options.keyFile = key;

        QVERIFY(!options.configuration(&error));
        QVERIFY2(error.contains(expected), qPrintable(error));
    }

private:
    TestCertificates m_certificates;
};

QTEST_GUILESS_MAIN(TestTlsOptions)
#include "tst_tls_options.moc"
