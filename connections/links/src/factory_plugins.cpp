// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "factory_plugins.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>

#include <dlfcn.h>

namespace Velk {

namespace {

struct Messages
{
    Q_DECLARE_TR_FUNCTIONS(Velk::RobotLinks)
};

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
            QPluginLoader loader(file.absoluteFilePath());
            // A library of another interface is none of ours; one without any is not a plugin that Qt can read.
            const QString interfaceId = loader.metaData().value(QStringLiteral("IID")).toString();
            if (!interfaceId.isEmpty() && interfaceId != QLatin1String(MemoryKeyModel_ConnectionFactory_iid))
                continue;
            if (auto* const factory = qobject_cast<ConnectionFactory*>(loader.instance()))
                plugins.factories.push_back(factory);
            else
                plugins.failures.append(Messages::tr("The connection %1 cannot be loaded: %2")
                                            .arg(file.absoluteFilePath(), loader.errorString()));
        }
    }
    return plugins;
}

} // namespace Velk
