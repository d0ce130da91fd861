// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ROBOTCONNECTION_CONNECTION_MANAGER_H
#define ROBOTCONNECTION_CONNECTION_MANAGER_H

#include <robotconnection/memory_interface.h>
#include <robotconnection/robotconnection_export.h>

#include <QObject>

#include <boost/shared_ptr.hpp>

namespace Velk {

/// The connection to one robot: its state, and the robot's memory service while it is connected.
///
/// A connection library derives from this class. The models that are created for a connection manager become its Qt
/// children and are deleted with it. They keep a plain pointer to it and call it on its own thread only. The three
/// signals are emitted on that thread, each after isConnected() has changed.
class ROBOTCONNECTION_EXPORT ConnectionManager : public QObject
{
    Q_OBJECT

public:
    explicit ConnectionManager(QObject* parent = nullptr);
    ~ConnectionManager() override;

    /// The memory service of the present connection; empty when there is none at the moment. The models call this for
    /// every operation and keep the pointer until the operation returns.
    virtual boost::shared_ptr<MemoryInterface> memoryInterface() = 0;

    /// Whether a robot is connected now. The new state is returned before one of the signals below is emitted.
    virtual bool isConnected() const = 0;

Q_SIGNALS:
    /// The robot is connected.
    void connectionEstablished();
    /// The connection was lost.
    void connectionLost();
    /// The connection was closed by the application.
    void disconnected();
};

} // namespace Velk

#endif
