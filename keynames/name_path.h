// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef KEYNAMES_NAME_PATH_H
#define KEYNAMES_NAME_PATH_H

#include <QString>

namespace Velk {

/// Separates the segments of a key's name: "Arm/Elbow/Position".
constexpr QChar pathSeparator = QLatin1Char('/');

/// The segment of `name` that begins at `begin`: up to the next separator, or to the end. It may be empty.
QStringView pathSegment(QStringView name, int begin);

/// Compares two names as paths, segment by segment: negative, zero or positive. Two segments compare by their letters
/// without regard to case and by the value of their numbers ("Joint2" before "Joint10"), then by their code units; zero
/// means that the names are equal. A path comes directly before the paths below it: in a sorted list the names below
/// any path are neighbours.
int comparePaths(QStringView a, QStringView b);

/// `text` with its case folded, code point by code point: two texts that differ only by case become equal. The same
/// folding as in Qt's case-insensitive comparisons.
QString foldedCase(QStringView text);

} // namespace Velk

#endif
