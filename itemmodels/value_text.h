#ifndef ITEMMODELS_VALUE_TEXT_H
#define ITEMMODELS_VALUE_TEXT_H

#include <itemmodels/itemmodels_export.h>

#include <QCoreApplication>
#include <QLocale>
#include <QString>
#include <QVariant>

namespace Velk {

/// The values of a robot's memory as a person reads them. All functions take any value, also an invalid one.
class ITEMMODELS_EXPORT ValueText
{
    Q_DECLARE_TR_FUNCTIONS(Velk::ValueText)

public:
    /// On one line and short enough for a table's cell: integers in full, other numbers with six significant digits and
    /// the locale's decimal point, texts without line breaks, bytes as hexadecimal numbers, and of lists and maps the
    /// first elements with the count of all. Empty for an invalid value.
    static QString brief(const QVariant& value, const QLocale& locale = QLocale());
    /// In full, on as many lines as it takes: numbers with all their digits, lists and maps with an element a line.
    /// After 1 000 elements or 20 000 characters it says that there is more, so that a tool tip can be built at all.
    static QString full(const QVariant& value, const QLocale& locale = QLocale());

    /// Whether the value is a number; a bool is none.
    static bool isNumber(const QVariant& value);
    /// What a plot draws for the value: a number itself, 1 and 0 for true and false, NaN for anything else.
    static double number(const QVariant& value);
};

} // namespace Velk

#endif
