// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef RECORDTEXT_RECORD_FIELD_H
#define RECORDTEXT_RECORD_FIELD_H

#include <QString>
#include <QVariant>

#include <string>

namespace Velk {

// Fields of the record file, appended to a line as UTF-8. docs/record-file.md describes the format.

/// The cell of a value: QVariant::toString(), quoted unless its type is a number, a truth value, a pointer or invalid.
void appendCell(std::string* line, const QVariant& value);
/// The text between quotes, each quote character in it doubled.
void appendQuoted(std::string* line, const QString& text);

} // namespace Velk

#endif
