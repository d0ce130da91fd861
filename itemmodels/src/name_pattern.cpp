#include "name_pattern.h"

#include "name_path.h"

#include <string_view>

namespace Velk {

namespace {

// Where the set that begins at pattern[open] ends; -1 when it is not closed. A `]` that comes first belongs to the set.
int setEnd(const QString& pattern, int open)
{
    int first = open + 1;
    if (first < pattern.size() && (pattern[first] == QLatin1Char('!') || pattern[first] == QLatin1Char('^')))
        ++first;
    return int(pattern.indexOf(QLatin1Char(']'), first + 1));
}

QString expressionOfWildcard(const QString& pattern)
{
    QString expression;
    for (int i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        if (c == QLatin1Char('*')) {
            expression += QLatin1String(".*");
        } else if (c == QLatin1Char('?')) {
            expression += QLatin1Char('.');
        } else if (c == QLatin1Char('[') && setEnd(pattern, i) >= 0) {
            const int end = setEnd(pattern, i);
            QString set = pattern.mid(i + 1, end - i - 1);
            const bool isNegated = set.startsWith(QLatin1Char('!')) || set.startsWith(QLatin1Char('^'));
            if (isNegated)
                set.remove(0, 1);
            set.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
            set.replace(QLatin1Char('['), QLatin1String("\\["));
            set.replace(QLatin1Char('^'), QLatin1String("\\^"));
            if (set.startsWith(QLatin1Char(']')))
                set.prepend(QLatin1Char('\\'));
            expression += (isNegated ? QLatin1String("[^") : QLatin1String("[")) + set + QLatin1Char(']');
            i = end;
        } else {
            expression += QRegularExpression::escape(QString(c));
        }
    }
    return expression;
}

bool hasSet(const QString& pattern)
{
    for (int open = int(pattern.indexOf(QLatin1Char('['))); open >= 0;
         open = int(pattern.indexOf(QLatin1Char('['), open + 1))) {
        if (setEnd(pattern, open) >= 0)
            return true;
    }
    return false;
}

std::u16string_view units(QStringView text)
{
    return {text.utf16(), size_t(text.size())};
}

} // namespace

NamePattern::NamePattern(const QString& text, Syntax syntax, Qt::CaseSensitivity caseSensitivity)
    : m_caseSensitivity(caseSensitivity)
{
    if (text.isEmpty())
        return;
    if (syntax == RegularExpression) {
        useExpression(text);
    } else if (syntax == Wildcard && (text.contains(QLatin1Char('?')) || hasSet(text))) {
        useExpression(expressionOfWildcard(text));
    } else {
        // What people type most is a text, or texts with stars between them: found without an expression, which takes
        // a tenth of the time.
        const QString searched = caseSensitivity == Qt::CaseInsensitive ? foldedCase(text) : text;
        m_pieces = syntax == Wildcard ? searched.split(QLatin1Char('*'), Qt::SkipEmptyParts) : QStringList{searched};
    }
}

void NamePattern::useExpression(const QString& expression)
{
    QRegularExpression::PatternOptions options = QRegularExpression::DotMatchesEverythingOption;
    if (m_caseSensitivity == Qt::CaseInsensitive)
        options |= QRegularExpression::CaseInsensitiveOption;
    m_expression = QRegularExpression(expression, options);
    m_needsExpression = true;
    if (m_expression.isValid())
        m_expression.optimize();
    else
        m_errorString = m_expression.errorString();
}

bool NamePattern::accepts(const QString& name, QStringView folded) const
{
    if (m_needsExpression)
        return m_expression.match(name).hasMatch();
    const std::u16string_view searched = wantsFoldedName() ? units(folded) : units(name);
    size_t position = 0;
    for (const QString& piece : m_pieces) {
        const size_t found = searched.find(units(piece), position);
        if (found == std::u16string_view::npos)
            return false;
        position = found + size_t(piece.size());
    }
    return true;
}

bool NamePattern::narrows(const NamePattern& wider) const
{
    if (wider.acceptsEverything())
        return true;
    if (m_needsExpression || wider.m_needsExpression || m_caseSensitivity != wider.m_caseSensitivity)
        return false;
    // Piece by piece, as typing at the end does it; a piece in the middle that grew leaves the order as it was.
    if (m_pieces.size() < wider.m_pieces.size())
        return false;
    for (int i = 0; i < wider.m_pieces.size(); ++i) {
        if (!m_pieces.at(i).contains(wider.m_pieces.at(i)))
            return false;
    }
    return true;
}

} // namespace Velk
