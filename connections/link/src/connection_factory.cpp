// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/connection_factory.h>

namespace Velk {

ConnectionFactory::~ConnectionFactory() = default;

bool ConnectionFactory::canWrite() const
{
    return false;
}

std::unique_ptr<RobotWriter> ConnectionFactory::createWriter(const QString&, QString*) const
{
    return nullptr;
}

} // namespace Velk
