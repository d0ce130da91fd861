#ifndef CONNECTIONS_EMBEDDED_SRC_ROBOT_MEMORY_P_H
#define CONNECTIONS_EMBEDDED_SRC_ROBOT_MEMORY_P_H

#include "sample_queue.h"

#include <connections/embedded/robot_memory.h>

#include <QHash>

#include <array>
#include <limits>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace Velk {

enum class KeyKind
{
    None,
    Data,
    Event,
    MicroEvent
};

/// What the memory knows about one name. Guarded by the memory's mutex.
struct MemorySlot
{
    QString name;
    KeyKind kind = KeyKind::None; // None: watched, and not in the memory
    int listIndex = 0;            // where the name stands among the names of its kind
    bool hasValue = false;
    bool isStampedByRobot = false;
    MemorySample newest;
    double lastTimeStamp = -std::numeric_limits<double>::infinity(); // outlives a removal while the name is watched
    int watchers = 0;
    std::vector<SampleQueue*> listeners; // of the watchers that run; not owned
};

/// The store itself: what RobotMemory offers to the robot's code, and what a memory interface reads it through.
class RobotMemoryPrivate
{
public:
    bool declare(KeyKind kind, const QString& name);
    bool write(KeyKind kind, const QString& name, const QVariant& value, std::optional<double> timeStamp);
    bool remove(const QString& name);
    QStringList names(KeyKind kind) const;

    /// The slot of a name that someone watches, whether it is a key or not, to be given back to unwatch().
    std::shared_ptr<MemorySlot> watch(const QString& name);
    void unwatch(const std::shared_ptr<MemorySlot>& slot);

    // The members from here on are used with the mutex held.
    mutable std::mutex mutex;
    QHash<QString, std::shared_ptr<MemorySlot>> memorySlots;

    /// The present time, later at every call, also when the computer's clock stands or is set back.
    double tick();
    /// The queue gets every occurrence of the slot's key from now on, until it is taken out again.
    static void listen(MemorySlot& slot, SampleQueue* queue);
    static void stopListening(MemorySlot& slot, SampleQueue* queue);

private:
    std::shared_ptr<MemorySlot>& slotOf(const QString& name);
    bool file(MemorySlot& slot, KeyKind kind);
    void unfile(MemorySlot& slot);
    QStringList& namesOf(KeyKind kind) { return m_names[static_cast<std::size_t>(kind) - 1]; }

    // Kept as lists, and not collected when asked for: a list of a million names is then handed out by a shared copy,
    // without holding up the robot's threads.
    std::array<QStringList, 3> m_names;
    double m_lastTick = -std::numeric_limits<double>::infinity();
};

} // namespace Velk

#endif
