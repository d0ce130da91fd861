// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef KEYNAMES_NAME_PATTERN_H
#define KEYNAMES_NAME_PATTERN_H

#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace Velk {

/// What a name has to contain to be shown: a text, a wildcard pattern or a regular expression, anywhere in the name.
/// Every name contains the empty text.
class NamePattern
{
public:
    /// Accepts every name.
    NamePattern() = default;
    /// Accepts the names that contain the text, character by character.
    static NamePattern ofText(const QString& text, Qt::CaseSensitivity caseSensitivity);
    /// As wildcardExpression() describes it, with WildcardBrackets::Set.
    static NamePattern ofWildcard(const QString& text, Qt::CaseSensitivity caseSensitivity);
    /// As QRegularExpression takes it. A dot also matches a line break.
    static NamePattern ofRegularExpression(const QString& text, Qt::CaseSensitivity caseSensitivity);

    /// The message of the regular expression engine, in English, for a text that is not a valid pattern; otherwise
    /// empty.
    QString errorString() const { return m_errorString; }

    bool acceptsEverything() const { return m_pieces.isEmpty() && !m_needsExpression; }
    /// Whether accepts() reads the folded name and not the name itself.
    bool wantsFoldedName() const { return !m_needsExpression && m_caseSensitivity == Qt::CaseInsensitive; }
    /// `folded` is foldedCase(name), and may be empty unless wantsFoldedName().
    bool accepts(const QString& name, QStringView folded) const;

    /// Whether every name that this pattern accepts is known to be accepted by `wider` as well.
    bool narrows(const NamePattern& wider) const;

private:
    void usePieces(const QString& text, bool isSplitAtStars);
    void useExpression(const QString& expression);

    Qt::CaseSensitivity m_caseSensitivity = Qt::CaseSensitive;
    QStringList m_pieces; // case-folded if case does not count; a name contains them one after the other
    bool m_needsExpression = false;
    QRegularExpression m_expression;
    QString m_errorString;
};

} // namespace Velk

#endif
