// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/embedded_link.h>
#include <connections/link/connection_factory.h>

#include <QObject>

// A robot of the scheme "plugged", which knows one URL.
class PluggedConnection : public QObject, public Velk::ConnectionFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID MemoryKeyModel_ConnectionFactory_iid)
    Q_INTERFACES(Velk::ConnectionFactory)

public:
    QList<Velk::UrlScheme> schemes() const override
    {
        return {{QStringLiteral("plugged"), QStringLiteral("plugged:"), QStringLiteral("a robot of a plugin")},
                {QStringLiteral("sim"), QStringLiteral("sim:plugged"), QStringLiteral("a scheme that is taken")}};
    }
    std::unique_ptr<Velk::RobotLink> createLink(const QString& url, QString* error) const override
    {
        if (url == QStringLiteral("plugged:"))
            return std::make_unique<Velk::EmbeddedLink>(std::make_shared<Velk::RobotMemory>());
        *error = QStringLiteral("no such plugged robot");
        return nullptr;
    }
};

#include "plugged_connection.moc"
