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

// The first number of a JSON text that no value can hold; empty when there is none.
QString inexactNumber(const QString& json)
{
    static const QRegularExpression token(
        QStringLiteral("\"(?:\\\\.|[^\"\\\\])*\"|-?[0-9]+(?:\\.[0-9]+)?(?:[eE][+-]?[0-9]+)?"));
    for (auto match = token.globalMatch(json); match.hasNext();) {
        const QString text = match.next().captured();
        if (!text.startsWith(QLatin1Char('"')) && !isExact(text))
            return text;
    }
    return QString();
}

} // namespace

std::optional<QVariant> jsonArgument(const QByteArray& json, QString* error)
{
    const QString text = QString::fromUtf8(json);
    const QString inexact = inexactNumber(text);
    if (!inexact.isEmpty()) {
        *error = QStringLiteral("The number %1 cannot be written without a loss: a number has 64 bits.\n"
                                "Write fewer digits, or write it as text: '\"%1\"'.")
                     .arg(inexact.left(200));
        return std::nullopt;
    }
    const std::optional<QVariant> value = JsonValue::parse(json);
    if (!value)
        *error = QStringLiteral("The value is not JSON: %1\n"
                                "Text needs quotation marks, which the shell leaves alone in apostrophes: '\"open\"'.")
                     .arg(text.left(200));
    return value;
}

} // namespace Velk
