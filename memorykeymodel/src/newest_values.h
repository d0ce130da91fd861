#ifndef MEMORYKEYMODEL_NEWEST_VALUES_H
#define MEMORYKEYMODEL_NEWEST_VALUES_H

#include "batch_matcher.h"

#include <memorykeymodel/displayed_memory_key.h>

#include <QSet>

#include <vector>

namespace Velk {

/// Keeps the newest samples of batches in the displayed keys, and makes up the sets of keys to announce.
///
/// Made for one set of displayed keys; to be made anew when a key is added, removed or otherwise changed.
class NewestValues
{
public:
    /// Gives each matched key of `keys` its newest sample of the batch; returns these keys.
    QSet<DisplayedMemoryKey> keep(const std::vector<BatchMatcher::Match>& matches, QSet<DisplayedMemoryKey>* keys);

private:
    QSet<DisplayedMemoryKey> keepAll(const std::vector<BatchMatcher::Match>& matches, QSet<DisplayedMemoryKey>* keys);
    void keepSame(const std::vector<BatchMatcher::Match>& matches, QSet<DisplayedMemoryKey>* keys);
    void keepOthers(const std::vector<BatchMatcher::Match>& matches, QSet<DisplayedMemoryKey>* keys);
    void findTheAnnouncedKeys(const std::vector<BatchMatcher::Match>& matches, const QSet<DisplayedMemoryKey>& keys);
    bool areTheSameKeys(const std::vector<BatchMatcher::Match>& matches) const;

    // What was announced last. A robot that samples its keys at different periods delivers the same few again and
    // again, and giving new values to the elements of a set costs less than making up the set.
    QSet<DisplayedMemoryKey> m_announced;
    std::vector<int> m_places;      ///< of the announced keys among the displayed ones, in the order of the matches
    std::vector<int> m_walkToMatch; ///< from the place in the walk over the announced keys to that in the matches;
                                    ///< empty until the same keys are delivered for the second time
};

} // namespace Velk

#endif
