// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_VALUE_TEXT_H
#define ITEMMODELS_VALUE_TEXT_H

#include <itemmodels/itemmodels_export.h>

#include <QCoreApplication>
#include <QLocale>
#include <QString>
#include <QVariant>

namespace Velk {

/// The values of a robot's memory as text for people, and as numbers for a plot. All functions take any value, also an
/// invalid one.
class ITEMMODELS_EXPORT ValueText
{
    Q_DECLARE_TR_FUNCTIONS(Velk::ValueText)

public:
    /// The value on one line that fits into a table's cell: integers in full, other numbers with six significant digits
    /// and the locale's decimal point, texts without line breaks and with at most 80 characters, bytes as hexadecimal
    /// numbers, the first elements of lists and maps with the number of all. Empty for an invalid value.
    static QString brief(const QVariant& value, const QLocale& locale = QLocale());
    /// The value in full, on several lines: numbers with all their digits, one element of a list or a map on each line.
    /// Cut, with a note, after 1 000 elements or 20 000 characters, so that it fits into a tool tip.
    static QString full(const QVariant& value, const QLocale& locale = QLocale());

    /// Whether the value is a number. A bool is not.
    static bool isNumber(const QVariant& value);
    /// The number that a plot draws: a number itself, 1 and 0 for true and false, NaN for any other value.
    static double number(const QVariant& value);
};

} // namespace Velk

#endif
