// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_HOST_HOST_FACTORY_H
#define CONNECTIONS_HOST_HOST_FACTORY_H

#include <connections/host/host_export.h>
#include <connections/link/connection_factory.h>

#include <QCoreApplication>

namespace Velk {

/// Opens this computer by the URL "host:".
class HOST_EXPORT HostFactory : public ConnectionFactory
{
    Q_DECLARE_TR_FUNCTIONS(Velk::HostFactory)

public:
    QList<UrlScheme> schemes() const override;
    std::unique_ptr<RobotLink> createLink(const QString& url, QString* error) const override;
};

} // namespace Velk

#endif
