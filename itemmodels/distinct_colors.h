// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_DISTINCT_COLORS_H
#define ITEMMODELS_DISTINCT_COLORS_H

#include <itemmodels/itemmodels_export.h>

#include <QColor>
#include <QString>

namespace Velk {

/// Colours for curves and marks that people with any of the common colour vision deficiencies can distinguish, and that
/// are visible on a white and on a near-black background.
///
/// The first six are from the palette that Masataka Okabe and Kei Ito published in "Color Universal Design" (2008); its
/// black and its yellow are not visible on one of the backgrounds. The others were computed: any two of all colours
/// differ by at least 15 in CIE 1976 L*a*b*, where 2.3 is just noticeable, with normal vision and with protanopia,
/// deuteranopia and tritanopia as the matrices of Machado, Oliveira and Fernandes (2009) simulate them; and each has a
/// contrast of at least 1.7 to either background.
namespace DistinctColors {

/// The number of colours.
ITEMMODELS_EXPORT int count();
/// The colour of this number, which is not negative. After count() colours they repeat.
ITEMMODELS_EXPORT QColor at(int index);
/// The number of the colour; -1 for any other colour.
ITEMMODELS_EXPORT int indexOf(const QColor& color);
/// The name of the colour, translated; for any other colour its "#rrggbb".
ITEMMODELS_EXPORT QString nameOf(const QColor& color);

} // namespace DistinctColors

} // namespace Velk

#endif
