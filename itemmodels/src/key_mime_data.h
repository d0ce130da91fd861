#ifndef ITEMMODELS_KEY_MIME_DATA_H
#define ITEMMODELS_KEY_MIME_DATA_H

#include <memorykeymodel/memory_key.h>

#include <QSet>
#include <QString>

QT_BEGIN_NAMESPACE
class QMimeData;
QT_END_NAMESPACE

namespace Velk {

/// The format in which keys are dragged, within an application or from one to another.
QString keyMimeType();

/// The keys in that format, and their names as text. The caller owns the result.
QMimeData* mimeDataOfKeys(const QSet<MemoryKey>& keys);

/// The keys that the data hold; none when they hold none or are damaged.
QSet<MemoryKey> keysOfMimeData(const QMimeData* data);

} // namespace Velk

#endif
