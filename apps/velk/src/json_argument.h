// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_JSON_ARGUMENT_H
#define APPS_VELK_SRC_JSON_ARGUMENT_H

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>

namespace Velk {

/// The value that was typed as JSON, as JsonValue::parse() reads it. Empty, with *error set, when the text is not JSON,
/// or has a number of which digits would be lost.
std::optional<QVariant> jsonArgument(const QByteArray& json, QString* error);

} // namespace Velk

#endif
