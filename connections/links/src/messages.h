// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINKS_SRC_MESSAGES_H
#define CONNECTIONS_LINKS_SRC_MESSAGES_H

#include <QCoreApplication>

namespace Velk {

/// The translation context of this folder's messages.
struct Messages
{
    Q_DECLARE_TR_FUNCTIONS(Velk::RobotLinks)
};

} // namespace Velk

#endif
