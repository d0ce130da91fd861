// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_ITEMMODELS_CATALOGUE_ROBOT_H
#define TESTS_ITEMMODELS_CATALOGUE_ROBOT_H

#include "support/fake_robot.h"
#include "support/key_text.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QCoreApplication>

namespace Velk {

/// A connected robot, and catalogues of it.
class CatalogueRobot
{
public:
    CatalogueRobot() { manager.connected = true; }

    /// A catalogue that waits for its lists.
    MemoryKeyListModel* fetchingCatalogue(const QSet<MemoryKey>& selected = {})
    {
        return new MemoryKeyListModel(&manager, selected);
    }
    /// Finishes the lists of the newest catalogue and waits until it is ready.
    void finish(MemoryKeyListModel* catalogue, const QStringList& data, const QStringList& events = {})
    {
        manager.memory->finishLists(data, events);
        while (!catalogue->isReady())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    MemoryKeyListModel* readyCatalogue(const QStringList& data, const QStringList& events = {},
                                       const QSet<MemoryKey>& selected = {})
    {
        MemoryKeyListModel* const catalogue = fetchingCatalogue(selected);
        finish(catalogue, data, events);
        return catalogue;
    }

    FakeConnectionManager manager;
};

} // namespace Velk

#endif
