#ifndef CONNECTIONS_EMBEDDED_EMBEDDED_LINK_H
#define CONNECTIONS_EMBEDDED_EMBEDDED_LINK_H

#include <connections/embedded/embedded_export.h>
#include <connections/link/robot_link.h>

#include <QHash>

#include <atomic>
#include <memory>

namespace Velk {

class EmbeddedMemoryInterface;
class RobotMemory;

/// The link to a robot whose code runs in this process and writes into a RobotMemory.
///
/// Data keys are sampled at the watcher's sampling period, or each at the period of its own watchKey() when that is 0.
/// Events and micro-events are not sampled: every occurrence that is raised while the watcher runs and watches the key
/// is delivered, once. One batch is delivered per gather period while the watcher runs, an empty one if there is
/// nothing to deliver. Stopping the watcher discards what was collected since the last delivery.
///
/// The connection stands as long as the robot is in reach, which is always, until loseConnection() says otherwise.
class EMBEDDED_EXPORT EmbeddedLink : public RobotLink
{
    Q_OBJECT

public:
    explicit EmbeddedLink(std::shared_ptr<RobotMemory> memory, QObject* parent = nullptr);
    /// Ends the connection without a signal.
    ~EmbeddedLink() override;

    /// Where the robot's code writes; never null.
    std::shared_ptr<RobotMemory> memory() const { return m_memory; }

    /// "embedded:"
    QString url() const override;

    /// What the robot answers when it is asked for real-time sampling, from the next connection on; true at first.
    bool isRealTimeSupported() const { return m_isRealTimeSupported; }
    void setRealTimeSupported(bool isSupported) { m_isRealTimeSupported = isSupported; }
    /// How many samples or occurrences of one key are kept for one delivery, from the next connection on, at least 1;
    /// 4096 at first. When there are more, the oldest are dropped.
    int queueCapacity() const { return m_queueCapacity; }
    void setQueueCapacity(int capacity);

    /// Takes the robot out of reach: a connection that stands is lost, one that is being made waits. Nothing when it is
    /// out of reach already.
    void loseConnection();
    /// Brings the robot back: an open link connects again, from the event loop.
    void restoreConnection();

protected:
    /// Gets the robot going for open(). Ends, then or later and never from inside this call, in robotStarted() or
    /// robotFailed() on this link's thread. Here it does so at once: the robot's code runs by itself.
    virtual void startRobot();
    /// Undoes startRobot(), for close(). A derived class calls it from its destructor too.
    virtual void stopRobot() {}

    /// The robot writes: the link connects. Ignored when the link was closed since.
    void robotStarted();
    /// The robot cannot be started: reports failed(). Ignored when the link was closed since.
    void robotFailed(const QString& title, const QString& message);

    void startConnecting() override;
    void stopConnecting() override;
    void endService(MemoryInterface& service, Ending ending) override;
    void collectLosses() override;

private:
    void connectToRobot();

    const std::shared_ptr<RobotMemory> m_memory;
    std::shared_ptr<QHash<QString, std::shared_ptr<std::atomic<qint64>>>> m_dropCounts;
    QHash<QString, qint64> m_recordedDrops;
    bool m_isRobotRunning = false;
    bool m_isRobotInReach = true;
    bool m_isRealTimeSupported = true;
    int m_queueCapacity = 4096;
    int m_opening = 0; // counts the openings: a posted call may come after the one that it belongs to
};

} // namespace Velk

#endif
