// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_declarations.h"

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
        (now == declared.cend() ? changes.gone : changes.moved).insert(former.key());
    }
    for (auto now = declared.cbegin(); now != declared.cend(); ++now)
        m_removed[std::size_t(now.value())].remove(now.key());
    m_declared = declared;
    return changes;
}

void RedisDeclarations::remove(const QStringList& names)
{
    for (const QString& name : names) {
        m_declared.remove(name);
        for (QSet<QString>& removed : m_removed)
            removed.insert(name);
    }
}

void RedisDeclarations::setRealTimeSupported(bool isSupported)
{
    m_isRealTimeWritten = m_isRealTimeWritten && m_isRealTime == isSupported;
    m_isRealTime = isSupported;
}

void RedisDeclarations::repeatAll()
{
    m_listed = {};
    m_isRealTimeWritten = false;
    m_pauseTimer.stop();
}

void RedisDeclarations::clear()
{
    repeatAll();
    m_declared.clear();
    m_removed = {};
    m_lastRemoved = {};
    m_isRealTime.reset();
}

RedisWrite RedisDeclarations::write()
{
    RedisWrite write;
    addRemovals(&write);
    const NamesByKind listed = addDeclared(&write);
    if (m_isRealTime && !std::exchange(m_isRealTimeWritten, true))
        write.commands.append({"HSET", m_layout.metadata(), "realtime", *m_isRealTime ? "1" : "0"});
    write.refused = [this, listed] { onRefused(listed); };
    // What was written after the removals is written again after them, or counted as lost.
    write.unanswered = [this, removed = m_lastRemoved] { removeAgain(removed); };
    return write;
}

void RedisDeclarations::onRefused(const NamesByKind& listed)
{
    for (const KeyKind kind : keyKinds)
        m_listed[std::size_t(kind)].subtract(listed[std::size_t(kind)]);
    removeAgain(m_lastRemoved);
    m_isRealTimeWritten = false;
    m_pauseTimer.start();
}

void RedisDeclarations::removeAgain(const NamesByKind& names)
{
    for (const KeyKind kind : keyKinds) {
        for (const QString& name : names[std::size_t(kind)]) {
            const auto declared = m_declared.constFind(name);
            if (declared == m_declared.cend() || *declared != kind)
                m_removed[std::size_t(kind)].insert(name);
        }
    }
}

void RedisDeclarations::addRemovals(RedisWrite* write)
{
    m_lastRemoved = std::exchange(m_removed, {});
    for (const KeyKind kind : keyKinds) {
        QByteArrayList names;
        QByteArrayList keys;
        for (const QString& name : std::as_const(m_lastRemoved[std::size_t(kind)])) {
            names.append(name.toUtf8());
            keys.append(m_layout.key(kind, name.toUtf8()));
            m_listed[std::size_t(kind)].remove(name);
        }
        addNames(&write->commands, {"SREM", m_layout.index(kind)}, names);
        addNames(&write->commands, {"DEL"}, keys);
    }
}

RedisDeclarations::NamesByKind RedisDeclarations::addDeclared(RedisWrite* write)
{
    NamesByKind names;
    std::array<QByteArrayList, keyKinds.size()> added;
    for (auto name = m_declared.cbegin(); name != m_declared.cend(); ++name) {
        QSet<QString>& listed = m_listed[std::size_t(name.value())];
        if (listed.contains(name.key()))
            continue;
        listed.insert(name.key());
        names[std::size_t(name.value())].insert(name.key());
        added[std::size_t(name.value())].append(name.key().toUtf8());
    }
    for (const KeyKind kind : keyKinds)
        addNames(&write->commands, {"SADD", m_layout.index(kind)}, added[std::size_t(kind)]);
    return names;
}

void RedisDeclarations::addListing(RedisWrite* write, KeyKind kind, const QString& name)
{
    m_removed[std::size_t(kind)].remove(name);
    m_lastRemoved[std::size_t(kind)].remove(name);
    QSet<QString>& listed = m_listed[std::size_t(kind)];
    if (listed.contains(name))
        return;
    listed.insert(name);
    write->commands.append({"SADD", m_layout.index(kind), name.toUtf8()});
    write->refused = [this, kind, name] { m_listed[std::size_t(kind)].remove(name); };
}

} // namespace Velk
