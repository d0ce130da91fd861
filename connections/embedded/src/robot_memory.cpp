// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "robot_memory_p.h"

#include <connections/link/unix_time.h>

#include <algorithm>
#include <cmath>

namespace Velk {

bool RobotMemoryPrivate::declare(KeyKind kind, const QString& name)
{
    const std::lock_guard<std::mutex> lock(mutex);
    return file(*slotOf(name), kind);
}

bool RobotMemoryPrivate::write(KeyKind kind, bool isEachDelivered, const QString& name, const QVariant& value,
                               std::optional<double> timeStamp)
{
    if (timeStamp && !std::isfinite(*timeStamp))
        return false;
    const std::lock_guard<std::mutex> lock(mutex);
    MemorySlot& slot = *slotOf(name);
    if (!file(slot, kind))
        return false;
    slot.newest = {slot.stamps.next(timeStamp ? *timeStamp : tick()), value};
    slot.hasValue = true;
    slot.isStampedByRobot = timeStamp.has_value() || isEachDelivered;
    if (isEachDelivered) {
        for (MemoryListener* const listener : slot.listeners) {
            listener->buffer.add(slot.newest.timeStamp, value);
            listener->stamps.raise(slot.newest.timeStamp);
        }
    }
    return true;
}

bool RobotMemoryPrivate::remove(const QString& name)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = memorySlots.find(name);
    if (found == memorySlots.end() || !found.value()->kind)
        return false;
    unfile(*found.value());
    if (found.value()->watchers == 0)
        memorySlots.erase(found);
    return true;
}

QStringList RobotMemoryPrivate::names(KeyKind kind) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    return m_names.of(kind);
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
    if (slot->watchers == 0 && !slot->kind)
        memorySlots.remove(slot->name);
}

double RobotMemoryPrivate::tick()
{
    return m_ticks.next(unixTime());
}

void RobotMemoryPrivate::listen(MemorySlot& slot, MemoryListener* listener)
{
    slot.listeners.push_back(listener);
}

void RobotMemoryPrivate::stopListening(MemorySlot& slot, MemoryListener* listener)
{
    slot.listeners.erase(std::remove(slot.listeners.begin(), slot.listeners.end(), listener), slot.listeners.end());
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
    if (!slot.kind) {
        QStringList& names = m_names.of(kind);
        slot.kind = kind;
        slot.listIndex = static_cast<int>(names.size());
        names.append(slot.name);
    }
    return slot.kind == kind;
}

void RobotMemoryPrivate::unfile(MemorySlot& slot)
{
    // The last name moves into the gap, so that a removal costs the same for any number of names.
    QStringList& names = m_names.of(*slot.kind);
    const QString last = names.takeLast();
    if (slot.listIndex < names.size()) {
        names[slot.listIndex] = last;
        memorySlots.value(last)->listIndex = slot.listIndex;
    }
    slot.kind.reset();
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

bool RobotMemory::setData(const QString& name, const QVariant& value, std::optional<double> timeStamp)
{
    return d->write(KeyKind::Data, false, name, value, timeStamp);
}

bool RobotMemory::appendData(const QString& name, const QVariant& value, std::optional<double> timeStamp)
{
    return d->write(KeyKind::Data, true, name, value, timeStamp);
}

bool RobotMemory::raiseEvent(const QString& name, const QVariant& value, std::optional<double> timeStamp)
{
    return d->write(KeyKind::Event, true, name, value, timeStamp);
}

bool RobotMemory::raiseMicroEvent(const QString& name, const QVariant& value, std::optional<double> timeStamp)
{
    return d->write(KeyKind::MicroEvent, true, name, value, timeStamp);
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
