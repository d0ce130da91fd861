// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_SAMPLE_HISTORY_H
#define ITEMMODELS_SAMPLE_HISTORY_H

#include <itemmodels/itemmodels_export.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <robotconnection/memory_interface.h>

#include <QHash>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace Velk {

class SampleStream;

/// One sample of a key.
struct HistorySample
{
    double time = 0.0;       ///< in the unit of the robot's clock
    double number = 0.0;     ///< ValueText::number() of the value: NaN when it cannot be drawn
    QVariant value;          ///< as delivered
    bool isAfterGap = false; ///< no line leads here: samples may be missing between this one and the one before
};

/// Samples of one key that lie in a row in memory, ascending by time. A plain pair of pointers into the history: valid
/// until the history changes, which it does only in the event loop and by its own operations.
class HistorySpan
{
public:
    HistorySpan() = default;
    HistorySpan(const HistorySample* begin, const HistorySample* end)
        : m_begin(begin)
        , m_end(end)
    {}

    const HistorySample* begin() const { return m_begin; }
    const HistorySample* end() const { return m_end; }
    int size() const { return int(m_end - m_begin); }
    bool isEmpty() const { return m_begin == m_end; }
    const HistorySample& at(int i) const { return m_begin[i]; }
    const HistorySample& first() const { return *m_begin; }
    const HistorySample& last() const { return *(m_end - 1); }

private:
    const HistorySample* m_begin = nullptr;
    const HistorySample* m_end = nullptr;
};

/// The samples that the robot delivered for the displayed keys: every one, where the displayed key set keeps the newest
/// of each batch. Bounded per key, by count and by time.
///
/// What happened between two samples may be unknown: the robot was disconnected, or its watcher was stopped. The first
/// sample after such a gap is marked (HistorySample::isAfterGap), and a plot starts a new line there. The gaps are
/// those of the SampleStream. An application that stops the watcher itself, and not by a RobotSession, calls markGap()
/// as well: a short stop is not noticed otherwise.
///
/// The samples of a key ascend by time. One that has the time of another replaces it, and one that comes late is put in
/// its place. A sample that is older than all that are kept, or that goes back over a gap, means that the robot's clock
/// has restarted: the samples before it have no place on the new time axis and are dropped. A time stamp that is no
/// finite number is ignored.
///
/// Lives on the displayed key set's thread.
class ITEMMODELS_EXPORT SampleHistory : public QObject
{
    Q_OBJECT

public:
    /// `displayedKeys` is not owned, may be null, and may be deleted at any time, which empties the history.
    explicit SampleHistory(DisplayedMemoryKeyListModel* displayedKeys = nullptr, QObject* parent = nullptr);
    ~SampleHistory() override;

    DisplayedMemoryKeyListModel* displayedKeys() const { return m_displayedKeys; }
    /// Follows another set; the samples of the former one are dropped. `samples` is a stream of the same robot, such as
    /// RobotSession::samples(). It is not owned, and may be deleted at any time. Null: the history makes a stream of
    /// its own.
    void setDisplayedKeys(DisplayedMemoryKeyListModel* displayedKeys, SampleStream* samples = nullptr);

    /// How many samples of a key are kept; 10 000 at first, and never less than 1. A sample takes about 60 bytes and
    /// its value; memory is taken as samples come.
    int maximumCount() const { return m_maximumCount; }
    void setMaximumCount(int count);
    /// How much older than the newest sample of its key a sample may be, in the unit of the robot's clock; 0, at first,
    /// for any age.
    double maximumAge() const { return m_maximumAge; }
    void setMaximumAge(double age);

    /// The samples of the key; empty when it is not displayed or none came.
    HistorySpan samples(const QString& name) const;
    /// The samples between the two times, and one more on each side, so that a line reaches both edges of a plot.
    HistorySpan samples(const QString& name, double from, double to) const;
    /// The newest time stamp of all samples; 0 when there is none.
    double newestTime() const { return m_newestTime; }
    /// Identifies the key's samples in this history: equal numbers mean equal samples, also after the key was removed
    /// and added again. 0 for a key without samples.
    quint64 revision(const QString& name) const;

    /// The next sample of every key comes after a gap.
    void markGap();
    /// Drops all samples.
    void clear();

Q_SIGNALS:
    /// Ends every batch in which a displayed key has samples, once they are here.
    void samplesAdded();
    /// A gap began that was noticed or marked. Not emitted again until samples came.
    void gapBegan();
    /// Samples were dropped other than by the bounds: all, or those of keys that are not displayed any more.
    void samplesDropped();

private:
    struct Ring
    {
        std::vector<HistorySample> samples; // the first `unused` ones are dropped already
        size_t unused = 0;
        bool isGapOpen = false;
        quint64 revision = 0; // 0 when there are no samples
    };

    void onBatch(const GatheredData& batch);
    void onKeysAdded(const QSet<DisplayedMemoryKey>& keys);
    void onKeysRemoved(const QSet<DisplayedMemoryKey>& keys);
    void onKeysUpdated(const QSet<DisplayedMemoryKey>& keys);
    void synchronise();
    static void dropFirst(Ring& ring, size_t count);
    bool insert(Ring& ring, double time, const QVariant& value);
    bool applyBounds(Ring& ring);
    void applyBoundsToAll();
    void hasChanged(Ring& ring);
    void forgetAll();

    QPointer<DisplayedMemoryKeyListModel> m_displayedKeys;
    QPointer<SampleStream> m_samples;
    std::unique_ptr<SampleStream> m_ownSamples; // when no other was given
    QHash<QString, Ring> m_rings;               // one for each displayed key
    quint64 m_lastRevision = 0;                 // counts the changes of all rings
    int m_maximumCount = 10000;
    double m_maximumAge = 0.0;
    double m_newestTime = 0.0;
    bool m_hasSamplesSinceGap = false;
};

} // namespace Velk

#endif
