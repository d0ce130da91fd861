// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "back_off.h"

#include <QRandomGenerator>

#include <algorithm>

namespace Velk {

namespace {

constexpr int firstPauseMs = 250;
constexpr int longestPauseMs = 8000;

} // namespace

int BackOff::nextPauseMs()
{
    const int pause = pauseMs(++m_attempts);
    return pause + QRandomGenerator::global()->bounded(-pause / 4, pause / 4 + 1);
}

int BackOff::pauseMs(int attempt)
{
    const int doublings = std::clamp(attempt - 1, 0, 10);
    return std::min(longestPauseMs, firstPauseMs << doublings);
}

} // namespace Velk
