#ifndef MEMORYKEYMODEL_VALUE_TEXT_H
#define MEMORYKEYMODEL_VALUE_TEXT_H

#include <QString>
#include <QVariant>

#include <string>

namespace Velk {

// Fields of the record file, appended to a line as UTF-8.

/// The cell of a value: QVariant::toString(), quoted unless the type is one of those that stand as they are.
/// docs/record-file.md has the table.
void appendValue(std::string* line, const QVariant& value);
/// The text between quotes, each quote character in it doubled.
void appendQuoted(std::string* line, const QString& text);

} // namespace Velk

#endif
