#include <connections/link/robot_link.h>

namespace Velk {

RobotLink::RobotLink(QObject* parent)
    : ConnectionManager(parent)
{}

RobotLink::~RobotLink() = default;

bool RobotLink::isConnected() const
{
    return state() == Connected;
}

} // namespace Velk
