// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINKS_SRC_BUILT_IN_FACTORIES_H
#define CONNECTIONS_LINKS_SRC_BUILT_IN_FACTORIES_H

#include <connections/link/connection_factory.h>

#include <memory>
#include <vector>

namespace Velk {

/// The connections that were built with this library. Generated from what their folders declare to CMake.
std::vector<std::shared_ptr<ConnectionFactory>> builtInFactories();

} // namespace Velk

#endif
