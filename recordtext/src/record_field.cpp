// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <recordtext/record_field.h>

#include <recordtext/number_text.h>

#include <QByteArray>
#include <QMetaType>

namespace Velk {

namespace {

template <typename T>
const T& valueAs(const QVariant& value)
{
    return *static_cast<const T*>(value.constData());
}

} // namespace

void appendCell(std::string* line, const QVariant& value)
{
    // The one-byte character types are missing here on purpose: Qt converts them like numbers, but their values are
    // characters. They are quoted like text.
    switch (value.userType()) {
    case QMetaType::UnknownType:
    case QMetaType::VoidStar:
        return; // Qt has no text for these
    case QMetaType::Bool:
        line->append(valueAs<bool>(value) ? "true" : "false");
        return;
    case QMetaType::Int:
        return appendInteger(line, valueAs<int>(value));
    case QMetaType::UInt:
        return appendInteger(line, valueAs<uint>(value));
    case QMetaType::LongLong:
        return appendInteger(line, valueAs<qlonglong>(value));
    case QMetaType::ULongLong:
        return appendInteger(line, valueAs<qulonglong>(value));
    case QMetaType::Long:
        return appendInteger(line, valueAs<long>(value));
    case QMetaType::ULong:
        return appendInteger(line, valueAs<ulong>(value));
    case QMetaType::Short:
        return appendInteger(line, valueAs<short>(value));
    case QMetaType::UShort:
        return appendInteger(line, valueAs<ushort>(value));
    case QMetaType::Double:
        return appendDouble(line, valueAs<double>(value));
    case QMetaType::Float: {
        const QByteArray text = value.toString().toLatin1();
        line->append(text.constData(), std::size_t(text.size()));
        return;
    }
    default:
        return appendQuoted(line, value.toString());
    }
}

void appendQuoted(std::string* line, const QString& text)
{
    line->push_back('"');
    const std::size_t begin = line->size();
    for (const QChar c : text) {
        if (c.unicode() >= 0x80) {
            // Not ASCII: the text is encoded again from its start, because the two halves of a surrogate pair are
            // encoded together.
            line->resize(begin);
            const QByteArray utf8 = QString(text).replace(QLatin1Char('"'), QLatin1String("\"\"")).toUtf8();
            line->append(utf8.constData(), std::size_t(utf8.size()));
            break;
        }
        if (c == QLatin1Char('"'))
            line->push_back('"');
        line->push_back(c.toLatin1());
    }
    line->push_back('"');
}

} // namespace Velk
