// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/distinct_colors.h>

#include <QCoreApplication>

namespace Velk {

namespace {

struct NamedColor
{
    QRgb rgb;
    const char* name;
};

constexpr NamedColor colors[] = {
    {qRgb(0, 114, 178), QT_TRANSLATE_NOOP("Velk::DistinctColors", "blue")},
    {qRgb(213, 94, 0), QT_TRANSLATE_NOOP("Velk::DistinctColors", "vermilion")},
    {qRgb(0, 158, 115), QT_TRANSLATE_NOOP("Velk::DistinctColors", "bluish green")},
    {qRgb(204, 121, 167), QT_TRANSLATE_NOOP("Velk::DistinctColors", "reddish purple")},
    {qRgb(230, 159, 0), QT_TRANSLATE_NOOP("Velk::DistinctColors", "orange")},
    {qRgb(86, 180, 233), QT_TRANSLATE_NOOP("Velk::DistinctColors", "sky blue")},
    {qRgb(135, 0, 240), QT_TRANSLATE_NOOP("Velk::DistinctColors", "violet")},
    {qRgb(120, 45, 15), QT_TRANSLATE_NOOP("Velk::DistinctColors", "brown")},
    {qRgb(165, 210, 120), QT_TRANSLATE_NOOP("Velk::DistinctColors", "light green")},
    {qRgb(90, 60, 75), QT_TRANSLATE_NOOP("Velk::DistinctColors", "dark grey")},
    {qRgb(150, 120, 255), QT_TRANSLATE_NOOP("Velk::DistinctColors", "lavender")},
    {qRgb(240, 15, 75), QT_TRANSLATE_NOOP("Velk::DistinctColors", "crimson")},
    {qRgb(225, 180, 180), QT_TRANSLATE_NOOP("Velk::DistinctColors", "pink")},
    {qRgb(75, 45, 165), QT_TRANSLATE_NOOP("Velk::DistinctColors", "indigo")},
};
constexpr int colorCount = int(sizeof(colors) / sizeof(colors[0]));

} // namespace

int DistinctColors::count()
{
    return colorCount;
}

QColor DistinctColors::at(int index)
{
    return QColor(colors[index % colorCount].rgb);
}

int DistinctColors::indexOf(const QColor& color)
{
    for (int i = 0; i < colorCount; ++i) {
        if (colors[i].rgb == color.rgb())
            return i;
    }
    return -1;
}

QString DistinctColors::nameOf(const QColor& color)
{
    const int index = indexOf(color);
    return index < 0 ? color.name() : QCoreApplication::translate("Velk::DistinctColors", colors[index].name);
}

} // namespace Velk
