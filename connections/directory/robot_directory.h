#ifndef CONNECTIONS_DIRECTORY_ROBOT_DIRECTORY_H
#define CONNECTIONS_DIRECTORY_ROBOT_DIRECTORY_H

#include <connections/directory/directory_export.h>
#include <connections/link/robot_link.h>

#include <QString>
#include <QStringList>

#include <memory>

namespace Velk {

/// The kinds of robot that this build can open, by the scheme of their URL.
namespace RobotDirectory {

struct Scheme
{
    QString name;        ///< "sim"
    QString synopsis;    ///< "sim:[?seed=N][&keys=N]"
    QString description; ///< one line, in English: "a simulated mobile robot with an arm"
};

/// In the order in which a help text shows them.
DIRECTORY_EXPORT QList<Scheme> schemes();

/// The link that the URL names, not yet open; null when the URL is not valid, with *error set to a sentence that says
/// what is wrong and what is possible. Never opens anything: link->open() does. The caller owns the result.
DIRECTORY_EXPORT std::unique_ptr<RobotLink> createLink(const QString& url, QString* error);

} // namespace RobotDirectory

} // namespace Velk

#endif
