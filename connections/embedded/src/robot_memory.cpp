#include "robot_memory_p.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace Velk {

namespace {

double justAbove(double timeStamp)
{
    return std::nextafter(timeStamp, std::numeric_limits<double>::infinity());
}

} // namespace

bool RobotMemoryPrivate::declare(KeyKind kind, const QString& name)
{
    const std::lock_guard<std::mutex> lock(mutex);
    return file(*slotOf(name), kind);
}

bool RobotMemoryPrivate::write(KeyKind kind, const QString& name, const QVariant& value,
                               std::optional<double> timeStamp)
{
    if (timeStamp && !std::isfinite(*timeStamp))
        return false;
    const std::lock_guard<std::mutex> lock(mutex);
    MemorySlot& slot = *slotOf(name);
    if (!file(slot, kind))
        return false;
    slot.lastTimeStamp = std::max(timeStamp ? *timeStamp : tick(), justAbove(slot.lastTimeStamp));
    slot.newest = {slot.lastTimeStamp, value};
    slot.hasValue = true;
    slot.isStampedByRobot = timeStamp.has_value();
    if (kind != KeyKind::Data) {
        for (SampleQueue* queue : slot.listeners)
            queue->push(slot.lastTimeStamp, value);
    }
    return true;
}

bool RobotMemoryPrivate::remove(const QString& name)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = memorySlots.find(name);
    if (found == memorySlots.end() || found.value()->kind == KeyKind::None)
        return false;
    unfile(*found.value());
    if (found.value()->watchers == 0)
        memorySlots.erase(found);
    return true;
}

QStringList RobotMemoryPrivate::names(KeyKind kind) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return m_names[static_cast<std::size_t>(kind) - 1];
}

std::shared_ptr<MemorySlot> RobotMemoryPrivate::watch(const QString& name)
{
    const std::lock_guard<std::mutex> lock(mutex);
    std::shared_ptr<MemorySlot>& slot = slotOf(name);
    ++slot->watchers;
    return slot;
}

void RobotMemoryPrivate::unwatch(const std::shared_ptr<MemorySlot>& slot)
{
    const std::lock_guard<std::mutex> lock(mutex);
    --slot->watchers;
    if (slot->watchers == 0 && slot->kind == KeyKind::None)
        memorySlots.remove(slot->name);
}

double RobotMemoryPrivate::tick()
{
    const std::chrono::duration<double> now = std::chrono::system_clock::now().time_since_epoch();
    m_lastTick = std::max(now.count(), justAbove(m_lastTick));
    return m_lastTick;
}

void RobotMemoryPrivate::listen(MemorySlot& slot, SampleQueue* queue)
{
    slot.listeners.push_back(queue);
}

void RobotMemoryPrivate::stopListening(MemorySlot& slot, SampleQueue* queue)
{
    slot.listeners.erase(std::remove(slot.listeners.begin(), slot.listeners.end(), queue), slot.listeners.end());
}

std::shared_ptr<MemorySlot>& RobotMemoryPrivate::slotOf(const QString& name)
{
    std::shared_ptr<MemorySlot>& slot = memorySlots[name];
    if (!slot) {
        slot = std::make_shared<MemorySlot>();
        slot->name = name;
    }
    return slot;
}

bool RobotMemoryPrivate::file(MemorySlot& slot, KeyKind kind)
{
    if (slot.kind == KeyKind::None) {
        QStringList& names = namesOf(kind);
        slot.kind = kind;
        slot.listIndex = static_cast<int>(names.size());
        names.append(slot.name);
    }
    return slot.kind == kind;
}

void RobotMemoryPrivate::unfile(MemorySlot& slot)
{
    // The last name moves into the gap, so that a removal costs the same for any number of names.
    QStringList& names = namesOf(slot.kind);
    const QString last = names.takeLast();
    if (slot.listIndex < names.size()) {
        names[slot.listIndex] = last;
        memorySlots.value(last)->listIndex = slot.listIndex;
    }
    slot.kind = KeyKind::None;
    slot.hasValue = false;
    slot.newest = {};
}

RobotMemory::RobotMemory()
    : d(std::make_unique<RobotMemoryPrivate>())
{}

RobotMemory::~RobotMemory() = default;

bool RobotMemory::declareData(const QString& name)
{
    return d->declare(KeyKind::Data, name);
}

bool RobotMemory::declareEvent(const QString& name)
{
    return d->declare(KeyKind::Event, name);
}

bool RobotMemory::declareMicroEvent(const QString& name)
{
    return d->declare(KeyKind::MicroEvent, name);
}

bool RobotMemory::setData(const QString& name, const QVariant& value)
{
    return d->write(KeyKind::Data, name, value, std::nullopt);
}

bool RobotMemory::setData(const QString& name, const QVariant& value, double timeStamp)
{
    return d->write(KeyKind::Data, name, value, timeStamp);
}

bool RobotMemory::raiseEvent(const QString& name, const QVariant& value)
{
    return d->write(KeyKind::Event, name, value, std::nullopt);
}

bool RobotMemory::raiseEvent(const QString& name, const QVariant& value, double timeStamp)
{
    return d->write(KeyKind::Event, name, value, timeStamp);
}

bool RobotMemory::raiseMicroEvent(const QString& name, const QVariant& value)
{
    return d->write(KeyKind::MicroEvent, name, value, std::nullopt);
}

bool RobotMemory::raiseMicroEvent(const QString& name, const QVariant& value, double timeStamp)
{
    return d->write(KeyKind::MicroEvent, name, value, timeStamp);
}

bool RobotMemory::removeKey(const QString& name)
{
    return d->remove(name);
}

QStringList RobotMemory::dataNames() const
{
    return d->names(KeyKind::Data);
}

QStringList RobotMemory::eventNames() const
{
    return d->names(KeyKind::Event);
}

QStringList RobotMemory::microEventNames() const
{
    return d->names(KeyKind::MicroEvent);
}

std::optional<MemorySample> RobotMemory::newest(const QString& name) const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    const auto found = d->memorySlots.constFind(name);
    if (found == d->memorySlots.constEnd() || !found.value()->hasValue)
        return std::nullopt;
    return found.value()->newest;
}

} // namespace Velk
