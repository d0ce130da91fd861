// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <recordtext/record_field.h>

#include <QRandomGenerator>
#include <QTest>

#include <random>

using namespace Velk;

namespace {

QByteArray quoted(const QString& text)
{
    std::string line;
    appendQuoted(&line, text);
    return QByteArray::fromStdString(line);
}

} // namespace

/// The types of the cells are tested where a model records them.
class TestRecordField : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textIsQuotedUtf8_data();
    void textIsQuotedUtf8();
    void anyTextIsTheUtf8OfQt();
    void aFieldIsAppendedToTheLine();
};

void TestRecordField::textIsQuotedUtf8_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("field");

    QTest::newRow("empty") << QString() << QByteArray("\"\"");
    QTest::newRow("ASCII") << QString("ready") << QByteArray("\"ready\"");
    QTest::newRow("a quote") << QString("a\"b") << QByteArray("\"a\"\"b\"");
    QTest::newRow("separator and line feed") << QString("a;b\nc") << QByteArray("\"a;b\nc\"");
    QTest::newRow("the last ASCII character") << QString(QChar(0x7f)) << QByteArray("\"\x7f\"");
    QTest::newRow("the first character after ASCII") << QString(QChar(0x80)) << QByteArray("\"\xc2\x80\"");
    QTest::newRow("quotes on both sides of it")
        << QString("\"") + QChar(0x80) + QString("\"") << QByteArray("\"\"\"\xc2\x80\"\"\"");
    QTest::newRow("a surrogate pair") << QString::fromUtf8("\xf0\x9f\xa4\x96") << QByteArray("\"\xf0\x9f\xa4\x96\"");
}

void TestRecordField::textIsQuotedUtf8()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, field);

    QCOMPARE(quoted(text), field);
}

void TestRecordField::anyTextIsTheUtf8OfQt()
{
    std::mt19937_64 random(QRandomGenerator::global()->generate64());
    const QString alphabet =
        QString::fromUtf8("ab\";\n\xc3\xa9\xe2\x82\xac\xf0\x9f\xa4\x96") + QChar(0xd800) + QChar(0xdc00);
    for (int i = 0; i < 20000; ++i) {
        QString text;
        for (int length = int(random() % 8); length > 0; --length)
            text += alphabet[int(random() % quint64(alphabet.size()))];

        QCOMPARE(quoted(text), '"' + QString(text).replace("\"", "\"\"").toUtf8() + '"');
    }
}

void TestRecordField::aFieldIsAppendedToTheLine()
{
    std::string line = "0;";

    appendQuoted(&line, QString::fromUtf8("Gr\xc3\xb6\xc3\x9f"
                                          "e"));
    appendCell(&line, 7);

    QCOMPARE(QByteArray::fromStdString(line), QByteArray("0;\"Gr\xc3\xb6\xc3\x9f"
                                                         "e\"7"));
}

QTEST_APPLESS_MAIN(TestRecordField)
#include "tst_record_field.moc"
