#ifndef MEMORYKEYMODEL_BATCH_MATCHER_H
#define MEMORYKEYMODEL_BATCH_MATCHER_H

#include <memorykeymodel/displayed_memory_key.h>

#include <QMap>
#include <QSet>
#include <QString>
#include <QVariant>

#include <cstddef>
#include <vector>

namespace Velk {

/// Finds the displayed keys of a batch.
///
/// The names of the keys are kept in ascending order, each with its place in the walk over the set. A batch is
/// ascending by name too, so one walk over both finds every key: no hashing, and mostly no comparing of characters, as
/// robots deliver the same strings again and again. Holds for as long as no key is added to the set or removed from it.
class BatchMatcher
{
public:
    explicit BatchMatcher(const QSet<DisplayedMemoryKey>& keys);

    /// A displayed key that the batch holds samples of.
    struct Match
    {
        int place;                             ///< of the key in the walk over the set
        const QMap<double, QVariant>* samples; ///< in the batch; not empty
    };

    /// Ascending by name. The pointers are into the batch.
    std::vector<Match> match(const QMap<QString, QMap<double, QVariant>>& batch);

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
    std::vector<std::ptrdiff_t> m_lastFound; ///< where the names of the last batch were, in the order of the batch
};

} // namespace Velk

#endif
