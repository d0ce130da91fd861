// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "key_mime_data.h"

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>
#include <QStringList>

#include <algorithm>

namespace Velk {

namespace {

// Two applications may use different versions of Qt.
constexpr QDataStream::Version streamVersion = QDataStream::Qt_5_15;

MemoryKeyNature natureFrom(qint32 number)
{
    switch (number) {
    case DataNature:
        return DataNature;
    case EventNature:
        return EventNature;
    default:
        return UnknownNature;
    }
}

} // namespace

QString keyMimeType()
{
    return QStringLiteral("application/x-memorykeymodel-keys");
}

QMimeData* mimeDataOfKeys(const QSet<MemoryKey>& keys)
{
    QStringList names;
    QByteArray encoded;
    QDataStream stream(&encoded, QIODevice::WriteOnly);
    stream.setVersion(streamVersion);
    for (const MemoryKey& key : keys) {
        stream << key.name() << key.description() << qint32(key.nature());
        names << key.name();
    }
    std::sort(names.begin(), names.end());

    auto* const data = new QMimeData;
    data->setData(keyMimeType(), encoded);
    data->setText(names.join(QLatin1Char('\n')));
    return data;
}

QSet<MemoryKey> keysOfMimeData(const QMimeData* data)
{
    QSet<MemoryKey> keys;
    const QByteArray encoded = data->data(keyMimeType());
    QDataStream stream(encoded);
    stream.setVersion(streamVersion);
    while (!stream.atEnd()) {
        QString name;
        QString description;
        qint32 nature = 0;
        stream >> name >> description >> nature;
        if (stream.status() != QDataStream::Ok)
            return {};
        keys.insert(MemoryKey(name, description, natureFrom(nature)));
    }
    return keys;
}

} // namespace Velk
