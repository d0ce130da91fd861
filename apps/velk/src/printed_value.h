// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_PRINTED_VALUE_H
#define APPS_VELK_SRC_PRINTED_VALUE_H

#include <QByteArray>
#include <QString>

QT_BEGIN_NAMESPACE
class QJsonObject;
class QVariant;
QT_END_NAMESPACE

namespace Velk {

/// A value on one line, for people: text as it stands, lists and maps as JSON.
QString valueText(const QVariant& value);

/// One line of JSON, with its line feed.
QByteArray jsonLine(const QJsonObject& object);

} // namespace Velk

#endif
