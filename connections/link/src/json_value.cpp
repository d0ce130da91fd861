// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/json_value.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonValue>
#include <QLocale>
#include <QMetaType>

#include <algorithm>
#include <cmath>

namespace Velk {

namespace {

bool isFloatingPointMark(char c)
{
    return c == '.' || c == 'e' || c == 'E';
}

} // namespace

std::optional<QVariant> JsonValue::parse(const QByteArray& json)
{
    // A document is a list or a map; a list of one takes every JSON value.
    QJsonParseError error;
    const QJsonArray values = QJsonDocument::fromJson('[' + json + ']', &error).array();
    if (error.error != QJsonParseError::NoError || values.size() != 1)
        return std::nullopt;
    const QJsonValue value = values.at(0);
    // The parser makes a whole number of 17.0 too.
    if (value.isDouble() && std::any_of(json.begin(), json.end(), isFloatingPointMark))
        return value.toDouble();
    return value.isNull() ? QVariant() : value.toVariant();
}

QByteArray JsonValue::write(const QVariant& value)
{
    const int type = value.userType();
    if (type == QMetaType::Double || type == QMetaType::Float) {
        const double number = value.toDouble();
        if (!std::isfinite(number))
            return QByteArray::number(number);
        const QByteArray digits = QByteArray::number(number, 'g', QLocale::FloatingPointShortest);
        const bool isReadAsWhole = !digits.contains('.') && !digits.contains('e');
        return isReadAsWhole ? digits + ".0" : digits;
    }
    if (type == QMetaType::ULongLong || type == QMetaType::ULong)
        return QByteArray::number(value.toULongLong());
    QJsonValue json = QJsonValue::fromVariant(value);
    if (json.isNull() && value.isValid() && type != QMetaType::Nullptr)
        json = value.toString();
    const QByteArray list = QJsonDocument(QJsonArray{json}).toJson(QJsonDocument::Compact);
    return list.mid(1, list.size() - 2);
}

} // namespace Velk
