// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_NETWORK_BACK_OFF_H
#define CONNECTIONS_NETWORK_BACK_OFF_H

namespace Velk {

/// The pauses between attempts to connect: each is twice as long as the one before, up to a limit. Jitter of a quarter
/// of the pause keeps clients that lost the same server from returning to it all at once.
class BackOff
{
public:
    /// Counts one more attempt and returns the pause before it, in milliseconds, with jitter.
    int nextPauseMs();
    /// The connection stands: the next pause is the shortest one again.
    void reset() { m_attempts = 0; }

    /// The pause before the n-th attempt in a row, from 1, in milliseconds and without jitter.
    static int pauseMs(int attempt);

private:
    int m_attempts = 0;
};

} // namespace Velk

#endif
