// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "velk.h"

#include <apps/arguments/private_arguments.h>
#include <connections/links/robot_links.h>

#include <QCoreApplication>

int main(int argc, char** argv)
{
    Velk::PrivateArguments arguments(argc, argv);
    const QCoreApplication application(arguments.count(), arguments.values());
    QCoreApplication::setApplicationName(QStringLiteral("velk"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELK_VERSION));
    return Velk::runVelk(arguments.count(), arguments.values(), Velk::RobotLinks::createLink);
}
