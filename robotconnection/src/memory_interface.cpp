// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <robotconnection/memory_interface.h>

namespace Velk {

MemoryInterface::MemoryInterface(QObject* parent)
    : QObject(parent)
{}

MemoryInterface::~MemoryInterface() = default;

} // namespace Velk
