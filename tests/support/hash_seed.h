// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_SUPPORT_HASH_SEED_H
#define TESTS_SUPPORT_HASH_SEED_H

#include <QHash>

namespace Velk {

/// Sets the iteration order of hashes that are created from now on: a fixed one with 0, another one with any other
/// seed.
inline void setHashSeed(int seed)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    seed == 0 ? QHashSeed::setDeterministicGlobalSeed() : QHashSeed::resetRandomGlobalSeed();
#else
    qSetGlobalQHashSeed(seed);
#endif
}

} // namespace Velk

#endif
