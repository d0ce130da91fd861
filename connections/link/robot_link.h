#ifndef CONNECTIONS_LINK_ROBOT_LINK_H
#define CONNECTIONS_LINK_ROBOT_LINK_H

#include <connections/link/link_export.h>
#include <connections/link/sample_losses.h>
#include <robotconnection/connection_manager.h>

#include <QString>

namespace Velk {

/// A connection manager that an application opens and closes: what every connection of this project offers beyond the
/// contract that the models need.
///
/// Lives on the models' thread; every signal is emitted there.
class LINK_EXPORT RobotLink : public ConnectionManager
{
    Q_OBJECT

public:
    enum State
    {
        Disconnected, ///< closed, or never opened
        Connecting,   ///< opened, and not connected yet
        Connected,    ///< as isConnected()
        Lost          ///< opened, was connected, and tries to connect again by itself
    };
    Q_ENUM(State)

    explicit RobotLink(QObject* parent = nullptr);
    ~RobotLink() override;

    /// The robot's URL, fit to be shown: a password in it is left out.
    virtual QString url() const = 0;
    virtual State state() const = 0;
    bool isConnected() const override;

    /// Connects to the robot, from the event loop, and again after every loss until close() is called. Nothing when it
    /// is open.
    virtual void open() = 0;
    /// Closes the connection at once; disconnected() is emitted if it stood. Nothing when it is closed.
    virtual void close() = 0;

    /// What was not delivered, over all keys, and of one key.
    virtual SampleLosses losses() const = 0;
    virtual SampleLosses losses(const QString& keyName) const = 0;

Q_SIGNALS:
    /// state() changed. Emitted before the connection manager's own signal of the same change.
    void stateChanged(Velk::RobotLink::State state);
    /// An attempt to connect failed, or the connection was lost: a short title, and a sentence that says what happened
    /// and what to do. The link goes on trying unless state() is Disconnected.
    void failed(const QString& title, const QString& message);
};

} // namespace Velk

#endif
