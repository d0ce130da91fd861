#ifndef MEMORYKEYMODEL_NUMBER_TEXT_H
#define MEMORYKEYMODEL_NUMBER_TEXT_H

#include <charconv>
#include <string>

namespace Velk {

// Numbers as Qt writes them, appended to a line. Each text is byte for byte that of the function named here.

/// QVariant(value).toString(): the shortest digits that read back as the value.
void appendDouble(std::string* line, double value);
/// QString::number(value, 'g', 6).
void appendSixDigits(std::string* line, double value);

/// QString::number(value).
template <typename Integer>
void appendInteger(std::string* line, Integer value)
{
    char digits[24];
    line->append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

} // namespace Velk

#endif
