// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_VALUE_CATEGORY_H
#define ITEMMODELS_VALUE_CATEGORY_H

#include <QString>
#include <QVariant>

namespace Velk {

/// The category by which a value is shown and sorted, whatever its type. The order of the enumerators is the order of
/// the values; the three categories of numbers are ordered together.
enum class ValueCategory
{
    None,
    Boolean,
    SignedInteger,
    UnsignedInteger,
    Real,
    Text, ///< also a single character
    Bytes,
    Time,
    List,
    Map,
    Other
};

ValueCategory categoryOf(const QVariant& value);

/// Whether the category is one of the three of numbers.
bool isNumberCategory(ValueCategory category);

/// The text of a value of the category Text.
QString plainText(const QVariant& value);
/// The text of a value of the category Other: its conversion to a string, or its type's name in parentheses.
QString otherText(const QVariant& value);

} // namespace Velk

#endif
