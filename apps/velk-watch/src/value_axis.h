// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_VALUE_AXIS_H
#define APPS_VELK_WATCH_VALUE_AXIS_H

#include "plot_curve.h"

namespace Velk {

/// The range of values that a plot shows: fitted to the curves until the user chooses another one.
class ValueAxis
{
public:
    double lower() const { return m_lower; }
    double upper() const { return m_upper; }

    /// Whether fit() changes the range.
    bool isFitting() const { return m_isFitting; }
    /// Takes the range of the values between two times, with a margin. Without a value the range stays.
    void fit(const QVector<PlotCurve>& curves, double from, double to);

    /// Multiplies the range around a value that stays where it is; ends the fitting.
    void zoom(double factor, double around);
    /// Moves the range; ends the fitting.
    void pan(double difference);
    /// Fits again, from the next fit() on.
    void reset() { m_isFitting = true; }

private:
    double m_lower = 0.0;
    double m_upper = 1.0;
    bool m_isFitting = true;
};

} // namespace Velk

#endif
