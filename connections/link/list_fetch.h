// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_LIST_FETCH_H
#define CONNECTIONS_LINK_LIST_FETCH_H

#include <connections/link/link_export.h>

#include <QFuture>
#include <QFutureInterface>
#include <QStringList>

namespace Velk {

/// A list of names that is being fetched. Its future reports exactly one result and finishes, whatever happens: with an
/// empty list when the fetch is destroyed before finish().
///
/// Continuations of the future run inside finish() and the destructor. A class that stores fetches moves
/// them out of its members before it finishes them.
class LINK_EXPORT ListFetch
{
public:
    /// Started, and not finished.
    ListFetch();
    ~ListFetch();
    ListFetch(ListFetch&& other) noexcept;
    ListFetch& operator=(ListFetch&& other) noexcept;

    QFuture<QStringList> future() { return m_future.future(); }
    /// Nothing when it is finished already.
    void finish(const QStringList& names);

    /// The future of a fetch that is finished already.
    static QFuture<QStringList> finished(const QStringList& names = {});

private:
    QFutureInterface<QStringList> m_future;
    bool m_isPending = true;
};

} // namespace Velk

#endif
