// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/value_order.h>

#include "value_category.h"

#include <keynames/name_path.h>

#include <QDateTime>
#include <QMetaType>
#include <QVariantList>
#include <QVariantMap>

#include <cmath>

namespace Velk {

namespace {

template <typename T>
int threeWay(const T& a, const T& b)
{
    return a < b ? -1 : (b < a ? 1 : 0);
}

int compareNumbers(const QVariant& a, ValueCategory categoryOfA, const QVariant& b, ValueCategory categoryOfB)
{
    if (categoryOfA == ValueCategory::SignedInteger && categoryOfB == ValueCategory::SignedInteger)
        return threeWay(a.toLongLong(), b.toLongLong());
    const auto widest = [](const QVariant& value, ValueCategory category) -> long double {
        // A long double holds every 64-bit integer and every double, so numbers of all types have one order.
        switch (category) {
        case ValueCategory::SignedInteger:
            return static_cast<long double>(value.toLongLong());
        case ValueCategory::UnsignedInteger:
            return static_cast<long double>(value.toULongLong());
        default:
            return static_cast<long double>(value.toDouble());
        }
    };
    const long double numberA = widest(a, categoryOfA);
    const long double numberB = widest(b, categoryOfB);
    if (std::isnan(numberA) || std::isnan(numberB))
        return int(std::isnan(numberA)) - int(std::isnan(numberB));
    return threeWay(numberA, numberB);
}

int compareLists(const QVariantList& a, const QVariantList& b)
{
    for (int i = 0; i < a.size() && i < b.size(); ++i) {
        if (const int order = ValueOrder::compare(a.at(i), b.at(i)))
            return order;
    }
    return threeWay(a.size(), b.size());
}

int compareMaps(const QVariantMap& a, const QVariantMap& b)
{
    auto elementA = a.cbegin();
    auto elementB = b.cbegin();
    for (; elementA != a.cend() && elementB != b.cend(); ++elementA, ++elementB) {
        if (const int order = comparePaths(elementA.key(), elementB.key()))
            return order;
        if (const int order = ValueOrder::compare(elementA.value(), elementB.value()))
            return order;
    }
    return threeWay(a.size(), b.size());
}

int compareTimes(const QVariant& a, const QVariant& b)
{
    // A date compares as its first moment. A time of day has no date and comes before all dates.
    if (const int order = threeWay(a.userType() != QMetaType::QTime, b.userType() != QMetaType::QTime))
        return order;
    return a.userType() == QMetaType::QTime ? threeWay(a.toTime(), b.toTime())
                                            : threeWay(a.toDateTime(), b.toDateTime());
}

} // namespace

int ValueOrder::compare(const QVariant& a, const QVariant& b)
{
    const ValueCategory categoryOfA = categoryOf(a);
    const ValueCategory categoryOfB = categoryOf(b);
    if (isNumberCategory(categoryOfA) && isNumberCategory(categoryOfB))
        return compareNumbers(a, categoryOfA, b, categoryOfB);
    if (categoryOfA != categoryOfB)
        return threeWay(int(categoryOfA), int(categoryOfB));
    switch (categoryOfA) {
    case ValueCategory::None:
        return 0;
    case ValueCategory::Boolean:
        return threeWay(a.toBool(), b.toBool());
    case ValueCategory::Text:
        return comparePaths(plainText(a), plainText(b));
    case ValueCategory::Bytes:
        return threeWay(a.toByteArray(), b.toByteArray());
    case ValueCategory::Time:
        return compareTimes(a, b);
    case ValueCategory::List:
        return compareLists(a.toList(), b.toList());
    case ValueCategory::Map:
        return compareMaps(a.toMap(), b.toMap());
    default:
        return comparePaths(otherText(a), otherText(b));
    }
}

bool ValueOrder::isLess(const QVariant& a, const QVariant& b)
{
    return compare(a, b) < 0;
}

} // namespace Velk
