#ifndef APPS_VELK_WATCH_TIME_AXIS_H
#define APPS_VELK_WATCH_TIME_AXIS_H

namespace Velk {

/// Which part of the time a plot shows, in seconds before now. Now is the time stamp of the newest sample, so that no
/// clock of this machine is compared with the robot's.
///
/// While it follows, the right edge is now. When it is frozen, now stands still, and so does what is on the screen.
class TimeAxis
{
public:
    static constexpr double minSpan = 0.02;    ///< seconds
    static constexpr double maxSpan = 86400.0; ///< seconds
    static constexpr double initialSpan = 30.0;

    /// The newest time stamp. It goes back with the clock of a robot that starts again.
    void setNewest(double time);
    /// Another robot, another clock: the next newest time stamp is now, also when the view is frozen.
    void restart();
    bool hasNow() const { return m_hasNow; }
    /// The time stamp that counts as zero seconds before now.
    double now() const { return m_now; }

    bool isFollowing() const { return m_isFollowing; }
    /// Following again returns to the newest samples and keeps the span.
    void setFollowing(bool isFollowing);

    /// The edges in seconds relative to now(): -30 and 0 at first.
    double left() const { return m_right - m_span; }
    double right() const { return m_right; }
    double span() const { return m_span; }
    /// The edges as time stamps.
    double from() const { return m_now + left(); }
    double to() const { return m_now + right(); }

    /// Shows more (factor above 1) or less of the time, within the limits. While it follows the right edge stays; when
    /// frozen the time at `around` does, in seconds relative to now().
    void zoom(double factor, double around);
    /// Moves the view by seconds, to the past when negative, and freezes it. Not beyond now.
    void pan(double seconds);
    /// Back to following and the initial span.
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
