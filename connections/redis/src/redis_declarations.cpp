// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_declarations.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace Velk {

namespace {

constexpr int namesPerCommand = 1000;
constexpr int pauseMs = 1000;

void addNames(QList<QByteArrayList>* commands, const QByteArrayList& command, const QByteArrayList& names)
{
    for (qsizetype i = 0; i < names.size(); i += namesPerCommand)
        commands->append(command + names.mid(i, namesPerCommand));
}

} // namespace

RedisDeclarations::RedisDeclarations(const RedisLayout& layout)
    : m_layout(layout)
{
    m_pauseTimer.setSingleShot(true);
    m_pauseTimer.setInterval(pauseMs);
    connect(&m_pauseTimer, &QTimer::timeout, this, &RedisDeclarations::due);
}

RedisDeclarations::Changes RedisDeclarations::declare(const KeyNames& names)
{
    QHash<QString, KeyKind> declared;
    for (const KeyKind kind : keyKinds) {
        for (const QString& name : names.of(kind))
            declared.insert(name, kind);
    }
    Changes changes;
    for (auto former = m_declared.cbegin(); former != m_declared.cend(); ++former) {
        const auto now = declared.constFind(former.key());
        if (now != declared.cend() && *now == former.value())
            continue;
        m_removed[std::size_t(former.value())].insert(former.key());
        m_refusedRemovals[std::size_t(former.value())].remove(former.key());
        (now == declared.cend() ? changes.gone : changes.moved).insert(former.key());
    }
    for (auto now = declared.cbegin(); now != declared.cend(); ++now)
        keepListed(now.value(), now.key());
    m_declared = declared;
    m_hasUntried = true;
    return changes;
}

void RedisDeclarations::remove(const QStringList& names)
{
    for (const QString& name : names) {
        m_declared.remove(name);
        for (const KeyKind kind : keyKinds) {
            m_removed[std::size_t(kind)].insert(name);
            m_refusedRemovals[std::size_t(kind)].remove(name);
        }
    }
    m_hasUntried = true;
}

void RedisDeclarations::setRealTimeSupported(bool isSupported)
{
    m_isRealTimeWritten = m_isRealTimeWritten && m_isRealTime == isSupported;
    m_isRealTime = isSupported;
    m_isRealTimeRefused = false;
    m_hasUntried = true;
}

// Not again while it lasts: refusals that follow each other would hold back what was refused first.
void RedisDeclarations::startPause()
{
    if (!isPausing())
        m_pauseTimer.start();
}

void RedisDeclarations::repeatAll()
{
    m_listed = {};
    m_isRealTimeWritten = false;
    m_pauseTimer.stop();
    m_hasUntried = true;
}

void RedisDeclarations::clear()
{
    repeatAll();
    m_declared.clear();
    m_removed = {};
    m_refusedRemovals = {};
    m_lastRemoved = {};
    m_refusedListings = {};
    m_isRealTime.reset();
    m_hasUntried = false;
}

bool RedisDeclarations::areWritten() const
{
    const bool isRemoved = std::all_of(m_refusedRemovals.begin(), m_refusedRemovals.end(),
                                       [](const QSet<QString>& names) { return names.isEmpty(); });
    bool isListed = true;
    for (auto name = m_declared.cbegin(); name != m_declared.cend(); ++name)
        isListed = isListed && m_listed[std::size_t(name.value())].contains(name.key());
    return !m_hasUntried && isRemoved && isListed && (!m_isRealTime || m_isRealTimeWritten);
}

bool RedisDeclarations::hasRemovals() const
{
    return std::any_of(keyKinds.begin(), keyKinds.end(),
                       [this](KeyKind kind) { return !nextRemovals(kind).isEmpty(); });
}

QSet<QString> RedisDeclarations::nextRemovals(KeyKind kind) const
{
    const QSet<QString>& removed = m_removed[std::size_t(kind)];
    return isPausing() ? removed : QSet<QString>(removed).unite(m_refusedRemovals[std::size_t(kind)]);
}

std::vector<RedisWrite> RedisDeclarations::write(const std::function<void(const QString& error)>& removed)
{
    m_hasUntried = false;
    std::vector<RedisWrite> writes = removals();
    if (removed) {
        const auto due = std::make_shared<std::size_t>(writes.size());
        const auto firstError = std::make_shared<QString>();
        for (RedisWrite& write : writes) {
            write.done = [removed, due, firstError](const QString& error) {
                if (firstError->isEmpty())
                    *firstError = error;
                if (--*due == 0)
                    removed(*firstError);
            };
        }
    }
    for (const KeyKind kind : keyKinds)
        writes.push_back(listing(kind));
    if (m_isRealTime && !m_isRealTimeWritten && !(isPausing() && m_isRealTimeRefused)) {
        m_isRealTimeWritten = true;
        RedisWrite write;
        write.commands.append({"HSET", m_layout.metadata(), "realtime", *m_isRealTime ? "1" : "0"});
        write.refused = [this] {
            m_isRealTimeWritten = false;
            m_isRealTimeRefused = true;
            startPause();
        };
        writes.push_back(write);
    }
    writes.erase(
        std::remove_if(writes.begin(), writes.end(), [](const RedisWrite& write) { return write.commands.isEmpty(); }),
        writes.end());
    return writes;
}

// A name that was refused is removed by a write of its own: another one may be the cause.
std::vector<RedisWrite> RedisDeclarations::removals()
{
    const NamesByKind removed = std::exchange(m_removed, {});
    const NamesByKind refused = isPausing() ? NamesByKind() : std::exchange(m_refusedRemovals, {});
    std::vector<RedisWrite> writes;
    for (const KeyKind kind : keyKinds) {
        const auto index = std::size_t(kind);
        m_lastRemoved[index] = QSet<QString>(removed[index]).unite(refused[index]);
        m_listed[index].subtract(m_lastRemoved[index]);
        if (!removed[index].isEmpty())
            writes.push_back(removal(kind, removed[index]));
        for (const QString& name : refused[index])
            writes.push_back(removal(kind, {name}));
    }
    return writes;
}

RedisWrite RedisDeclarations::removal(KeyKind kind, const QSet<QString>& names)
{
    QByteArrayList fields;
    QByteArrayList keys;
    for (const QString& name : names) {
        fields.append(name.toUtf8());
        keys.append(m_layout.key(kind, name.toUtf8()));
    }
    RedisWrite write;
    addNames(&write.commands, {"SREM", m_layout.index(kind)}, fields);
    addNames(&write.commands, {"DEL"}, keys);
    write.refused = [this, kind, names] { onRemovalRefused(kind, names); };
    // What was written after the removals is written again after them, or counted as lost.
    write.unanswered = [this, kind, names] { onRemovalUnanswered(kind, names); };
    return write;
}

void RedisDeclarations::onRemovalRefused(KeyKind kind, const QSet<QString>& names)
{
    const auto index = std::size_t(kind);
    for (const QString& name : names) {
        if (m_lastRemoved[index].contains(name) && !m_removed[index].contains(name) && !isDeclared(kind, name))
            m_refusedRemovals[index].insert(name);
    }
    startPause();
}

void RedisDeclarations::onRemovalUnanswered(KeyKind kind, const QSet<QString>& names)
{
    for (const QString& name : names) {
        if (!isDeclared(kind, name))
            m_removed[std::size_t(kind)].insert(name);
    }
}

bool RedisDeclarations::isDeclared(KeyKind kind, const QString& name) const
{
    const auto declared = m_declared.constFind(name);
    return declared != m_declared.cend() && *declared == kind;
}

// The name is a key again.
void RedisDeclarations::keepListed(KeyKind kind, const QString& name)
{
    m_removed[std::size_t(kind)].remove(name);
    m_refusedRemovals[std::size_t(kind)].remove(name);
}

RedisWrite RedisDeclarations::listing(KeyKind kind)
{
    const auto index = std::size_t(kind);
    const QSet<QString> refused = isPausing() ? m_refusedListings[index] : std::exchange(m_refusedListings[index], {});
    QSet<QString> names;
    QByteArrayList added;
    for (auto name = m_declared.cbegin(); name != m_declared.cend(); ++name) {
        const bool isHeld = isPausing() && refused.contains(name.key());
        if (name.value() != kind || isHeld || m_listed[index].contains(name.key()))
            continue;
        names.insert(name.key());
        added.append(name.key().toUtf8());
    }
    m_listed[index].unite(names);
    RedisWrite write;
    addNames(&write.commands, {"SADD", m_layout.index(kind)}, added);
    write.refused = [this, kind, names] { onListingRefused(kind, names); };
    return write;
}

void RedisDeclarations::onListingRefused(KeyKind kind, const QSet<QString>& names)
{
    m_listed[std::size_t(kind)].subtract(names);
    m_refusedListings[std::size_t(kind)].unite(names);
    startPause();
}

void RedisDeclarations::addListing(RedisWrite* write, KeyKind kind, const QString& name)
{
    keepListed(kind, name);
    m_lastRemoved[std::size_t(kind)].remove(name);
    QSet<QString>& listed = m_listed[std::size_t(kind)];
    if (listed.contains(name))
        return;
    listed.insert(name);
    write->commands.append({"SADD", m_layout.index(kind), name.toUtf8()});
    write->refused = [this, kind, name] { m_listed[std::size_t(kind)].remove(name); };
}

} // namespace Velk
