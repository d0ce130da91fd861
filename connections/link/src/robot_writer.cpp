// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/robot_writer.h>

namespace Velk {

RobotWriter::RobotWriter(QObject* parent)
    : QObject(parent)
{}

RobotWriter::~RobotWriter() = default;

void RobotWriter::reportFailure(const QString& title, const QString& message)
{
    if (m_failures.isNew(title, message))
        emit failed(title, message);
}

} // namespace Velk
