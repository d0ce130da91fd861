// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_VALUE_ORDER_H
#define ITEMMODELS_VALUE_ORDER_H

#include <itemmodels/itemmodels_export.h>

#include <QVariant>

namespace Velk {

/// The order in which values of a robot's memory are sorted.
namespace ValueOrder {

/// Compares any two values: negative, zero or positive. The order is total over values of all types: invalid values,
/// booleans, numbers by their value whatever their types (NaN last), texts without regard to case and by the value of
/// the numbers in them, bytes, times of day, dates and moments, lists and maps element by element, then all other types
/// by their text.
ITEMMODELS_EXPORT int compare(const QVariant& a, const QVariant& b);

/// A strict weak order: compare() is negative.
ITEMMODELS_EXPORT bool isLess(const QVariant& a, const QVariant& b);

} // namespace ValueOrder

} // namespace Velk

#endif
