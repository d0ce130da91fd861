// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/value_text.h>

#include "value_category.h"

#include <QDateTime>
#include <QMetaType>
#include <QStringList>
#include <QVariantHash>
#include <QVariantList>
#include <QVariantMap>

#include <cmath>
#include <limits>

namespace Velk {

namespace {

constexpr int significantDigits = 6;
constexpr int briefTextLength = 80;
constexpr int briefByteCount = 16;
constexpr int briefListLength = 4;
constexpr int briefMapLength = 3;
constexpr int briefDepth = 2;
constexpr int fullElementCount = 1000;
constexpr int fullTextLength = 20000;

const QChar ellipsis(0x2026);

QLocale withoutGroups(const QLocale& locale)
{
    // Without separators of thousands: many integers are counters and identifiers.
    QLocale plain = locale;
    plain.setNumberOptions(locale.numberOptions() | QLocale::OmitGroupSeparator);
    return plain;
}

QString realText(double value, int digits, const QLocale& locale)
{
    if (std::isnan(value))
        return ValueText::tr("NaN");
    if (std::isinf(value))
        return value < 0 ? QStringLiteral("\u2212\u221e") : QStringLiteral("\u221e");
    const double magnitude = std::fabs(value);
    if (magnitude >= 999999.5 && magnitude < 1e15 && digits == significantDigits)
        return locale.toString(value, 'f', 0); // easier to read than an exponent
    return locale.toString(value, 'g', digits);
}

QString exactRealText(const QVariant& value, const QLocale& locale)
{
    if (value.userType() == QMetaType::Float)
        return realText(double(value.toFloat()), std::numeric_limits<float>::max_digits10 - 1, locale);
    const double number = value.toDouble();
    return std::isfinite(number) ? locale.toString(number, 'g', QLocale::FloatingPointShortest)
                                 : realText(number, significantDigits, locale);
}

QString onOneLine(QString text)
{
    for (QChar& c : text) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = QLatin1Char(' ');
    }
    return text;
}

QString shortened(const QString& text)
{
    if (text.size() <= briefTextLength)
        return onOneLine(text);
    int length = briefTextLength - 1;
    if (text.at(length - 1).isHighSurrogate())
        --length;
    return onOneLine(text.left(length)) + ellipsis;
}

QString timeText(const QVariant& value, const QLocale& locale)
{
    switch (value.userType()) {
    case QMetaType::QDate:
        return locale.toString(value.toDate(), QLocale::ShortFormat);
    case QMetaType::QTime:
        return value.toTime().toString(QStringLiteral("HH:mm:ss.zzz"));
    default:
        return locale.toString(value.toDateTime().date(), QLocale::ShortFormat) + QLatin1Char(' ') +
               value.toDateTime().time().toString(QStringLiteral("HH:mm:ss.zzz"));
    }
}

QString briefText(const QVariant& value, const QLocale& locale, int depth);

QString briefListText(const QVariantList& list, const QLocale& locale, int depth)
{
    QStringList elements;
    for (int i = 0; i < list.size() && i < briefListLength && depth < briefDepth; ++i)
        elements << briefText(list.at(i), locale, depth + 1);
    const bool isWhole = elements.size() == list.size();
    if (!isWhole)
        elements << QString(ellipsis);
    const QString text = QLatin1Char('[') + elements.join(QLatin1String(", ")) + QLatin1Char(']');
    return isWhole ? text : ValueText::tr("%1 (%2 in all)").arg(text, QString::number(list.size()));
}

QString briefMapText(const QVariantMap& map, const QLocale& locale, int depth)
{
    QStringList elements;
    for (auto element = map.cbegin(); element != map.cend() && elements.size() < briefMapLength && depth < briefDepth;
         ++element)
        elements << shortened(element.key()) + QLatin1String(": ") + briefText(element.value(), locale, depth + 1);
    const bool isWhole = elements.size() == map.size();
    if (!isWhole)
        elements << QString(ellipsis);
    const QString text = QLatin1Char('{') + elements.join(QLatin1String(", ")) + QLatin1Char('}');
    return isWhole ? text : ValueText::tr("%1 (%2 in all)").arg(text, QString::number(map.size()));
}

QString briefText(const QVariant& value, const QLocale& locale, int depth)
{
    switch (categoryOf(value)) {
    case ValueCategory::None:
        return depth == 0 ? QString() : ValueText::tr("none");
    case ValueCategory::Boolean:
        return value.toBool() ? ValueText::tr("true") : ValueText::tr("false");
    case ValueCategory::SignedInteger:
        return locale.toString(value.toLongLong());
    case ValueCategory::UnsignedInteger:
        return locale.toString(value.toULongLong());
    case ValueCategory::Real:
        return realText(value.toDouble(), significantDigits, locale);
    case ValueCategory::Text:
        return shortened(plainText(value));
    case ValueCategory::Bytes: {
        const QByteArray bytes = value.toByteArray();
        const QString start = QString::fromLatin1(bytes.left(briefByteCount).toHex(' '));
        return bytes.size() <= briefByteCount
                   ? start
                   : ValueText::tr("%1 (%2 bytes)")
                         .arg(start + QLatin1Char(' ') + ellipsis, QString::number(bytes.size()));
    }
    case ValueCategory::Time:
        return timeText(value, locale);
    case ValueCategory::List:
        return briefListText(value.toList(), locale, depth);
    case ValueCategory::Map:
        return briefMapText(value.toMap(), locale, depth);
    case ValueCategory::Other:
        break;
    }
    return shortened(otherText(value));
}

// Writes a value in full, up to a limit of elements and characters.
class FullText
{
public:
    explicit FullText(const QLocale& locale)
        : m_locale(locale)
    {}

    QString of(const QVariant& value)
    {
        append(value, 0);
        if (m_isCut || m_text.size() > fullTextLength) {
            m_text.truncate(fullTextLength);
            m_text += QLatin1Char('\n') + ValueText::tr("%1 and more").arg(ellipsis);
        }
        return m_text;
    }

private:
    void append(const QVariant& value, int depth)
    {
        switch (categoryOf(value)) {
        case ValueCategory::None:
            m_text += ValueText::tr("none");
            break;
        case ValueCategory::Real:
            m_text += exactRealText(value, m_locale);
            break;
        case ValueCategory::Text:
            m_text += plainText(value).left(fullTextLength + 1);
            break;
        case ValueCategory::Bytes:
            m_text += QString::fromLatin1(value.toByteArray().left(fullTextLength / 2).toHex(' '));
            break;
        case ValueCategory::List: {
            const QVariantList list = value.toList();
            for (const QVariant& element : list) {
                if (!beginElement(depth))
                    return;
                append(element, depth + 1);
            }
            appendEmpty(list.isEmpty(), QLatin1String("[]"));
            break;
        }
        case ValueCategory::Map: {
            const QVariantMap map = value.toMap();
            for (auto element = map.cbegin(); element != map.cend(); ++element) {
                if (!beginElement(depth))
                    return;
                m_text += element.key() + QLatin1String(": ");
                append(element.value(), depth + 1);
            }
            appendEmpty(map.isEmpty(), QLatin1String("{}"));
            break;
        }
        case ValueCategory::Other:
            m_text += otherText(value);
            break;
        default:
            m_text += briefText(value, m_locale, 1);
        }
    }

    bool beginElement(int depth)
    {
        if (++m_elements > fullElementCount || m_text.size() > fullTextLength) {
            m_isCut = true;
            return false;
        }
        if (!m_text.isEmpty())
            m_text += QLatin1Char('\n');
        m_text += QString(4 * depth, QLatin1Char(' '));
        return true;
    }

    void appendEmpty(bool isEmpty, QLatin1String text)
    {
        if (isEmpty)
            m_text += text;
    }

    QLocale m_locale;
    QString m_text;
    int m_elements = 0;
    bool m_isCut = false;
};

} // namespace

QString ValueText::brief(const QVariant& value, const QLocale& locale)
{
    return briefText(value, withoutGroups(locale), 0);
}

QString ValueText::full(const QVariant& value, const QLocale& locale)
{
    return value.isValid() ? FullText(withoutGroups(locale)).of(value) : QString();
}

bool ValueText::isNumber(const QVariant& value)
{
    return isNumberCategory(categoryOf(value));
}

double ValueText::number(const QVariant& value)
{
    const ValueCategory category = categoryOf(value);
    if (category == ValueCategory::Boolean)
        return value.toBool() ? 1.0 : 0.0;
    return isNumberCategory(category) ? value.toDouble() : std::numeric_limits<double>::quiet_NaN();
}

} // namespace Velk
