// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "display_check.h"

namespace Velk {

bool hasDisplay(const QProcessEnvironment& environment)
{
    const auto isSet = [&environment](const QString& name) { return !environment.value(name).isEmpty(); };
    const QString platform = environment.value(QStringLiteral("QT_QPA_PLATFORM"));
    if (platform.isEmpty())
        return isSet(QStringLiteral("DISPLAY")) || isSet(QStringLiteral("WAYLAND_DISPLAY")) ||
               isSet(QStringLiteral("WAYLAND_SOCKET"));
    if (platform.startsWith(QStringLiteral("xcb")))
        return isSet(QStringLiteral("DISPLAY"));
    if (platform.startsWith(QStringLiteral("wayland")))
        return isSet(QStringLiteral("WAYLAND_DISPLAY")) || isSet(QStringLiteral("WAYLAND_SOCKET"));
    return true;
}

} // namespace Velk
