// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_LOSS_LEDGER_H
#define CONNECTIONS_LINK_LOSS_LEDGER_H

#include <connections/link/link_export.h>
#include <connections/link/sample_losses.h>

#include <QString>
#include <QVector>

#include <array>
#include <functional>
#include <unordered_map>
#include <utility>

namespace Velk {

/// Why something was not delivered. SampleLosses has a count for each.
enum class LossCause
{
    SkippedTick, ///< a sampling tick was refused, or skipped because the previous one had no answer yet
    MissedTick,  ///< this program was busy or stopped when a sampling tick was due
    Dropped,     ///< the buffer was full
    Trimmed      ///< the robot had discarded it
};

/// Losses of one cause: how many, and when.
struct LINK_EXPORT LossSpan
{
    qint64 count = 0;
    double from = 0.0; ///< time of the first loss, seconds since the Unix epoch; 0 without a loss
    double to = 0.0;   ///< time of the last one

    void add(qint64 moreCount, double moreFrom, double moreTo);
};

/// The losses of one key, or of all keys together, by cause.
class LINK_EXPORT LossAccount
{
public:
    const LossSpan& span(LossCause cause) const { return m_spans[static_cast<std::size_t>(cause)]; }
    SampleLosses losses() const;
    bool isEmpty() const;

private:
    friend class LossLedger;
    LossSpan& spanOf(LossCause cause) { return m_spans[static_cast<std::size_t>(cause)]; }

    std::array<LossSpan, 4> m_spans;
};

/// What a connection did not deliver since it was opened: for each key and in total, by cause, with the count and the
/// time.
///
/// A tick that is left out counts once in the total, and once for each key that it would have sampled: the total is
/// the number of rows that a recording misses. Used on the link's thread only.
class LINK_EXPORT LossLedger
{
public:
    LossLedger() = default;
    LossLedger(const LossLedger&) = delete;
    LossLedger& operator=(const LossLedger&) = delete;

    const LossAccount& total() const { return m_total; }
    /// Without losses for a key that has none.
    LossAccount ofKey(const QString& name) const;

    // For connections.

    /// Where the key's losses are recorded; valid until clear(). Keep the pointer: recording with it needs no look-up.
    LossAccount* account(const QString& name) { return &m_accounts[name]; }
    /// Losses of one key, which count in the total too. `from` and `to` are the times of the first and of the last one.
    void record(LossAccount* key, LossCause cause, qint64 count, double from, double to);
    /// Ticks that were left out, none of which sampled any of the keys.
    void recordTicks(const QVector<LossAccount*>& keys, LossCause cause, qint64 count, double from, double to);
    /// Forgets everything, and the accounts with it.
    void clear();

    /// Called at the first record() or recordTicks(), and at the first one after each rearm().
    void setRecorded(std::function<void()> recorded) { m_recorded = std::move(recorded); }
    void rearm() { m_isReported = false; }

private:
    void add(LossCause cause, qint64 count, double from, double to);

    LossAccount m_total;
    std::unordered_map<QString, LossAccount> m_accounts; // its elements stay where they are
    std::function<void()> m_recorded;
    bool m_isReported = false; // m_recorded was called, and rearm() not since then
};

} // namespace Velk

#endif
