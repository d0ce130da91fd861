#ifndef ITEMMODELS_DISTINCT_COLORS_H
#define ITEMMODELS_DISTINCT_COLORS_H

#include <itemmodels/itemmodels_export.h>

#include <QColor>
#include <QString>

namespace Velk {

/// Colours for curves and marks that people with any of the common colour vision deficiencies can tell apart, and that
/// stand out from a white and from a near-black background.
///
/// The first six are those of the palette that Masataka Okabe and Kei Ito published in "Color Universal Design" (2008)
/// that suit both backgrounds: its black and its yellow do not. The others were chosen by computation: seen with
/// normal vision, and as protanopia, deuteranopia and tritanopia are simulated by the matrices of Machado, Oliveira
/// and Fernandes (2009), no two of all differ by less than 15 in CIE 1976 L*a*b*, where 2.3 is just noticeable; and
/// each has a contrast of at least 1.7 to either background.
namespace DistinctColors {

/// How many colours there are.
ITEMMODELS_EXPORT int count();
/// Colour number `index`; they begin again after count() colours. `index` is not negative.
ITEMMODELS_EXPORT QColor at(int index);
/// The number of the colour; -1 when it is none of these.
ITEMMODELS_EXPORT int indexOf(const QColor& color);
/// What a person calls the colour, translated; for any other colour its "#rrggbb".
ITEMMODELS_EXPORT QString nameOf(const QColor& color);

} // namespace DistinctColors

} // namespace Velk

#endif
