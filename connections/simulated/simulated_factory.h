// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_SIMULATED_SIMULATED_FACTORY_H
#define CONNECTIONS_SIMULATED_SIMULATED_FACTORY_H

#include <connections/link/connection_factory.h>
#include <connections/simulated/simulated_export.h>

#include <QCoreApplication>

namespace Velk {

/// Opens robots by URLs "sim:…".
class SIMULATED_EXPORT SimulatedFactory : public ConnectionFactory
{
    Q_DECLARE_TR_FUNCTIONS(Velk::SimulatedFactory)

public:
    QList<UrlScheme> schemes() const override;
    std::unique_ptr<RobotLink> createLink(const QString& url, QString* error) const override;
};

} // namespace Velk

#endif
