// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_JSON_VALUE_H
#define CONNECTIONS_LINK_JSON_VALUE_H

#include <connections/link/link_export.h>

#include <QByteArray>
#include <QVariant>

#include <optional>

namespace Velk {

/// Values of keys as JSON (RFC 8259): any value, not only a list or a map as in a document.
namespace JsonValue {

/// The variant that matches the JSON: booleans, whole numbers (qint64), other numbers (double, also 17.0 and 2E3),
/// text, lists, maps; null becomes an invalid variant. Within a list or map Qt makes a whole number of 17.0. Nothing
/// when the bytes are not one JSON value in UTF-8, or are nested deeper than Qt parses (1024 levels).
LINK_EXPORT std::optional<QVariant> parse(const QByteArray& json);

/// The JSON of a value, in the form that parse() reads back: a floating-point number keeps its point, except within a
/// list or map, where 17.0 is written as 17. A value without a form in JSON is written as its text in quotation marks;
/// a number that is not finite as nan, inf or -inf, which parse() does not take.
LINK_EXPORT QByteArray write(const QVariant& value);

} // namespace JsonValue

} // namespace Velk

#endif
