// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef KEYNAMES_WILDCARD_H
#define KEYNAMES_WILDCARD_H

#include <QString>

namespace Velk {

/// What square brackets mean in a wildcard pattern.
enum class WildcardBrackets
{
    Literal, ///< themselves: "Motor[0]/*" matches the keys of a motor of that name
    Set      ///< `[abc]` and `[a-c]` match one character of the set, `[!abc]` and `[^abc]` any other character
};

/// Whether the pattern contains a set in brackets. A `[` that is not closed is literal.
bool hasWildcardSet(const QString& pattern);

/// The regular expression of a wildcard pattern, not anchored. `*` matches any text and `?` any one character; both
/// also match the separators of a path. Square brackets match as `brackets` says. Every other character matches itself.
/// Use the expression with QRegularExpression::DotMatchesEverythingOption. With WildcardBrackets::Set the expression
/// can be invalid: "[3-1]".
QString wildcardExpression(const QString& pattern, WildcardBrackets brackets);

} // namespace Velk

#endif
