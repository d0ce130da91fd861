// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_KEYNAMES_TEXT_H
#define TESTS_KEYNAMES_TEXT_H

#include <QString>
#include <QStringList>

namespace Velk {

inline QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

/// "one|two" as two strings; none for "".
inline QStringList list(const char* utf8)
{
    const QString joined = text(utf8);
    return joined.isEmpty() ? QStringList() : joined.split(QLatin1Char('|'));
}

} // namespace Velk

#endif
