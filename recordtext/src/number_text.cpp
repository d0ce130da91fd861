// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <recordtext/number_text.h>

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <algorithm>
#include <cmath>

namespace Velk {

// Why not std::to_chars alone: it rounds a tie to the even digit, so 100000.5 with six digits is 100000, and Qt writes
// 100001. And it chooses between plain and scientific notation by other rules than Qt, whose own versions differ: Qt 5
// writes 100000 where Qt 6 writes 1e+05. Here to_chars gives the shortest digits only. Rounding and notation follow Qt
// where all its versions agree, and Qt itself writes the other numbers. tst_number_text compares both at random.

namespace {

void appendText(std::string* line, const QString& text)
{
    const QByteArray latin1 = text.toLatin1();
    line->append(latin1.constData(), std::size_t(latin1.size()));
}

/// A number other than zero: 0.digits × 10^pointAt.
struct Decimal
{
    char digits[20]; ///< without leading and trailing zeros
    int count = 0;
    int pointAt = 0; ///< digits before the decimal point
    bool isNegative = false;
};

/// Sets the shortest digits that read back as the value. Returns false without them: for zero, for infinities and NaN,
/// and with a standard library that lacks std::to_chars for double.
bool shortestDecimal(double value, Decimal* decimal)
{
#if defined(__cpp_lib_to_chars)
    if (value == 0.0 || !std::isfinite(value))
        return false;
    char text[32]; // d.ddde±dd
    char* const end = std::to_chars(text, text + sizeof text, std::fabs(value), std::chars_format::scientific).ptr;
    char* const e = std::find(text + 1, end, 'e');
    int exponent = 0;
    std::from_chars(e + (e[1] == '+' ? 2 : 1), end, exponent);
    decimal->digits[0] = text[0];
    decimal->count = 1;
    if (e > text + 2)
        decimal->count += int(std::copy(text + 2, e, decimal->digits + 1) - (decimal->digits + 1));
    decimal->pointAt = exponent + 1;
    decimal->isNegative = value < 0.0;
    return true;
#else
    Q_UNUSED(value)
    Q_UNUSED(decimal)
    return false;
#endif
}

/// Rounds to six digits. Returns false when a 5 is the seventh and last digit: the shortest digits do not show whether
/// the value lies exactly on the tie. A value with more than seven digits is never on a tie.
bool roundToSixDigits(Decimal* decimal)
{
    if (decimal->count <= 6)
        return true;
    if (decimal->count == 7 && decimal->digits[6] == '5')
        return false;
    const bool roundsUp = decimal->digits[6] >= '5';
    decimal->count = 6;
    if (roundsUp) {
        while (decimal->count > 0 && decimal->digits[decimal->count - 1] == '9')
            --decimal->count;
        if (decimal->count == 0) {
            decimal->digits[0] = '1';
            decimal->count = 1;
            ++decimal->pointAt;
        } else {
            ++decimal->digits[decimal->count - 1];
        }
    }
    while (decimal->digits[decimal->count - 1] == '0')
        --decimal->count;
    return true;
}

/// In plain notation, without an exponent.
void appendDecimal(std::string* line, const Decimal& decimal)
{
    char text[64];
    char* to = text;
    const char* const digitsEnd = decimal.digits + decimal.count;
    if (decimal.isNegative)
        *to++ = '-';
    if (decimal.pointAt <= 0) {
        *to++ = '0';
        *to++ = '.';
        to = std::fill_n(to, -decimal.pointAt, '0');
        to = std::copy(decimal.digits, digitsEnd, to);
    } else if (decimal.count <= decimal.pointAt) {
        to = std::copy(decimal.digits, digitsEnd, to);
        to = std::fill_n(to, decimal.pointAt - decimal.count, '0');
    } else {
        const char* const point = decimal.digits + decimal.pointAt;
        to = std::copy(decimal.digits, point, to);
        *to++ = '.';
        to = std::copy(point, digitsEnd, to);
    }
    line->append(text, to);
}

} // namespace

void appendDouble(std::string* line, double value)
{
    // All versions of Qt write plain notation from 0.01 on, and for large values as long as the digits reach the
    // decimal point. Elsewhere the versions differ.
    Decimal decimal;
    if (shortestDecimal(value, &decimal) && decimal.pointAt >= -1 && decimal.pointAt <= std::max(decimal.count, 5))
        appendDecimal(line, decimal);
    else
        appendText(line, QVariant(value).toString());
}

void appendSixDigits(std::string* line, double value)
{
    Decimal decimal;
    if (shortestDecimal(value, &decimal) && roundToSixDigits(&decimal) && decimal.pointAt > -4 && decimal.pointAt <= 6)
        appendDecimal(line, decimal);
    else
        appendText(line, QString::number(value, 'g', 6));
}

} // namespace Velk
