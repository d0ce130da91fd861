// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <keynames/wildcard.h>

#include <QRegularExpression>

namespace Velk {

namespace {

// The position of the `]` that closes the set at pattern[open]; -1 when it is not closed. A `]` that comes first is an
// element of the set.
int setEnd(const QString& pattern, int open)
{
    int first = open + 1;
    if (first < pattern.size() && (pattern[first] == QLatin1Char('!') || pattern[first] == QLatin1Char('^')))
        ++first;
    return int(pattern.indexOf(QLatin1Char(']'), first + 1));
}

// `set` is what stands between the brackets.
QString setExpression(QString set)
{
    const bool isNegated = set.startsWith(QLatin1Char('!')) || set.startsWith(QLatin1Char('^'));
    if (isNegated)
        set.remove(0, 1);
    set.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    set.replace(QLatin1Char('['), QLatin1String("\\["));
    set.replace(QLatin1Char('^'), QLatin1String("\\^"));
    if (set.startsWith(QLatin1Char(']')))
        set.prepend(QLatin1Char('\\'));
    return (isNegated ? QLatin1String("[^") : QLatin1String("[")) + set + QLatin1Char(']');
}

} // namespace

bool hasWildcardSet(const QString& pattern)
{
    for (int open = int(pattern.indexOf(QLatin1Char('['))); open >= 0;
         open = int(pattern.indexOf(QLatin1Char('['), open + 1))) {
        if (setEnd(pattern, open) >= 0)
            return true;
    }
    return false;
}

QString wildcardExpression(const QString& pattern, WildcardBrackets brackets)
{
    // QRegularExpression::wildcardToRegularExpression() does not serve: there a `*` ends at a slash, and "Arm/*" has to
    // match "Arm/Elbow/Position".
    QString expression;
    QString literal; // escaped as a whole: one code unit of a surrogate pair is no character
    const auto append = [&](const QString& part) {
        expression += QRegularExpression::escape(literal) + part;
        literal.clear();
    };
    for (int i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        const int end = brackets == WildcardBrackets::Set && c == QLatin1Char('[') ? setEnd(pattern, i) : -1;
        if (end >= 0) {
            append(setExpression(pattern.mid(i + 1, end - i - 1)));
            i = end;
        } else if (c == QLatin1Char('*')) {
            append(QStringLiteral(".*"));
        } else if (c == QLatin1Char('?')) {
            append(QStringLiteral("."));
        } else {
            literal += c;
        }
    }
    append(QString());
    return expression;
}

} // namespace Velk
