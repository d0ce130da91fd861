#ifndef ITEMMODELS_NAME_PATTERN_H
#define ITEMMODELS_NAME_PATTERN_H

#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace Velk {

/// What a name has to contain to be shown: a text, a wildcard pattern or a regular expression, anywhere in the name.
///
/// In a wildcard pattern `*` stands for any characters, the separators of a path included, `?` for any one, `[abc]` and
/// `[!abc]` for one of a set and one that is not; a `[` that is not closed stands for itself.
class NamePattern
{
public:
    enum Syntax
    {
        FixedString,
        Wildcard,
        RegularExpression
    };

    /// Accepts every name.
    NamePattern() = default;
    NamePattern(const QString& text, Syntax syntax, Qt::CaseSensitivity caseSensitivity);

    /// Why the text is no pattern, in English, as the regular expression engine says it; empty when it is one.
    QString errorString() const { return m_errorString; }

    bool acceptsEverything() const { return m_pieces.isEmpty() && !m_needsExpression; }
    /// Whether accepts() reads the folded name and not the name itself.
    bool wantsFoldedName() const { return !m_needsExpression && m_caseSensitivity == Qt::CaseInsensitive; }
    /// `folded` is foldedCase(name), and may be empty unless wantsFoldedName().
    bool accepts(const QString& name, QStringView folded) const;

    /// Whether every name that this pattern accepts is known to be accepted by `wider` as well.
    bool narrows(const NamePattern& wider) const;

private:
    void useExpression(const QString& expression);

    Qt::CaseSensitivity m_caseSensitivity = Qt::CaseSensitive;
    QStringList m_pieces; // folded where case does not count; to be found one after the other
    bool m_needsExpression = false;
    QRegularExpression m_expression;
    QString m_errorString;
};

} // namespace Velk

#endif
