#include <robotconnection/connection_manager.h>

namespace Velk {

ConnectionManager::ConnectionManager(QObject* parent)
    : QObject(parent)
{}

ConnectionManager::~ConnectionManager() = default;

} // namespace Velk
