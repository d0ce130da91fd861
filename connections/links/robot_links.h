// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINKS_ROBOT_LINKS_H
#define CONNECTIONS_LINKS_ROBOT_LINKS_H

#include <connections/link/connection_factory.h>
#include <connections/link/robot_link.h>
#include <connections/link/robot_writer.h>
#include <connections/links/links_export.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

namespace Velk {

/// Opens robots by URL: those of every connection that was built with this library, and those of plugins.
///
/// Plugins (connections/link/connection_factory.h) are looked for, once in a program, in the folders that the variable
/// MEMORYKEYMODEL_CONNECTIONS lists, separated as in PATH, and then in memorykeymodel/connections beside the installed
/// library. They run in the program: the folders hold trusted files only. A scheme is opened by the first connection
/// that has it, the built ones first. Used on the main thread.
namespace RobotLinks {

/// In the order in which a help text shows them.
LINKS_EXPORT QList<UrlScheme> schemes();

/// A sentence for each plugin that cannot be loaded, with its file and the reason; none when all are loaded.
LINKS_EXPORT QStringList pluginFailures();

/// The link that the URL names, not yet open; null when the URL is not valid, with *error, if given, set to a sentence
/// that says what is wrong and what is possible. Never opens anything: link->open() does.
LINKS_EXPORT std::unique_ptr<RobotLink> createLink(const QString& url, QString* error);

/// The writer to the robot that the URL names, not yet open; null when the URL is not valid or its robot cannot be
/// written to, with *error, if given, set to a sentence that says why.
LINKS_EXPORT std::unique_ptr<RobotWriter> createWriter(const QString& url, QString* error);

} // namespace RobotLinks

} // namespace Velk

#endif
