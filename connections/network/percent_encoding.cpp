// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "percent_encoding.h"

#include <QStringDecoder>
#include <QUrl>

#include <algorithm>

namespace Velk {

namespace {

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

} // namespace

std::optional<QByteArray> percentDecodedBytes(const QString& text)
{
    const QByteArray encoded = text.toUtf8();
    for (int i = encoded.indexOf('%'); i != -1; i = encoded.indexOf('%', i + 1)) {
        if (i + 2 >= encoded.size() || !isHexDigit(encoded.at(i + 1)) || !isHexDigit(encoded.at(i + 2)))
            return std::nullopt;
    }
    return QByteArray::fromPercentEncoding(encoded);
}

std::optional<QString> percentDecodedText(const QString& text)
{
    const std::optional<QByteArray> bytes = percentDecodedBytes(text);
    if (!bytes)
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder(*bytes);
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    if (decoder.hasError() || std::any_of(decoded.cbegin(), decoded.cend(), isControl))
        return std::nullopt;
    return decoded;
}

QString percentEncoded(const QString& text, const QByteArray& kept)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(text, kept));
}

} // namespace Velk
