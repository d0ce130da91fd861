// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_PLOT_READINGS_H
#define APPS_VELK_WATCH_PLOT_READINGS_H

#include "plot_curve.h"

#include <QLabel>
#include <QVector>

namespace Velk {

/// The box beside the reading line of a plot: the values of the curves at its time. Hidden at first.
class PlotReadings : public QLabel
{
    Q_OBJECT

public:
    explicit PlotReadings(QWidget* plot);

    /// Shows the age of the readings, in seconds, and the first readings, long names shortened; the others are counted.
    void setReadings(const QVector<CurveReading>& readings, double age, int decimals);
    /// Moves the box beside a position of the plot, to the side that has room for it.
    void placeBeside(int x, int top);

    /// The first readings in words, a line each.
    QString plainText() const { return m_plainText; }

private:
    QString m_plainText;
};

} // namespace Velk

#endif
