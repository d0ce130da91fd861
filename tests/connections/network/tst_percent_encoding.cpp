// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/network/percent_encoding.h>

#include <QTest>

using namespace Velk;

class TestPercentEncoding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bytesAreDecoded_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("expected"); // "none": not valid
        QTest::newRow("nothing") << "" << QByteArray("");
        QTest::newRow("plain") << "a b+c" << QByteArray("a b+c");
        QTest::newRow("encoded") << "%2F%3f%00%FF" << QByteArray("/?\0\xff", 4);
        QTest::newRow("beyond ASCII, as typed") << QString::fromUtf8("ü") << QByteArray("\xc3\xbc");
        QTest::newRow("a stray percent sign") << "50%" << QByteArray("none");
        QTest::newRow("one digit at the end") << "50%2" << QByteArray("none");
        QTest::newRow("no hexadecimal digits") << "%zz" << QByteArray("none");
        QTest::newRow("a percent sign after another") << "%%20" << QByteArray("none");
    }
    void bytesAreDecoded()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, expected);

        QCOMPARE(percentDecodedBytes(text).value_or("none"), expected);
    }

    void textIsDecoded_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected"); // "none": not valid
        QTest::newRow("plain") << "arm1"
                               << "arm1";
        QTest::newRow("UTF-8") << "J%C3%BCrgen" << QString::fromUtf8("Jürgen");
        QTest::newRow("no UTF-8") << "%FF"
                                  << "none";
        QTest::newRow("a character cut off") << "%C3"
                                             << "none";
        QTest::newRow("NUL") << "a%00b"
                             << "none";
        QTest::newRow("line feed") << "a%0Ab"
                                   << "none";
        QTest::newRow("a control character beyond ASCII") << "%C2%9B"
                                                          << "none";
        QTest::newRow("a stray percent sign") << "50%"
                                              << "none";
    }
    void textIsDecoded()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);

        QCOMPARE(percentDecodedText(text).value_or("none"), expected);
    }

    void encodedTextIsDecodedToItself()
    {
        const QString text = QString::fromUtf8("hall/arm 1%?&#@ Jürgen");

        QCOMPARE(percentEncoded("a/b c"), QString("a%2Fb%20c"));
        QCOMPARE(percentEncoded("a/b c", "/"), QString("a/b%20c"));
        QCOMPARE(percentDecodedText(percentEncoded(text)).value_or("none"), text);
    }
};

QTEST_GUILESS_MAIN(TestPercentEncoding)
#include "tst_percent_encoding.moc"
