#ifndef ITEMMODELS_NAME_PATH_H
#define ITEMMODELS_NAME_PATH_H

#include <QString>

namespace Velk {

/// What separates the segments of a key's name: "Arm/Elbow/Position".
constexpr QChar pathSeparator = QLatin1Char('/');

/// The segment of `name` that begins at `begin`: up to the next separator, or to the end. It may be empty.
QStringView pathSegment(QStringView name, int begin);

/// Compares two names as paths, segment by segment: negative, zero or positive. A segment goes by its letters without
/// regard to case and by the value of its numbers ("Joint2" before "Joint10"), then by its code units, so that zero
/// means equal. A path comes directly before the paths that it is the beginning of: the names below any path are
/// neighbours in a sorted list.
int comparePaths(QStringView a, QStringView b);

/// `text` with the letters that differ only by case made equal, code point by code point, as Qt's comparisons that
/// ignore case do.
QString foldedCase(QStringView text);

} // namespace Velk

#endif
