// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/loss_ledger.h>

#include <algorithm>

namespace Velk {

void LossSpan::add(qint64 moreCount, double moreFrom, double moreTo)
{
    from = count == 0 ? moreFrom : std::min(from, moreFrom);
    to = count == 0 ? moreTo : std::max(to, moreTo);
    count += moreCount;
}

SampleLosses LossAccount::losses() const
{
    SampleLosses losses;
    losses.skippedTicks = span(LossCause::SkippedTick).count;
    losses.missedTicks = span(LossCause::MissedTick).count;
    losses.dropped = span(LossCause::Dropped).count;
    losses.trimmed = span(LossCause::Trimmed).count;
    return losses;
}

bool LossAccount::isEmpty() const
{
    return losses().total() == 0;
}

LossAccount LossLedger::ofKey(const QString& name) const
{
    const auto found = m_accounts.find(name);
    return found == m_accounts.end() ? LossAccount() : found->second;
}

void LossLedger::record(LossAccount* key, LossCause cause, qint64 count, double from, double to)
{
    if (count <= 0)
        return;
    key->spanOf(cause).add(count, from, to);
    add(cause, count, from, to);
}

void LossLedger::recordTicks(const QVector<LossAccount*>& keys, LossCause cause, qint64 count, double from, double to)
{
    if (count <= 0)
        return;
    for (LossAccount* const key : keys)
        key->spanOf(cause).add(count, from, to);
    add(cause, count, from, to);
}

void LossLedger::add(LossCause cause, qint64 count, double from, double to)
{
    m_total.spanOf(cause).add(count, from, to);
    if (m_isReported)
        return;
    m_isReported = true;
    if (m_recorded)
        m_recorded();
}

void LossLedger::clear()
{
    m_total = {};
    m_accounts.clear();
}

} // namespace Velk
