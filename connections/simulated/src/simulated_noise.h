// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_SIMULATED_SRC_SIMULATED_NOISE_H
#define CONNECTIONS_SIMULATED_SRC_SIMULATED_NOISE_H

#include <QByteArray>

namespace Velk {

/// Numbers that look random and are a function of a seed, a channel and a count. Spelt out here, because the standard
/// library's distributions and Qt's hashes differ between versions and platforms.
class SimulatedNoise
{
public:
    SimulatedNoise(quint64 seed, const QByteArray& channel)
        : m_state(mix(seed))
    {
        for (const char byte : channel)
            m_state = mix(m_state ^ static_cast<unsigned char>(byte));
    }
    SimulatedNoise(quint64 seed, quint64 channel)
        : m_state(mix(mix(seed) ^ channel))
    {}

    /// In [0, 1).
    double uniform(qint64 count) const
    {
        constexpr double unit = 1.0 / (quint64(1) << 53);
        return static_cast<double>(mix(m_state ^ mix(static_cast<quint64>(count))) >> 11) * unit;
    }
    /// In [-1, 1).
    double symmetric(qint64 count) const { return 2.0 * uniform(count) - 1.0; }

private:
    /// The splitmix64 step: a bijection in which every bit of the input touches every bit of the output.
    static quint64 mix(quint64 value)
    {
        value += 0x9e3779b97f4a7c15ULL;
        value = (value ^ (value >> 30)) * 0xbf58476d1ce4e5b9ULL;
        value = (value ^ (value >> 27)) * 0x94d049bb133111ebULL;
        return value ^ (value >> 31);
    }

    quint64 m_state;
};

} // namespace Velk

#endif
