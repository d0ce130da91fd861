// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_EMBEDDED_SRC_ROBOT_MEMORY_P_H
#define CONNECTIONS_EMBEDDED_SRC_ROBOT_MEMORY_P_H

#include <connections/embedded/robot_memory.h>
#include <connections/link/key_kind.h>
#include <connections/link/sample_buffer.h>
#include <connections/link/sample_stamps.h>

#include <QHash>

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace Velk {

/// What one running watcher of a key receives.
struct MemoryListener
{
    explicit MemoryListener(SampleBudget* budget)
        : buffer(budget)
    {}

    SampleBuffer buffer;
    SampleStamps stamps; // of the samples that were added, also after a delivery
};

/// What the memory knows about one name. Guarded by the memory's mutex.
struct MemorySlot
{
    QString name;
    std::optional<KeyKind> kind; // empty: watched, and not in the memory
    int listIndex = 0;           // where the name stands among the names of its kind
    bool hasValue = false;
    bool isStampedByRobot = false; // the newest value has its time: it is not sampled twice by one watcher
    MemorySample newest;
    SampleStamps stamps; // outlive a removal while the name is watched
    int watchers = 0;
    std::vector<MemoryListener*> listeners; // of the watchers that run; not owned
};

/// The implementation of RobotMemory, and what EmbeddedMemoryInterface uses of it.
class RobotMemoryPrivate
{
public:
    bool declare(KeyKind kind, const QString& name);
    /// `isEachDelivered`: running watchers get the value itself, instead of sampling it.
    bool write(KeyKind kind, bool isEachDelivered, const QString& name, const QVariant& value,
               std::optional<double> timeStamp);
    bool remove(const QString& name);
    QStringList names(KeyKind kind) const;

    /// The slot of a watched name, whether it is a key or not, to be given back to unwatch().
    std::shared_ptr<MemorySlot> watch(const QString& name);
    void unwatch(const std::shared_ptr<MemorySlot>& slot);

    // The members from here on are used with the mutex held.
    mutable std::mutex mutex;
    QHash<QString, std::shared_ptr<MemorySlot>> memorySlots;

    /// The present time, later at every call, also when the computer's clock stands or is set back.
    double tick();
    /// The listener gets every occurrence, and every appended sample, of the slot's key from now on, until it is taken
    /// out again.
    static void listen(MemorySlot& slot, MemoryListener* listener);
    static void stopListening(MemorySlot& slot, MemoryListener* listener);

private:
    std::shared_ptr<MemorySlot>& slotOf(const QString& name);
    bool file(MemorySlot& slot, KeyKind kind);
    void unfile(MemorySlot& slot);

    // Kept as lists, and not collected when asked for: a list of a million names is then handed out by a shared copy,
    // without holding up the robot's threads.
    KeyNames m_names;
    SampleStamps m_ticks;
};

} // namespace Velk

#endif
