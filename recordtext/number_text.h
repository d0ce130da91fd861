// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef RECORDTEXT_NUMBER_TEXT_H
#define RECORDTEXT_NUMBER_TEXT_H

#include <charconv>
#include <string>

namespace Velk {

// Numbers as Qt writes them, appended to a line. Each function names the Qt function whose text it reproduces, byte for
// byte, without a QString in between.

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
