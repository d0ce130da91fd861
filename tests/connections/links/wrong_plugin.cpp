// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <QObject>

/// A Qt plugin of the interface INTERFACE, which it does not implement.
class WrongPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID INTERFACE)
};

#include "wrong_plugin.moc"
