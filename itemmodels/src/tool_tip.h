// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_TOOL_TIP_H
#define ITEMMODELS_TOOL_TIP_H

#include <QString>

namespace Velk {

class MemoryKey;

/// The text as a tool tip that shows it character by character. Views interpret a tool tip that looks like rich text; a
/// name or a value from a robot is never interpreted, so such a text is escaped.
QString plainToolTip(const QString& text);

/// The key's name, description and nature, a line each.
QString keyToolTip(const MemoryKey& key);

} // namespace Velk

#endif
