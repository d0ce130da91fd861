// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <keynames/name_pattern.h>

#include <keynames/name_path.h>
#include <keynames/wildcard.h>

#include <string_view>

namespace Velk {

namespace {

std::u16string_view units(QStringView text)
{
    return {text.utf16(), size_t(text.size())};
}

} // namespace

NamePattern NamePattern::ofText(const QString& text, Qt::CaseSensitivity caseSensitivity)
{
    NamePattern pattern;
    pattern.m_caseSensitivity = caseSensitivity;
    if (!text.isEmpty())
        pattern.usePieces(text, false);
    return pattern;
}

NamePattern NamePattern::ofWildcard(const QString& text, Qt::CaseSensitivity caseSensitivity)
{
    NamePattern pattern;
    pattern.m_caseSensitivity = caseSensitivity;
    // Most patterns are a text, or texts with stars between them: to search for the pieces takes a tenth of the time of
    // an expression.
    if (text.contains(QLatin1Char('?')) || hasWildcardSet(text))
        pattern.useExpression(wildcardExpression(text, WildcardBrackets::Set));
    else
        pattern.usePieces(text, true);
    return pattern;
}

NamePattern NamePattern::ofRegularExpression(const QString& text, Qt::CaseSensitivity caseSensitivity)
{
    NamePattern pattern;
    pattern.m_caseSensitivity = caseSensitivity;
    if (!text.isEmpty())
        pattern.useExpression(text);
    return pattern;
}

void NamePattern::usePieces(const QString& text, bool isSplitAtStars)
{
    const QString searched = m_caseSensitivity == Qt::CaseInsensitive ? foldedCase(text) : text;
    m_pieces = isSplitAtStars ? searched.split(QLatin1Char('*'), Qt::SkipEmptyParts) : QStringList{searched};
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
    // Compared piece by piece. Typing makes a piece longer or adds one at the end; the order of the pieces stays.
    if (m_pieces.size() < wider.m_pieces.size())
        return false;
    for (int i = 0; i < wider.m_pieces.size(); ++i) {
        if (!m_pieces.at(i).contains(wider.m_pieces.at(i)))
            return false;
    }
    return true;
}

} // namespace Velk
