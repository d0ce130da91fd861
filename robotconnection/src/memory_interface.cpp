#include <robotconnection/memory_interface.h>

namespace Velk {

MemoryInterface::MemoryInterface(QObject* parent)
    : QObject(parent)
{}

MemoryInterface::~MemoryInterface() = default;

} // namespace Velk
