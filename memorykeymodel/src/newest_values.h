// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef MEMORYKEYMODEL_NEWEST_VALUES_H
#define MEMORYKEYMODEL_NEWEST_VALUES_H

#include "batch_matcher.h"

#include <memorykeymodel/displayed_memory_key.h>

#include <QSet>

#include <vector>

namespace Velk {

/// Stores the newest samples of batches in the displayed keys, and builds the sets of keys to announce.
///
/// Valid for one set of displayed keys: create another one when a key was added, removed or otherwise changed.
///
/// There are three cases, because each saves a measurable amount with thousands of keys. A batch of all keys needs no
/// set of its own. A batch of the same keys as before changes the set that was announced before. A batch of other keys
/// builds that set. One walk over all displayed keys for every case would take twice the instructions for a batch that
/// names one key in ten of 10 000, and a hundred times for one in a thousand.
///
/// Places are those of BatchMatcher. They are computed before the set of displayed keys is detached from its copies and
/// used afterwards: detaching a QSet keeps its order.
class NewestValues
{
public:
    /// Stores in each matched key of `keys` its newest sample of the batch. Returns these keys.
    QSet<DisplayedMemoryKey> keep(const std::vector<BatchMatcher::Match>& matches, QSet<DisplayedMemoryKey>* keys);

private:
    QSet<DisplayedMemoryKey> keepAll(const std::vector<BatchMatcher::Match>& matches, QSet<DisplayedMemoryKey>* keys);
    void keepSame(const std::vector<BatchMatcher::Match>& matches, QSet<DisplayedMemoryKey>* keys);
    void keepOthers(const std::vector<BatchMatcher::Match>& matches, QSet<DisplayedMemoryKey>* keys);
    void findTheAnnouncedKeys(const std::vector<BatchMatcher::Match>& matches, const QSet<DisplayedMemoryKey>& keys);
    bool areTheSameKeys(const std::vector<BatchMatcher::Match>& matches) const;

    // The set that was announced last. A robot that samples its keys at different periods delivers the same few again
    // and again, and changing the values of the elements costs less than building the set.
    QSet<DisplayedMemoryKey> m_announced;
    std::vector<int> m_places;      ///< of the announced keys among the displayed ones, in the order of the matches
    std::vector<int> m_walkToMatch; ///< index of the match for each announced key, in the order of m_announced; empty
                                    ///< until the same keys are delivered for the second time
};

} // namespace Velk

#endif
