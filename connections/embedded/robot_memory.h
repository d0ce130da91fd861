// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_EMBEDDED_ROBOT_MEMORY_H
#define CONNECTIONS_EMBEDDED_ROBOT_MEMORY_H

#include <connections/embedded/embedded_export.h>

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>
#include <optional>

namespace Velk {

class RobotMemoryPrivate;

/// One value of a key.
struct MemorySample
{
    double timeStamp = 0.0; ///< seconds since the Unix epoch
    QVariant value;
};

/// The key-value memory of a robot whose code runs in this process: what the code writes, an EmbeddedLink shows to the
/// models.
///
/// A name has one kind, that of its first declaration or write. A data key holds its newest value, which is sampled, or
/// gets samples that are each delivered. An event or micro-event key has occurrences, each of which is delivered.
/// Everything here may be called from any thread at any time, and waits for other callers only. Nothing throws.
///
/// A RobotWriter does the same for a robot whose memory is in another process, where a write can fail later: setData()
/// is its put(), raiseEvent() and raiseMicroEvent() its raise(), removeKey() its remove().
///
/// Time stamps are seconds since the Unix epoch and ascend strictly per key: a stamp that is not later than the key's
/// last one, as after a clock was set back, becomes the next double above that one.
class EMBEDDED_EXPORT RobotMemory
{
public:
    RobotMemory();
    ~RobotMemory();
    RobotMemory(const RobotMemory&) = delete;
    RobotMemory& operator=(const RobotMemory&) = delete;

    /// Lists the name as a key that has no value yet. True if it is a key of that kind then; nothing changes when it
    /// was one already. False when it is a key of another kind, which stays as it is.
    bool declareData(const QString& name);
    bool declareEvent(const QString& name);
    bool declareMicroEvent(const QString& name);

    // The time stamp is that of the robot; without one it is the present time. Writes return false, with nothing
    // changed, when it is not a finite number.

    /// Sets the value of a data key, which need not exist. A sample of it carries the time at which it was sampled.
    /// With a time stamp of the robot it carries that one, and one watcher samples the value once. False, with nothing
    /// changed, when the name is a key of another kind: remove that one first.
    bool setData(const QString& name, const QVariant& value, std::optional<double> timeStamp = {});

    /// Adds a sample to a data key, which need not exist: for a robot that produces each sample itself. The sample is
    /// delivered once to every watcher that runs and watches the key at this moment, however fast the next one comes,
    /// and whatever the sampling period; a watcher that starts later samples the newest one. False, with nothing added,
    /// as for setData().
    bool appendData(const QString& name, const QVariant& value, std::optional<double> timeStamp = {});

    /// One occurrence of the event or micro-event, which need not exist. It is delivered once to every watcher that
    /// runs and watches the key at this moment, and to none that starts later. False, with nothing raised, when the
    /// name is a key of another kind.
    bool raiseEvent(const QString& name, const QVariant& value, std::optional<double> timeStamp = {});
    bool raiseMicroEvent(const QString& name, const QVariant& value, std::optional<double> timeStamp = {});

    /// Takes the key out of the memory; false when there is none of that name. What was sampled or raised before is
    /// still delivered. The name may come back later as any kind.
    bool removeKey(const QString& name);

    /// The names of each kind, each once, in no particular order. Costs the same for any number of names.
    QStringList dataNames() const;
    QStringList eventNames() const;
    QStringList microEventNames() const;
    /// The newest value or occurrence of the key; empty when the name is no key, or one without a value.
    std::optional<MemorySample> newest(const QString& name) const;

private:
    friend class EmbeddedMemoryInterface;
    const std::unique_ptr<RobotMemoryPrivate> d;
};

} // namespace Velk

#endif
