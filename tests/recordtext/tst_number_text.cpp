// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fuzz_time.h"

#include <recordtext/number_text.h>
#include <recordtext/record_field.h>

#include <QDeadlineTimer>
#include <QRandomGenerator>
#include <QTest>
#include <QVariant>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

using namespace Velk;

namespace {

QString doubleText(double value)
{
    std::string line;
    appendDouble(&line, value);
    return QString::fromStdString(line);
}

QString sixDigitsText(double value)
{
    std::string line;
    appendSixDigits(&line, value);
    return QString::fromStdString(line);
}

QString cellText(const QVariant& value)
{
    std::string line;
    appendCell(&line, value);
    return QString::fromStdString(line);
}

/// Doubles of all sorts: any bits, what sensors measure, decimals with few digits, ties of six digits, powers.
double anyDouble(std::mt19937_64& random)
{
    const quint64 bits = random();
    const double sign = bits & 1 ? -1.0 : 1.0;
    switch (random() % 7) {
    case 0: {
        double value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    case 1:
        return sign * double(bits % 2000001) / 1000.0;
    case 2:
        return sign * std::ldexp(double(bits >> 11), -int(random() % 80));
    case 3:
        return sign * double(bits % 100000000) / std::pow(10.0, int(random() % 10));
    case 4: // a tie: exactly between two numbers of six digits
        return sign * (double(bits % 900000) + 100000.5) * std::ldexp(1.0, int(random() % 20) - 10);
    case 5: // a difference of two time stamps
        return (1.7e9 + double(bits % 100000) / 100.0) - 1.7e9;
    default:
        return sign * std::pow(10.0, int(random() % 30) - 15) * (random() % 3 == 0 ? 0.999999999 : 1.0);
    }
}

} // namespace

class TestNumberText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void specialNumbersAreQtsText_data();
    void specialNumbersAreQtsText();
    void doublesAreQtsText();
    void integersAreQtsText();
};

void TestNumberText::specialNumbersAreQtsText_data()
{
    QTest::addColumn<double>("value");
    using Limits = std::numeric_limits<double>;
    const QList<double> values{0.0,
                               -0.0,
                               Limits::infinity(),
                               -Limits::infinity(),
                               Limits::quiet_NaN(),
                               Limits::min(),
                               Limits::denorm_min(),
                               Limits::max(),
                               Limits::lowest(),
                               Limits::epsilon(),
                               0.1,
                               0.01,
                               0.001,
                               0.0001,
                               0.00001,
                               9.5,
                               99999.95,
                               99999.5,
                               999999.5,
                               999999.4999999999,
                               100000.5,
                               100001.5,
                               10000,
                               100000,
                               1000000,
                               123456789.0,
                               1e15,
                               1e16,
                               1e17,
                               1.5e21,
                               0.09999995,
                               0.010000005,
                               2.5,
                               1234565.0,
                               -1234575.0};
    for (const double value : values)
        QTest::newRow(qPrintable(QString::number(value, 'g', 17) + (std::signbit(value) ? " -" : " +"))) << value;
}

void TestNumberText::specialNumbersAreQtsText()
{
    QFETCH(double, value);

    QCOMPARE(doubleText(value), QVariant(value).toString());
    QCOMPARE(sixDigitsText(value), QString::number(value, 'g', 6));
}

void TestNumberText::doublesAreQtsText()
{
    std::mt19937_64 random(QRandomGenerator::global()->generate64());
    const QDeadlineTimer time = fuzzTime();
    while (!time.hasExpired()) {
        for (int i = 0; i < 1000; ++i) {
            const double value = anyDouble(random);
            if (doubleText(value) != QVariant(value).toString())
                QCOMPARE(doubleText(value), QVariant(value).toString() + QString::number(value, 'g', 17));
            if (sixDigitsText(value) != QString::number(value, 'g', 6))
                QCOMPARE(sixDigitsText(value), QString::number(value, 'g', 6) + QString::number(value, 'g', 17));
        }
    }
}

template <typename Integer>
void compareIntegers(std::mt19937_64& random)
{
    using Limits = std::numeric_limits<Integer>;
    for (const Integer value : {Limits::min(), Limits::max(), Integer(0), Integer(-1), Integer(9), Integer(10)})
        QCOMPARE(cellText(QVariant::fromValue(value)), QVariant::fromValue(value).toString());
    for (int i = 0; i < 10000; ++i) {
        const QVariant value = QVariant::fromValue(Integer(random() >> (random() % 64)));
        if (cellText(value) != value.toString())
            QCOMPARE(cellText(value), value.toString());
    }
}

void TestNumberText::integersAreQtsText()
{
    std::mt19937_64 random(QRandomGenerator::global()->generate64());
    compareIntegers<short>(random);
    compareIntegers<ushort>(random);
    compareIntegers<int>(random);
    compareIntegers<uint>(random);
    compareIntegers<long>(random);
    compareIntegers<ulong>(random);
    compareIntegers<qlonglong>(random);
    compareIntegers<qulonglong>(random);
}

QTEST_APPLESS_MAIN(TestNumberText)
#include "tst_number_text.moc"
