// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_NETWORK_TLS_OPTIONS_H
#define CONNECTIONS_NETWORK_TLS_OPTIONS_H

#include <QSslConfiguration>
#include <QString>
#include <QStringList>

#include <optional>

namespace Velk {

/// The options of a URL about TLS. File names are as given, and empty when not given.
struct TlsOptions
{
    QString caFile;          ///< ca-file: certificate authorities in PEM form; without it the system's are trusted
    QString certificateFile; ///< cert-file: the client's certificate chain in PEM form
    QString keyFile;         ///< key-file: its private key in PEM form; without it the key is in certificateFile
    QString serverName;      ///< tls-name: the name in the server's certificate; empty: the host's

    /// The names under which a URL gives them: "ca-file", "cert-file", "key-file", "tls-name".
    static QStringList names();
    /// Sets the option of that name. False when there is none.
    bool set(const QString& name, const QString& value);
    /// False, with *error set to a sentence, when the options do not go together.
    bool check(QString* error) const;

    /// The configuration of a client that verifies the server, with the files read. Nothing, with *error set to a
    /// sentence, when one of them cannot be used. Reads them every time: changed files are found.
    std::optional<QSslConfiguration> configuration(QString* error) const;
};

} // namespace Velk

#endif
