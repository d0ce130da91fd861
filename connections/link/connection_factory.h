// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_CONNECTION_FACTORY_H
#define CONNECTIONS_LINK_CONNECTION_FACTORY_H

#include <connections/link/link_export.h>
#include <connections/link/robot_link.h>
#include <connections/link/robot_writer.h>

#include <QList>
#include <QString>
#include <QtPlugin>

#include <memory>

namespace Velk {

/// A kind of robot URL.
struct UrlScheme
{
    QString name;        ///< lower case, "sim"
    QString synopsis;    ///< "sim:[?seed=N][&keys=N]"
    QString description; ///< one line in the program's language: "a simulated mobile robot with an arm"
};

/// What a connection offers to programs that open robots by URL. A connection of this project is declared to CMake by
/// memorykeymodel_offer_connection(); any other is a Qt plugin:
///
///     class ClockPlugin : public QObject, public Velk::ConnectionFactory
///     {
///         Q_OBJECT
///         Q_PLUGIN_METADATA(IID MemoryKeyModel_ConnectionFactory_iid)
///         Q_INTERFACES(Velk::ConnectionFactory)
///         …
///     };
///
/// connections/links/robot_links.h says where plugins are looked for. Used on the main thread.
class LINK_EXPORT ConnectionFactory
{
public:
    virtual ~ConnectionFactory();

    /// In the order in which a help text shows them; at least one.
    virtual QList<UrlScheme> schemes() const = 0;

    /// The link that the URL names, not yet open; null when the URL is not valid, with *error set to a sentence that
    /// says what is wrong and what is possible, without a password in it. The URL's scheme is one of schemes(), in
    /// lower case; `error` is never null.
    virtual std::unique_ptr<RobotLink> createLink(const QString& url, QString* error) const = 0;

    /// Whether robots of these schemes can be written to from outside; here false.
    virtual bool canWrite() const;
    /// The writer that the URL names, not yet open; null as createLink() is. Called only when canWrite(); here null.
    virtual std::unique_ptr<RobotWriter> createWriter(const QString& url, QString* error) const;
};

} // namespace Velk

#define MemoryKeyModel_ConnectionFactory_iid "MemoryKeyModel.ConnectionFactory/1.0"
Q_DECLARE_INTERFACE(Velk::ConnectionFactory, MemoryKeyModel_ConnectionFactory_iid)

#endif
