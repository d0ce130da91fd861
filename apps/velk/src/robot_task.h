#ifndef APPS_VELK_SRC_ROBOT_TASK_H
#define APPS_VELK_SRC_ROBOT_TASK_H

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

namespace Velk {

class Console;
class MemoryKeyListModel;
class RobotLink;

/// What a command does with a robot: opens the link, waits until the robot has listed its keys, and works from then on
/// until it is done, interrupted or stopped by a failure.
///
/// Not connected and listed within the time-out is a failure; so is a link that gives up. A connection that is lost
/// after that is the derived class's matter.
class RobotTask : public QObject
{
    Q_OBJECT

public:
    /// The link, not yet open, and the console outlive the task.
    RobotTask(RobotLink& link, Console& console, int timeoutMs);
    ~RobotTask() override;

    /// Opens the link; the rest happens in the event loop.
    void start();
    /// Ctrl-C or another signal that asks to end.
    virtual void interrupt(int signalNumber);

Q_SIGNALS:
    /// The task is over: how velk is to end. Once.
    void finished(int status);

protected:
    RobotLink& link() { return m_link; }
    Console& console() { return m_console; }
    bool isFinished() const { return m_isFinished; }
    /// Whether the preparations are over and the time-out with them.
    bool isWorking() const { return m_isWorking; }
    /// The preparations are over.
    void setWorking();
    /// Tells the user something.
    virtual void tell(const QString& text);
    void tell(const QString& title, const QString& text);
    /// Ends the task; only the first call counts.
    virtual void finish(int status);

    /// The robot is connected and has listed its keys. Again after every reconnection before setWorking().
    virtual void onListed(const MemoryKeyListModel& catalogue) = 0;
    /// The connection was lost, which the link tells the user. It tries to connect again.
    virtual void onLost() {}
    /// The connection stands again while the task works.
    virtual void onConnectedAgain() {}

private:
    void onConnected();
    void onDisconnected();
    void onCatalogueReady();
    void onFailed(const QString& title, const QString& message);
    void onTimeout();
    void dropCatalogue();

    RobotLink& m_link;
    Console& m_console;
    QTimer m_timeout;
    QPointer<MemoryKeyListModel> m_catalogue;
    QString m_lastFailure;
    bool m_isWorking = false;
    bool m_isFinished = false;
};

} // namespace Velk

#endif
