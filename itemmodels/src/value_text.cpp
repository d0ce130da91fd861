#include <itemmodels/value_text.h>

#include <keynames/name_path.h>

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

// The order of the kinds is the order of the values.
enum Kind
{
    NoValue,
    Boolean,
    SignedInteger,
    UnsignedInteger,
    Real,
    Text,
    Bytes,
    Time,
    List,
    Map,
    Other
};

Kind kindOf(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::UnknownType:
    case QMetaType::Nullptr:
    case QMetaType::Void:
        return NoValue;
    case QMetaType::Bool:
        return Boolean;
    case QMetaType::SChar:
    case QMetaType::Short:
    case QMetaType::Int:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return SignedInteger;
    case QMetaType::UShort:
    case QMetaType::UInt:
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        return UnsignedInteger;
    case QMetaType::Float:
    case QMetaType::Double:
        return Real;
    case QMetaType::Char: // the one-byte character types are characters, as the record file has them
    case QMetaType::UChar:
    case QMetaType::QChar:
    case QMetaType::QString:
        return Text;
    case QMetaType::QByteArray:
        return Bytes;
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return Time;
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return List;
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        return Map;
    default:
        return Other;
    }
}

bool isNumberKind(Kind kind)
{
    return kind == SignedInteger || kind == UnsignedInteger || kind == Real;
}

QLocale withoutGroups(const QLocale& locale)
{
    // Counters and identifiers are read in one piece.
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
        return locale.toString(value, 'f', 0); // all digits before the point are better read than an exponent
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

QString characterOrText(const QVariant& value)
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

QString otherText(const QVariant& value)
{
    const QString text = value.toString();
    return text.isEmpty() ? QStringLiteral("(%1)").arg(QLatin1String(value.typeName())) : text;
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
    switch (kindOf(value)) {
    case NoValue:
        return depth == 0 ? QString() : ValueText::tr("none");
    case Boolean:
        return value.toBool() ? ValueText::tr("true") : ValueText::tr("false");
    case SignedInteger:
        return locale.toString(value.toLongLong());
    case UnsignedInteger:
        return locale.toString(value.toULongLong());
    case Real:
        return realText(value.toDouble(), significantDigits, locale);
    case Text:
        return shortened(characterOrText(value));
    case Bytes: {
        const QByteArray bytes = value.toByteArray();
        const QString start = QString::fromLatin1(bytes.left(briefByteCount).toHex(' '));
        return bytes.size() <= briefByteCount
                   ? start
                   : ValueText::tr("%1 (%2 bytes)")
                         .arg(start + QLatin1Char(' ') + ellipsis, QString::number(bytes.size()));
    }
    case Time:
        return timeText(value, locale);
    case List:
        return briefListText(value.toList(), locale, depth);
    case Map:
        return briefMapText(value.toMap(), locale, depth);
    case Other:
        break;
    }
    return shortened(otherText(value));
}

// Writes a value in full until there is too much of it.
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
        switch (kindOf(value)) {
        case NoValue:
            m_text += ValueText::tr("none");
            break;
        case Real:
            m_text += exactRealText(value, m_locale);
            break;
        case Text:
            m_text += characterOrText(value).left(fullTextLength + 1);
            break;
        case Bytes:
            m_text += QString::fromLatin1(value.toByteArray().left(fullTextLength / 2).toHex(' '));
            break;
        case List: {
            const QVariantList list = value.toList();
            for (const QVariant& element : list) {
                if (!beginElement(depth))
                    return;
                append(element, depth + 1);
            }
            appendEmpty(list.isEmpty(), QLatin1String("[]"));
            break;
        }
        case Map: {
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
        case Other:
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

template <typename T>
int compareThem(const T& a, const T& b)
{
    return a < b ? -1 : (b < a ? 1 : 0);
}

int compareNumbers(const QVariant& a, Kind kindOfA, const QVariant& b, Kind kindOfB)
{
    if (kindOfA == SignedInteger && kindOfB == SignedInteger)
        return compareThem(a.toLongLong(), b.toLongLong());
    const auto widest = [](const QVariant& value, Kind kind) -> long double {
        // Holds every 64-bit integer and every double: the order stays one, whatever types meet.
        switch (kind) {
        case SignedInteger:
            return static_cast<long double>(value.toLongLong());
        case UnsignedInteger:
            return static_cast<long double>(value.toULongLong());
        default:
            return static_cast<long double>(value.toDouble());
        }
    };
    const long double numberA = widest(a, kindOfA);
    const long double numberB = widest(b, kindOfB);
    if (std::isnan(numberA) || std::isnan(numberB))
        return int(std::isnan(numberA)) - int(std::isnan(numberB));
    return compareThem(numberA, numberB);
}

int compareValues(const QVariant& a, const QVariant& b);

int compareLists(const QVariantList& a, const QVariantList& b)
{
    for (int i = 0; i < a.size() && i < b.size(); ++i) {
        if (const int order = compareValues(a.at(i), b.at(i)))
            return order;
    }
    return compareThem(a.size(), b.size());
}

int compareMaps(const QVariantMap& a, const QVariantMap& b)
{
    auto elementA = a.cbegin();
    auto elementB = b.cbegin();
    for (; elementA != a.cend() && elementB != b.cend(); ++elementA, ++elementB) {
        if (const int order = comparePaths(elementA.key(), elementB.key()))
            return order;
        if (const int order = compareValues(elementA.value(), elementB.value()))
            return order;
    }
    return compareThem(a.size(), b.size());
}

int compareTimes(const QVariant& a, const QVariant& b)
{
    // A date is its first moment; a time alone has no place among the days and comes before them.
    if (const int order = compareThem(a.userType() != QMetaType::QTime, b.userType() != QMetaType::QTime))
        return order;
    return a.userType() == QMetaType::QTime ? compareThem(a.toTime(), b.toTime())
                                            : compareThem(a.toDateTime(), b.toDateTime());
}

int compareValues(const QVariant& a, const QVariant& b)
{
    const Kind kindOfA = kindOf(a);
    const Kind kindOfB = kindOf(b);
    if (isNumberKind(kindOfA) && isNumberKind(kindOfB))
        return compareNumbers(a, kindOfA, b, kindOfB);
    if (kindOfA != kindOfB)
        return compareThem(int(kindOfA), int(kindOfB));
    switch (kindOfA) {
    case NoValue:
        return 0;
    case Boolean:
        return compareThem(a.toBool(), b.toBool());
    case Text:
        return comparePaths(characterOrText(a), characterOrText(b));
    case Bytes:
        return compareThem(a.toByteArray(), b.toByteArray());
    case Time:
        return compareTimes(a, b);
    case List:
        return compareLists(a.toList(), b.toList());
    case Map:
        return compareMaps(a.toMap(), b.toMap());
    default:
        return comparePaths(otherText(a), otherText(b));
    }
}

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
    return isNumberKind(kindOf(value));
}

double ValueText::number(const QVariant& value)
{
    const Kind kind = kindOf(value);
    if (kind == Boolean)
        return value.toBool() ? 1.0 : 0.0;
    return isNumberKind(kind) ? value.toDouble() : std::numeric_limits<double>::quiet_NaN();
}

bool ValueText::isLess(const QVariant& a, const QVariant& b)
{
    return compareValues(a, b) < 0;
}

} // namespace Velk
