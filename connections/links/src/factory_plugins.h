// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINKS_SRC_FACTORY_PLUGINS_H
#define CONNECTIONS_LINKS_SRC_FACTORY_PLUGINS_H

#include <connections/link/connection_factory.h>

#include <QStringList>

#include <vector>

namespace Velk {

/// The connections that plugins offer.
struct FactoryPlugins
{
    std::vector<ConnectionFactory*> factories; ///< valid until the program ends
    QStringList failures;                      ///< a sentence for each plugin that cannot be loaded
};

/// Loads the plugins of all folders, in the order of the folders and by file name.
FactoryPlugins loadFactoryPlugins(const QStringList& folders);

/// The folders of the variable MEMORYKEYMODEL_CONNECTIONS, then the one beside the installed library.
QStringList pluginFolders();

} // namespace Velk

#endif
