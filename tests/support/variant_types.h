// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_SUPPORT_VARIANT_TYPES_H
#define TESTS_SUPPORT_VARIANT_TYPES_H

#include <QList>
#include <QVariant>

/// The type of the value, and of each value in it: equal variants may hold a whole and a floating-point number.
inline QList<int> typesOf(const QVariant& value)
{
    QList<int> types{value.userType()};
    if (value.userType() == QMetaType::QVariantList) {
        const QVariantList items = value.toList();
        for (const QVariant& item : items)
            types += typesOf(item);
    } else if (value.userType() == QMetaType::QVariantMap) {
        const QVariantMap items = value.toMap();
        for (const QVariant& item : items)
            types += typesOf(item);
    }
    return types;
}

#endif
