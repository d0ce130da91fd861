// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/model_viewer.h"
#include "support/redis_server.h"
#include "support/redis_test_client.h"
#include "support/tls_arguments.h"

#include <QTest>

using namespace Velk;

namespace {

constexpr int patience = 60000;

} // namespace

class TestRedisTls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY2(m_certificates.create(), qPrintable(m_certificates.errorString()));
        m_server.setArguments(tlsArguments(m_certificates, m_tlsPort.port()));
        QVERIFY2(m_server.start(), qPrintable(m_server.errorString()));
        RedisTestClient(m_server.port()).command({"SET", "mem:{arm1}:v:A", "1"});
    }

    void valuesArriveOverTls_data()
    {
        QTest::addColumn<QString>("host");
        QTest::addColumn<QString>("options");
        QTest::newRow("by address") << QStringLiteral("127.0.0.1") << clientFiles();
        QTest::newRow("by name") << QStringLiteral("localhost") << clientFiles();
        QTest::newRow("for another name of the server")
            << QStringLiteral("127.0.0.1") << clientFiles() + QStringLiteral("&tls-name=localhost");
    }
    void valuesArriveOverTls()
    {
        QFETCH(QString, host);
        QFETCH(QString, options);
        ModelViewer viewer(url(host, options));

        viewer.link().open();
        viewer.display({QStringLiteral("A")});

        QTRY_VERIFY2_WITH_TIMEOUT(viewer.newestValue(QStringLiteral("A")) == QVariant(1LL),
                                  qPrintable(viewer.failures().join(QLatin1Char('\n'))), patience);
        QCOMPARE(viewer.failures(), QStringList());
    }

    void whatKeepsTlsFromWorkingIsExplained_data()
    {
        QTest::addColumn<QString>("options");
        QTest::addColumn<QString>("expected");
        const auto files = [this](const QString& ca) {
            return QStringLiteral("ca-file=%1&cert-file=%2&key-file=%3")
                .arg(ca, m_certificates.clientCertificate(), m_certificates.clientKey());
        };
        QTest::newRow("an authority that did not sign")
            << files(m_certificates.otherCa()) << QStringLiteral("could not be trusted");
        QTest::newRow("no authority that is known here")
            << files(m_certificates.ca()).section(QLatin1Char('&'), 1) << QStringLiteral("could not be trusted");
        QTest::newRow("another name") << clientFiles() + QStringLiteral("&tls-name=other.example")
                                      << QStringLiteral("could not be trusted");
        QTest::newRow("no certificate of the client")
            << clientFiles().section(QLatin1Char('&'), 0, 0) << QStringLiteral("client certificate");
        QTest::newRow("a file that is missing")
            << QStringLiteral("ca-file=/nonexistent/ca.pem") << QStringLiteral("/nonexistent/ca.pem cannot be read");
        QTest::newRow("a file without a certificate")
            << QStringLiteral("ca-file=") + m_certificates.clientKey() << QStringLiteral("holds no certificate");
        QTest::newRow("a key that is none")
            << QStringLiteral("ca-file=%1&cert-file=%2").arg(m_certificates.ca(), m_certificates.clientCertificate())
            << QStringLiteral("holds no private key");
    }
    void whatKeepsTlsFromWorkingIsExplained()
    {
        QFETCH(QString, options);
        QFETCH(QString, expected);
        ModelViewer viewer(url(QStringLiteral("127.0.0.1"), options));

        viewer.link().open();

        QTRY_VERIFY_WITH_TIMEOUT(!viewer.failures().isEmpty(), patience);
        QVERIFY2(viewer.hasFailure(expected), qPrintable(viewer.failures().join(QLatin1Char('\n'))));
        QCOMPARE(viewer.states, QStringList());
    }

    void aPlainConnectionToAPortThatSpeaksTlsIsExplained()
    {
        ModelViewer viewer(QStringLiteral("redis://127.0.0.1:%1/arm1").arg(m_tlsPort.port()));

        viewer.link().open();

        QTRY_VERIFY2_WITH_TIMEOUT(viewer.hasFailure(QStringLiteral("TLS")),
                                  qPrintable(viewer.failures().join(QLatin1Char(10))), patience);
        QVERIFY(!viewer.link().isConnected());
    }

    void aTlsConnectionToAPortThatDoesNotSpeakItIsExplained()
    {
        ModelViewer viewer(QStringLiteral("rediss://127.0.0.1:%1/arm1").arg(m_server.port()));

        viewer.link().open();

        QTRY_VERIFY2_WITH_TIMEOUT(viewer.hasFailure(QStringLiteral("TLS")),
                                  qPrintable(viewer.failures().join(QLatin1Char(10))), patience);
        QVERIFY(!viewer.link().isConnected());
    }

private:
    QString clientFiles() const
    {
        return QStringLiteral("ca-file=%1&cert-file=%2&key-file=%3")
            .arg(m_certificates.ca(), m_certificates.clientCertificate(), m_certificates.clientKey());
    }
    QString url(const QString& host, const QString& options) const
    {
        return QStringLiteral("rediss://%1:%2/arm1?%3").arg(host).arg(m_tlsPort.port()).arg(options);
    }

    TestCertificates m_certificates;
    PortReservation m_tlsPort;
    RedisServer m_server;
};

QTEST_GUILESS_MAIN(TestRedisTls)
#include "tst_redis_tls.moc"
