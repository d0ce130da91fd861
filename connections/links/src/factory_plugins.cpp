// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "factory_plugins.h"

#include "messages.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>

#include <dlfcn.h>

namespace Velk {

namespace {

/// The interface without its version: "MemoryKeyModel.ConnectionFactory".
QString interfaceName(const QString& interfaceId)
{
    return interfaceId.section(QLatin1Char('/'), 0, 0);
}

// Relative to the library itself: an installation can be moved.
QString installedFolder()
{
    Dl_info library;
    if (!dladdr(reinterpret_cast<const void*>(&pluginFolders), &library) || !library.dli_fname)
        return QString();
    return QFileInfo(QFile::decodeName(library.dli_fname)).absolutePath() +
           QStringLiteral("/memorykeymodel/connections");
}

} // namespace

QStringList pluginFolders()
{
    QStringList folders = qEnvironmentVariable("MEMORYKEYMODEL_CONNECTIONS").split(QDir::listSeparator());
    folders.append(installedFolder());
    folders.removeAll(QString());
    return folders;
}

FactoryPlugins loadFactoryPlugins(const QStringList& folders)
{
    FactoryPlugins plugins;
    for (const QString& folder : folders) {
        const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files, QDir::Name);
        for (const QFileInfo& file : files) {
            if (!QLibrary::isLibrary(file.fileName()))
                continue;
            const auto fail = [&plugins, &file](const QString& reason) {
                plugins.failures.append(
                    Messages::tr("The connection %1 cannot be loaded: %2").arg(file.absoluteFilePath(), reason));
            };
            QPluginLoader loader(file.absoluteFilePath());
            const QString ownId = QStringLiteral(MemoryKeyModel_ConnectionFactory_iid);
            const QString id = loader.metaData().value(QStringLiteral("IID")).toString();
            // A library without an interface is not a plugin that Qt can read: its error string says why.
            if (id == ownId || id.isEmpty()) {
                if (auto* const factory = qobject_cast<ConnectionFactory*>(loader.instance()))
                    plugins.factories.push_back(factory);
                else
                    fail(loader.isLoaded() ? Messages::tr("It is no connection of a robot.") : loader.errorString());
            } else if (interfaceName(id) == interfaceName(ownId)) {
                fail(Messages::tr("It was built for another version of this program (%1 and not %2). Build it again.")
                         .arg(id, ownId));
            }
            // Another interface belongs to another program.
        }
    }
    return plugins;
}

} // namespace Velk
