// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_SRC_REDIS_DECLARATIONS_H
#define CONNECTIONS_REDIS_SRC_REDIS_DECLARATIONS_H

#include "redis_transactions.h"

#include <connections/link/key_kind.h>
#include <connections/redis/memory/redis_layout.h>

#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>

#include <array>
#include <functional>
#include <optional>
#include <vector>

namespace Velk {

/// The names that a writer lists as keys of a robot, those that it removes, and the robot's metadata: what the server
/// has of them, and what is still to be written. What the server refused is written again after a pause, or with the
/// next write of the key, and does not hold back the others; what it did not answer, with the next connection.
class RedisDeclarations : public QObject
{
    Q_OBJECT

public:
    explicit RedisDeclarations(const RedisLayout& layout);

    /// Names that the former call declared and this one does not declare in the same way.
    struct Changes
    {
        QSet<QString> gone;  ///< declared no longer
        QSet<QString> moved; ///< declared with another kind
    };

    /// Lists the names in place of those of the former call.
    Changes declare(const KeyNames& names);
    void remove(const QStringList& names);
    void setRealTimeSupported(bool isSupported);
    /// The kind with which the name was declared; Data when it was not.
    KeyKind kindOf(const QString& name) const { return m_declared.value(name); }

    /// The connection was replaced: the server may have come back empty, or be another one. It has refused nothing yet.
    void repeatAll();
    /// Forgets everything.
    void clear();

    /// Whether the server has refused something a moment ago, on this connection. due() is emitted when the pause is
    /// over.
    bool isPausing() const { return m_pauseTimer.isActive(); }
    /// Whether something is to be written that no write() on this connection has tried.
    bool hasUntried() const { return m_hasUntried; }
    /// Whether the server has accepted all declarations, removals and the metadata. Valid when the last write() is
    /// answered.
    bool areWritten() const;
    /// Whether the next write() removes keys, and which data keys.
    bool hasRemovals() const;
    QSet<QString> removedData() const { return nextRemovals(KeyKind::Data); }
    /// The declarations and removals since the last write, and what was refused if the pause is over: removals first.
    /// The server can refuse each of them without the others. Call it only when the former ones are answered. `removed`
    /// is called when all removals are answered, with an empty text or an error of one of them; not if there are none.
    std::vector<RedisWrite> write(const std::function<void(const QString& error)>& removed = {});
    /// For a value or an occurrence, which is written after removals of its key: lists the name with the first one on a
    /// connection, so that no viewer sees one without the other. A refused removal of the key is not repeated, because
    /// it would remove what was written.
    void addListing(RedisWrite* write, KeyKind kind, const QString& name);

Q_SIGNALS:
    /// The pause after a refusal is over.
    void due();

private:
    using NamesByKind = std::array<QSet<QString>, keyKinds.size()>;

    void startPause();
    QSet<QString> nextRemovals(KeyKind kind) const;
    std::vector<RedisWrite> removals();
    RedisWrite removal(KeyKind kind, const QSet<QString>& names);
    void onRemovalRefused(KeyKind kind, const QSet<QString>& names);
    void onRemovalUnanswered(KeyKind kind, const QSet<QString>& names);
    bool isDeclared(KeyKind kind, const QString& name) const;
    void keepListed(KeyKind kind, const QString& name);
    RedisWrite listing(KeyKind kind);
    void onListingRefused(KeyKind kind, const QSet<QString>& names);

    RedisLayout m_layout;
    QTimer m_pauseTimer;
    QHash<QString, KeyKind> m_declared;
    NamesByKind m_removed;         // to be removed from the server
    NamesByKind m_refusedRemovals; // to be removed after the pause
    NamesByKind m_lastRemoved;     // by the last write(), except for keys that were written since
    NamesByKind m_listed;          // during this connection
    NamesByKind m_refusedListings; // to be listed after the pause
    std::optional<bool> m_isRealTime;
    bool m_isRealTimeWritten = false; // during this connection
    bool m_isRealTimeRefused = false; // to be written after the pause
    bool m_hasUntried = false;
};

} // namespace Velk

#endif
