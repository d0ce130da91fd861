// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/value_order.h>

#include "model_text.h"
#include "value_lists.h"

#include <QDateTime>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace Velk;

class TestValueOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ordersValues();
    void comparesIntegersExactly();
    void equalValuesOfDifferentTypesCompareEqual();
};

void TestValueOrder::ordersValues()
{
    const QVariantList ascending{
        QVariant(),
        false,
        true,
        -HUGE_VAL,
        -1,
        0u,
        0.5f,
        9,
        QVariant::fromValue(short(10)),
        10.25,
        1e300,
        std::nan(""),
        text("9"),
        text("10"),
        text("abc"),
        text("ABD"),
        QByteArray("a"),
        QTime(23, 0),
        QDateTime(QDate(2024, 1, 1), QTime(0, 0)),
        QDateTime(QDate(2024, 1, 2), QTime(0, 0)),
        QVariant(numbers(1)),
        QVariant(numbers(2)),
        QVariant(QVariantList{2}),
        QVariant(QVariantMap{{text("a"), 1}}),
        QVariant(QVariantMap{{text("a"), 2}}),
        QSizeF(1, 2),
    };

    for (int a = 0; a < ascending.size(); ++a) {
        for (int b = 0; b < ascending.size(); ++b)
            QVERIFY2(ValueOrder::isLess(ascending.at(a), ascending.at(b)) == (a < b),
                     qPrintable(QStringLiteral("values %1 and %2").arg(a).arg(b)));
    }
}

void TestValueOrder::comparesIntegersExactly()
{
    const qlonglong big = (1LL << 53) + 1;

    QVERIFY(ValueOrder::isLess(double(1LL << 53), big));
    QVERIFY(ValueOrder::isLess(big - 1, big));
    QVERIFY(ValueOrder::isLess(std::numeric_limits<qlonglong>::max(), std::numeric_limits<qulonglong>::max()));
    QVERIFY(ValueOrder::isLess(-1, std::numeric_limits<qulonglong>::max()));
}

void TestValueOrder::equalValuesOfDifferentTypesCompareEqual()
{
    QCOMPARE(ValueOrder::compare(7, 7.0), 0);
    QCOMPARE(ValueOrder::compare(list("a|b"), QVariantList{text("a"), text("b")}), 0);
    QCOMPARE(ValueOrder::compare(QDate(2024, 1, 1), QDateTime(QDate(2024, 1, 1), QTime(0, 0))), 0);
}

QTEST_GUILESS_MAIN(TestValueOrder)

#include "tst_value_order.moc"
