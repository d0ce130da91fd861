#include "velk.h"

#include <connections/directory/robot_directory.h>

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("velk"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELK_VERSION));
    return Velk::runVelk(argc, argv, Velk::RobotDirectory::createLink);
}
