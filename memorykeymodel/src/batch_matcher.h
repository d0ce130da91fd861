// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef MEMORYKEYMODEL_BATCH_MATCHER_H
#define MEMORYKEYMODEL_BATCH_MATCHER_H

#include <memorykeymodel/displayed_memory_key.h>
#include <robotconnection/memory_interface.h>

#include <QSet>
#include <QString>

#include <cstddef>
#include <vector>

namespace Velk {

/// Finds the displayed keys of a batch.
///
/// It holds the names of the keys in ascending order, each with its place in the iteration over the set. A batch is
/// ascending by name too, so one walk over both finds every key. Nothing is hashed, and characters are seldom compared,
/// because robots deliver the same strings again and again.
///
/// Valid until a key is added to the set or removed from it. Detaching the set is neither: a copy of a QSet has the
/// order of the original, with every supported version of Qt, so the places hold for the detached set as well.
class BatchMatcher
{
public:
    explicit BatchMatcher(const QSet<DisplayedMemoryKey>& keys);

    /// A displayed key that the batch holds samples of.
    struct Match
    {
        int place;              ///< of the key in the iteration over the set
        const Samples* samples; ///< in the batch; not empty
    };

    /// Ascending by name. The pointers are valid as long as the batch.
    std::vector<Match> match(const GatheredData& batch);

private:
    struct Entry
    {
        QString name;
        int place;
    };
    using Entries = std::vector<Entry>;

    /// The first entry from `entry` on whose name is not before `name`.
    Entries::const_iterator notBefore(Entries::const_iterator entry, const QString& name) const;

    Entries m_entries;
    /// Hints: the entries of the names of the last batch, in the order of the batch. A hint is only where the search
    /// starts: an entry counts as found when its name equals that of the batch.
    std::vector<std::ptrdiff_t> m_lastFound;
};

} // namespace Velk

#endif
