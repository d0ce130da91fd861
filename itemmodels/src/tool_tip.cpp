// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "tool_tip.h"

#include <memorykeymodel/memory_key.h>

#include <QStringList>
#include <QTextDocument>

namespace Velk {

QString plainToolTip(const QString& text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    return QStringLiteral("<div style='white-space: pre-wrap'>%1</div>").arg(text.toHtmlEscaped());
}

QString keyToolTip(const MemoryKey& key)
{
    return plainToolTip(QStringList{key.name(), key.description(), key.natureToString()}.join(QLatin1Char('\n')));
}

} // namespace Velk
