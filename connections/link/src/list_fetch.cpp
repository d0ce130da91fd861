// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/list_fetch.h>

#include <utility>

namespace Velk {

ListFetch::ListFetch()
{
    m_future.reportStarted();
}

ListFetch::~ListFetch()
{
    finish({});
}

// A copy, which shares the list: an interface that was moved from could not be assigned to.
ListFetch::ListFetch(ListFetch&& other) noexcept
    : m_future(other.m_future) // NOLINT(performance-move-constructor-init)
    , m_isPending(std::exchange(other.m_isPending, false))
{}

ListFetch& ListFetch::operator=(ListFetch&& other) noexcept
{
    ListFetch former(std::move(*this));
    m_future = other.m_future;
    m_isPending = std::exchange(other.m_isPending, false);
    return *this;
}

void ListFetch::finish(const QStringList& names)
{
    if (!std::exchange(m_isPending, false))
        return;
    m_future.reportResult(names);
    m_future.reportFinished();
}

QFuture<QStringList> ListFetch::finished(const QStringList& names)
{
    ListFetch fetch;
    QFuture<QStringList> future = fetch.future();
    fetch.finish(names);
    return future;
}

} // namespace Velk
