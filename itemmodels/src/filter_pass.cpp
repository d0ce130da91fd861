// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "filter_pass.h"

#include "folded_names.h"

#include <itemmodels/catalogue_model.h>

#include <algorithm>

namespace Velk {

namespace {

constexpr int rowsPerClockReading = 256;

} // namespace

FilterPass::FilterPass(const NamePattern& pattern, int natures, std::optional<std::vector<int>> candidates)
    : m_pattern(pattern)
    , m_natures(natures)
    , m_candidates(std::move(candidates))
{}

bool FilterPass::advance(const CatalogueModel* source, const FoldedNames* names, QDeadlineTimer deadline)
{
    const bool readsFoldedNames = m_pattern.wantsFoldedName() && names;
    const bool takesAllNames = m_pattern.acceptsEverything();
    const int sourceCount = source ? source->count() : 0;
    const int end = m_candidates ? int(m_candidates->size()) : sourceCount;
    while (m_next < end) {
        const int sliceEnd = std::min(end, m_next + rowsPerClockReading);
        for (int i = m_next; i < sliceEnd; ++i) {
            const int row = m_candidates ? (*m_candidates)[size_t(i)] : i;
            const MemoryKey& key = source->key(row);
            if (!(key.nature() & m_natures))
                continue;
            if (takesAllNames || m_pattern.accepts(key.name(), readsFoldedNames ? names->name(row) : QStringView()))
                m_accepted.push_back(row);
        }
        m_next = sliceEnd;
        if (m_next < end && deadline.hasExpired())
            return false;
    }
    return true;
}

} // namespace Velk
