// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_KEY_MIME_DATA_H
#define ITEMMODELS_KEY_MIME_DATA_H

#include <memorykeymodel/memory_key.h>

#include <QSet>
#include <QString>

QT_BEGIN_NAMESPACE
class QMimeData;
QT_END_NAMESPACE

namespace Velk {

/// The format of dragged keys, within an application or between two.
QString keyMimeType();

/// The keys in that format, and their names as text. The caller owns the result.
QMimeData* mimeDataOfKeys(const QSet<MemoryKey>& keys);

/// The keys in the data; none when the data has no keys or is damaged.
QSet<MemoryKey> keysOfMimeData(const QMimeData* data);

} // namespace Velk

#endif
