// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_FILTER_PASS_H
#define ITEMMODELS_FILTER_PASS_H

#include <keynames/name_pattern.h>

#include <QDeadlineTimer>

#include <optional>
#include <vector>

namespace Velk {

class CatalogueModel;
class FoldedNames;

/// One run of a filter over the rows of a catalogue model. Each call of advance() filters a further part of the rows.
/// The rows of the model do not change meanwhile.
class FilterPass
{
public:
    /// `natures` are bits of MemoryKeyNature. With `candidates`, rows in ascending order, all other rows are
    /// rejected without being looked at.
    FilterPass(const NamePattern& pattern, int natures, std::optional<std::vector<int>> candidates);

    const NamePattern& pattern() const { return m_pattern; }
    int natures() const { return m_natures; }
    bool wantsFoldedNames() const { return m_pattern.wantsFoldedName() && !m_pattern.acceptsEverything(); }

    /// Looks at further rows until the deadline has expired. Returns whether all rows were looked at. A null `source`
    /// has no rows. `names` are those of `source`, and may be null unless wantsFoldedNames().
    bool advance(const CatalogueModel* source, const FoldedNames* names, QDeadlineTimer deadline);

    /// The accepted rows, ascending.
    std::vector<int> takeAccepted() { return std::move(m_accepted); }

private:
    NamePattern m_pattern;
    int m_natures;
    std::optional<std::vector<int>> m_candidates;
    int m_next = 0; // a row, or a place among the candidates
    std::vector<int> m_accepted;
};

} // namespace Velk

#endif
