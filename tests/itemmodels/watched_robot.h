// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_ITEMMODELS_WATCHED_ROBOT_H
#define TESTS_ITEMMODELS_WATCHED_ROBOT_H

#include "support/fake_robot.h"
#include "support/key_text.h"

#include <QCoreApplication>

namespace Velk {

/// A robot, connected at first, and its displayed key set.
class WatchedRobot
{
public:
    WatchedRobot() { manager.connected = true; }

    void display(const QStringList& names, MemoryKeyNature nature = DataNature)
    {
        keys->addKeys(keySet(names, nature));
    }
    void deliver(const Batch& batch) { manager.memory->deliver(batch); }
    /// Connects again, and rebuilds the displayed keys from these lists.
    void reconnect(const QStringList& data, const QStringList& events = {})
    {
        manager.establish();
        finishLists(data, events);
    }
    /// Finishes the lists that were asked for, and waits until the displayed keys are rebuilt.
    void finishLists(const QStringList& data, const QStringList& events = {})
    {
        bool isRebuilt = false;
        const auto connection =
            QObject::connect(keys, &DisplayedMemoryKeyListModel::keysUpdated, keys, [&isRebuilt] { isRebuilt = true; });
        manager.memory->finishLists(data, events);
        while (!isRebuilt)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QObject::disconnect(connection);
    }

    FakeConnectionManager manager;
    DisplayedMemoryKeyListModel* keys = new DisplayedMemoryKeyListModel(&manager);
};

} // namespace Velk

#endif
