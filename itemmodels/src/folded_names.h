// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_FOLDED_NAMES_H
#define ITEMMODELS_FOLDED_NAMES_H

#include <QString>

#include <vector>

namespace Velk {

class CatalogueModel;

/// The case-folded names of all rows of a catalogue model, one after the other in one text: a search reads them at the
/// speed of the memory.
class FoldedNames
{
public:
    explicit FoldedNames(const CatalogueModel& source);

    QStringView name(int row) const
    {
        const int begin = row == 0 ? 0 : m_ends[size_t(row) - 1];
        return QStringView(m_text).mid(begin, m_ends[size_t(row)] - begin);
    }

private:
    QString m_text;
    std::vector<int> m_ends;
};

} // namespace Velk

#endif
