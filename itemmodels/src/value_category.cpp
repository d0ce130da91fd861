// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "value_category.h"

#include <QMetaType>

namespace Velk {

ValueCategory categoryOf(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::UnknownType:
    case QMetaType::Nullptr:
    case QMetaType::Void:
        return ValueCategory::None;
    case QMetaType::Bool:
        return ValueCategory::Boolean;
    case QMetaType::SChar:
    case QMetaType::Short:
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return ValueCategory::SignedInteger;
    case QMetaType::UShort:
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return ValueCategory::UnsignedInteger;
    case QMetaType::Float:
    case QMetaType::Double:
        return ValueCategory::Real;
    case QMetaType::Char: // the one-byte character types are characters, as in the record file
    case QMetaType::UChar:
    case QMetaType::QChar:
    case QMetaType::QString:
        return ValueCategory::Text;
    case QMetaType::QByteArray:
        return ValueCategory::Bytes;
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return ValueCategory::Time;
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return ValueCategory::List;
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        return ValueCategory::Map;
    default:
        return ValueCategory::Other;
    }
}

bool isNumberCategory(ValueCategory category)
{
    return category == ValueCategory::SignedInteger || category == ValueCategory::UnsignedInteger ||
           category == ValueCategory::Real;
}

QString plainText(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Char:
        return QString(QLatin1Char(value.value<char>()));
    case QMetaType::UChar:
        return QString(QLatin1Char(char(value.value<uchar>())));
    default:
        return value.toString();
    }
}

QString otherText(const QVariant& value)
{
    const QString text = value.toString();
    return text.isEmpty() ? QStringLiteral("(%1)").arg(QLatin1String(value.typeName())) : text;
}

} // namespace Velk
