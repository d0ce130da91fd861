// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_KEY_KIND_H
#define CONNECTIONS_LINK_KEY_KIND_H

#include <QStringList>

#include <array>

namespace Velk {

/// The lists of a robot's memory. Each name is in one of them; events and micro-events are both of the event nature.
enum class KeyKind
{
    Data,      ///< holds a value, which is sampled
    Event,     ///< has occurrences, each of which is delivered
    MicroEvent ///< as Event, in the list of micro-events
};

constexpr std::array<KeyKind, 3> keyKinds = {KeyKind::Data, KeyKind::Event, KeyKind::MicroEvent};

/// Names of keys, by kind.
struct KeyNames
{
    QStringList data;
    QStringList events;
    QStringList microEvents;

    QStringList& of(KeyKind kind)
    {
        return kind == KeyKind::Data ? data : kind == KeyKind::Event ? events : microEvents;
    }
    const QStringList& of(KeyKind kind) const { return const_cast<KeyNames*>(this)->of(kind); }
};

} // namespace Velk

#endif
