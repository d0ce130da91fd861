// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_ROBOT_WRITER_H
#define CONNECTIONS_LINK_ROBOT_WRITER_H

#include <connections/link/failure_filter.h>
#include <connections/link/key_kind.h>
#include <connections/link/link_export.h>
#include <connections/link/write_losses.h>

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <optional>

namespace Velk {

/// Writes a robot's memory from outside the robot's process: the other side of a RobotLink, for connections whose
/// memory can be written to. A robot's code in this process writes into a RobotMemory (connections/embedded) instead:
/// at once, from any thread, and with a kind in the name of each function.
///
/// Keeps its connection up by itself until close() is called. What was declared and the newest value of each data key
/// are written again after every reconnection: the other side may have come back empty. Occurrences that are raised
/// without a connection are lost and counted; so are, where the memory keeps every sample of a key, all samples put
/// without a connection but the newest one. Time stamps are seconds since the Unix epoch.
///
/// Lives on one thread; every signal is emitted there. No call waits for the robot or a network.
class LINK_EXPORT RobotWriter : public QObject
{
    Q_OBJECT

public:
    /// Receives how a write ended: an empty text, or a sentence that says what went wrong. Called at most once, from
    /// the event loop; not at all when the connection is lost, or moves to another node of a cluster, before the other
    /// side has answered. Without a connection it is not called for a value or an occurrence; for a removal it is
    /// called during the next connection.
    using Done = std::function<void(const QString& error)>;

    explicit RobotWriter(QObject* parent = nullptr);
    ~RobotWriter() override;

    /// As RobotLink::url().
    virtual QString url() const = 0;
    virtual bool isConnected() const = 0;
    /// What was not written since the writer was opened: occurrences, values that were refused or dropped during a
    /// connection, samples of keys of which the memory keeps every sample, and what was open when the writer was
    /// closed. Other values are written again with the next connection and are no loss.
    virtual WriteLosses losses() const = 0;
    qint64 lostCount() const { return losses().total(); }
    /// Values and occurrences that are neither written nor lost yet: they wait, also for a connection, or are not
    /// answered.
    virtual qint64 openCount() const = 0;
    /// Whether nothing is open and, during a connection, everything that was declared and removed is answered: written
    /// or refused.
    virtual bool isIdle() const = 0;
    /// Whether the other side has accepted all that was declared and removed, and what setRealTimeSupported() stated.
    /// False without a connection, and while writes are not answered.
    virtual bool areDeclarationsWritten() const = 0;

    /// Connects, from the event loop, and again after every loss until close() is called. Nothing when it is open.
    virtual void open() = 0;
    /// Ends the connection without waiting for answers and without a signal. What was declared is forgotten here, and
    /// stays where it was written. What is open is counted as lost; of several values of a key that is not known to
    /// keep every sample, one counts.
    virtual void close() = 0;

    /// Lists the names as keys of the robot, in place of all that this writer declared before: those that are in
    /// `names` no longer are removed. Names that others declared stay. A name in several lists gets the last
    /// kind: data, event, micro-event.
    virtual void declare(const KeyNames& names) = 0;
    /// Whether sampling the robot every 10 ms makes sense; not stated at first.
    virtual void setRealTimeSupported(bool isSupported) = 0;

    /// Writes a data key's value and lists the key. All calls of one turn of the event loop are written together.
    /// Where the memory keeps every sample of the key, each call adds one; without a time stamp it has the time at
    /// which it is written. Elsewhere the newest value counts, and the time stamp is not written.
    virtual void put(const QString& name, const QVariant& value, std::optional<double> timeStamp = {},
                     Done done = {}) = 0;
    /// Adds an occurrence and lists the key: as a micro-event if that was declared, else as an event. Without a time
    /// stamp it occurs when it is written.
    virtual void raise(const QString& name, const QVariant& value, std::optional<double> timeStamp = {},
                       Done done = {}) = 0;
    /// Removes the keys with their values and occurrences, whatever their kind. Names that are no keys are ignored.
    virtual void remove(const QStringList& names, Done done = {}) = 0;

Q_SIGNALS:
    void connected();
    /// losses() and openCount() already are those of a lost connection. failed() reports the reason next, unless its
    /// limits leave it out.
    void connectionLost();
    /// An attempt to connect failed, the connection was lost, or a write was refused: a short title, and a sentence
    /// that says what happened and what to do. The writer goes on trying. Once for the same failure until the writer is
    /// connected or opened again, and at most 20 times a minute; open() begins a new count.
    void failed(const QString& title, const QString& message);
    /// Emitted during a connection, when isIdle() has become true. May be emitted again while it is true.
    void idle();

protected:
    /// Emits failed(), unless FailureFilter finds that it was reported, or that too many were.
    void reportFailure(const QString& title, const QString& message);
    /// For open(): every failure is reported again, and a new count begins.
    void resetFailures() { m_failures = {}; }
    /// For when the writer is connected: every failure is reported again.
    void forgetFailures() { m_failures.clear(); }

private:
    FailureFilter m_failures;
};

} // namespace Velk

#endif
