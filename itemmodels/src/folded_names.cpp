// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "folded_names.h"

#include <itemmodels/catalogue_model.h>

#include <keynames/name_path.h>

namespace Velk {

FoldedNames::FoldedNames(const CatalogueModel& source)
{
    size_t size = 0;
    for (int row = 0; row < source.count(); ++row)
        size += size_t(source.key(row).name().size());
    m_text.reserve(int(size));
    m_ends.reserve(size_t(source.count()));
    for (int row = 0; row < source.count(); ++row) {
        m_text += foldedCase(source.key(row).name());
        m_ends.push_back(int(m_text.size()));
    }
}

} // namespace Velk
