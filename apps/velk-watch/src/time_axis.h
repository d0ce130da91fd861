// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_TIME_AXIS_H
#define APPS_VELK_WATCH_TIME_AXIS_H

namespace Velk {

/// The part of the time that a plot shows, in seconds before now. Now is the time stamp of the newest sample: the clock
/// of this machine is never compared with the robot's.
///
/// While the axis follows, its right edge is now. A frozen axis does not move.
class TimeAxis
{
public:
    static constexpr double minSpan = 0.02;     ///< seconds
    static constexpr double maxSpan = 86400.0;  ///< seconds
    static constexpr double initialSpan = 30.0; ///< seconds

    /// Takes the newest time stamp. It may go back: the clock of a restarted robot may start again.
    void setNewest(double time);
    /// For another robot, with another clock: the time stamp of the next setNewest() becomes now, also when the axis is
    /// frozen.
    void restart();
    bool hasNow() const { return m_hasNow; }
    /// The time stamp of now.
    double now() const { return m_now; }

    bool isFollowing() const { return m_isFollowing; }
    /// setFollowing(true) returns to the newest samples and keeps the span.
    void setFollowing(bool isFollowing);

    /// The edges in seconds relative to now(): -30 and 0 at first.
    double left() const { return m_right - m_span; }
    double right() const { return m_right; }
    double span() const { return m_span; }
    /// The edges as time stamps.
    double from() const { return m_now + left(); }
    double to() const { return m_now + right(); }

    /// Multiplies the span, within the limits. If the axis follows, the right edge stays. Otherwise the time `around`,
    /// in seconds relative to now(), stays where it is, unless the right edge would pass now. Nothing for a factor that
    /// is not above 0.
    void zoom(double factor, double around);
    /// Moves the axis by seconds, to the past when negative, and freezes it. Nothing for 0. The right edge stays
    /// between now and one day before.
    void pan(double seconds);
    /// Follows again, with the initial span.
    void reset();

private:
    double m_newest = 0.0;
    double m_now = 0.0;
    double m_right = 0.0;
    double m_span = initialSpan;
    bool m_hasNow = false;
    bool m_isFollowing = true;
};

} // namespace Velk

#endif
