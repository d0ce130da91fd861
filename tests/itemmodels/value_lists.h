// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_ITEMMODELS_VALUE_LISTS_H
#define TESTS_ITEMMODELS_VALUE_LISTS_H

#include <QVariantList>

namespace Velk {

/// 1, 2, …, count.
inline QVariantList numbers(int count)
{
    QVariantList list;
    for (int i = 1; i <= count; ++i)
        list << i;
    return list;
}

} // namespace Velk

#endif
