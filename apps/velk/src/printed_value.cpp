// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "printed_value.h"

#include "console.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QVariant>

namespace Velk {

QString valueText(const QVariant& value)
{
    const QJsonValue json = QJsonValue::fromVariant(value);
    if (json.isArray())
        return Console::printable(QString::fromUtf8(QJsonDocument(json.toArray()).toJson(QJsonDocument::Compact)));
    if (json.isObject())
        return Console::printable(QString::fromUtf8(QJsonDocument(json.toObject()).toJson(QJsonDocument::Compact)));
    return Console::printable(value.toString());
}

QByteArray jsonLine(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace Velk
