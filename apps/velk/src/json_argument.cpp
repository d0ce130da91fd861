// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "json_argument.h"

#include <connections/link/json_value.h>

#include <QLocale>
#include <QRegularExpression>

#include <cmath>

namespace Velk {

namespace {

const QRegularExpression fractionMark(QStringLiteral("[.eE]"));

// The digits that count: "1.50e3" and "1500" have the same.
QString significantDigits(const QString& number)
{
    QString digits = number.section(QRegularExpression(QStringLiteral("[eE]")), 0, 0);
    digits.remove(QRegularExpression(QStringLiteral("[^0-9]")));
    return digits.remove(QRegularExpression(QStringLiteral("^0+|0+$")));
}

bool isExact(const QString& number)
{
    if (!number.contains(fractionMark)) {
        bool isWhole = false;
        number.toLongLong(&isWhole);
        return isWhole;
    }
    const double value = number.toDouble();
    return std::isfinite(value) &&
           significantDigits(QString::number(value, 'e', QLocale::FloatingPointShortest)) == significantDigits(number);
}

// The text with null in place of each number that no value can hold; *first becomes the first of these numbers. A digit
// in its place could begin a number: "1e400e5" is not JSON. Each byte is one character of the text.
QString withoutInexactNumbers(const QString& json, QString* first)
{
    static const QRegularExpression token(
        QStringLiteral("\"(?:\\\\.|[^\"\\\\])*+\"|-?(?:0|[1-9][0-9]*)(?:\\.[0-9]+)?(?:[eE][+-]?[0-9]+)?"));
    QString result;
    int end = 0;
    for (auto match = token.globalMatch(json); match.hasNext();) {
        const QRegularExpressionMatch found = match.next();
        const QString text = found.captured();
        if (text.startsWith(QLatin1Char('"')) || isExact(text))
            continue;
        if (first->isEmpty())
            *first = text;
        result += json.mid(end, int(found.capturedStart()) - end) + QLatin1String("null");
        end = int(found.capturedEnd());
    }
    return result + json.mid(end);
}

} // namespace

std::optional<QVariant> jsonArgument(const QByteArray& json, QString* error)
{
    // The parser takes no number beyond a double, so it gets the text without such numbers.
    QString inexact;
    const QString exactJson = withoutInexactNumbers(QString::fromLatin1(json), &inexact);
    const std::optional<QVariant> value = JsonValue::parse(exactJson.toLatin1());
    if (!value) {
        *error = QStringLiteral("The value is not JSON: %1\n"
                                "Text needs quotation marks, which the shell leaves alone in apostrophes: '\"open\"'.")
                     .arg(QString::fromUtf8(json).left(200));
        return std::nullopt;
    }
    if (!inexact.isEmpty()) {
        *error = QStringLiteral("The number %1 cannot be written without a loss: a number has 64 bits.\n"
                                "Write fewer digits, or write it as text: '\"%1\"'.")
                     .arg(inexact.left(200));
        return std::nullopt;
    }
    return value;
}

} // namespace Velk
