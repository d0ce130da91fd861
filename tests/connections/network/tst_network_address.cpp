// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/network/network_address.h>

#include <QTest>

using Velk::NetworkAddress;

namespace {

constexpr quint16 usualPort = 1883;

// "host port 1883", or the error.
QString meaning(const QString& text)
{
    QString error;
    const std::optional<NetworkAddress> address = NetworkAddress::parse(
        text, usualPort, [](const QString& piece) { return '<' + piece + '>'; }, &error);
    return address ? QStringLiteral("%1 port %2").arg(address->host).arg(address->port) : error;
}

} // namespace

class TestNetworkAddress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anAddressIsAHostAndAPort_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("host only") << "lab"
                                   << "lab port 1883";
        QTest::newRow("port") << "lab:7"
                              << "lab port 7";
        QTest::newRow("an empty port is the usual one") << "lab:"
                                                        << "lab port 1883";
        QTest::newRow("highest port") << "lab:65535"
                                      << "lab port 65535";
        QTest::newRow("the case does not matter") << "LAB.Example"
                                                  << "lab.example port 1883";
        QTest::newRow("underscore") << "robot_db"
                                    << "robot_db port 1883";
        QTest::newRow("beyond ASCII") << QString::fromUtf8("büro.example") << "xn--bro-hoa.example port 1883";
        QTest::newRow("IPv4") << "127.0.0.1:1"
                              << "127.0.0.1 port 1";
        QTest::newRow("IPv6") << "[::1]"
                              << "::1 port 1883";
        QTest::newRow("IPv6 with port") << "[fd00::12]:7"
                                        << "fd00::12 port 7";
        QTest::newRow("IPv6 with a zone") << "[fe80::1%25eth0]"
                                          << "fe80::1%eth0 port 1883";

        QTest::newRow("empty") << ""
                               << "The host <> is neither a host name nor an IP address.";
        QTest::newRow("blank") << "my lab"
                               << "The host <my lab> is neither a host name nor an IP address.";
        QTest::newRow("begins with a dash") << "-lab"
                                            << "The host <-lab> is neither a host name nor an IP address.";
        QTest::newRow("line feed") << "lab%0A"
                                   << "The host <lab%0A> is neither a host name nor an IP address.";
        QTest::newRow("longer than a name can be")
            << QString(254, 'a') << "The host <" + QString(254, 'a') + "> is neither a host name nor an IP address.";
        QTest::newRow("port in words") << "lab:mqtt"
                                       << "The port after the colon is not a number from 1 to 65535.";
        QTest::newRow("port zero") << "lab:0"
                                   << "The port after the colon is not a number from 1 to 65535.";
        QTest::newRow("port too high") << "lab:65536"
                                       << "The port after the colon is not a number from 1 to 65535.";
        QTest::newRow("port with a sign") << "lab:+1"
                                          << "The port after the colon is not a number from 1 to 65535.";
        QTest::newRow("IPv6 without brackets")
            << "::1"
            << "An address has more than one colon: write an IPv6 address in brackets, [::1].";
        QTest::newRow("bracket not closed") << "[::1"
                                            << "The bracket that opens the IPv6 address <[::1> is not closed.";
        QTest::newRow("a name in brackets") << "[lab]"
                                            << "The text in brackets, <[lab]>, is no IPv6 address.";
        QTest::newRow("IPv4 in brackets") << "[127.0.0.1]"
                                          << "The text in brackets, <[127.0.0.1]>, is no IPv6 address.";
        QTest::newRow("no colon after the bracket")
            << "[::1]7"
            << "After the IPv6 address <[::1]> only a port can follow: [::1]:1883.";
    }
    void anAddressIsAHostAndAPort()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);

        QCOMPARE(meaning(text), expected);
    }

    void anIpv6AddressIsShownInBrackets()
    {
        QCOMPARE((NetworkAddress{"lab", 7}).text(), QString("lab:7"));
        QCOMPARE((NetworkAddress{"::1", 7}).text(), QString("[::1]:7"));
    }

    void theTextOfAUrlIsReadBack_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("host only") << "lab";
        QTest::newRow("port") << "lab:7";
        QTest::newRow("IPv6") << "[::1]";
        QTest::newRow("IPv6 with a zone and a port") << "[fe80::1%25eth0]:7";
    }
    void theTextOfAUrlIsReadBack()
    {
        QFETCH(QString, text);
        QString error;

        const auto address = NetworkAddress::parse(
            text, usualPort, [](const QString& piece) { return piece; }, &error);

        QVERIFY2(address, qPrintable(error));
        QCOMPARE(address->urlText(usualPort), text);
    }
};

QTEST_GUILESS_MAIN(TestNetworkAddress)
#include "tst_network_address.moc"
