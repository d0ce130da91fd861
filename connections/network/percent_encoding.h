// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_NETWORK_PERCENT_ENCODING_H
#define CONNECTIONS_NETWORK_PERCENT_ENCODING_H

#include <QByteArray>
#include <QString>

#include <optional>

namespace Velk {

/// The bytes of percent-encoded text (RFC 3986, section 2.1); nothing when a % is not followed by two hexadecimal
/// digits. Characters that should have been encoded are taken as they are.
std::optional<QByteArray> percentDecodedBytes(const QString& text);

/// The same as text; nothing also when the bytes are not UTF-8, or hold a control character.
std::optional<QString> percentDecodedText(const QString& text);

/// The text with every character encoded that is not unreserved in a URL and not one of `kept`.
QString percentEncoded(const QString& text, const QByteArray& kept = {});

} // namespace Velk

#endif
