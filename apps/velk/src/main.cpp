#include "velk.h"

#include <connections/directory/private_arguments.h>
#include <connections/directory/robot_directory.h>

#include <QCoreApplication>

int main(int argc, char** argv)
{
    Velk::PrivateArguments arguments(argc, argv);
    const QCoreApplication application(arguments.count(), arguments.values());
    QCoreApplication::setApplicationName(QStringLiteral("velk"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELK_VERSION));
    return Velk::runVelk(arguments.count(), arguments.values(), Velk::RobotDirectory::createLink);
}
