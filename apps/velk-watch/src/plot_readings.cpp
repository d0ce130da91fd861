// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "plot_readings.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace Velk {

namespace {

constexpr int maxReadings = 12;       // more lines would hide the curves
constexpr int maxNameCharacters = 48; // of average width: a longer name would move its value out of the box
constexpr int distance = 10;          // pixels from the reading line and from the upper edge

} // namespace

PlotReadings::PlotReadings(QWidget* plot)
    : QLabel(plot)
{
    setObjectName(QStringLiteral("readings"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAutoFillBackground(true);
    setMargin(4);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setBackgroundRole(QPalette::ToolTipBase);
    setForegroundRole(QPalette::ToolTipText);
    hide();
}

void PlotReadings::setReadings(const QVector<CurveReading>& readings, double age, int decimals)
{
    const QString title = tr("%1 s before now").arg(QLocale().toString(age, 'f', decimals));
    const QString wholeRow = QStringLiteral("<tr><td colspan='3'>%1</td></tr>");
    QStringList rows{wholeRow.arg(title.toHtmlEscaped())};
    QStringList plain{title};
    const int maxNameWidth = maxNameCharacters * fontMetrics().averageCharWidth();
    for (const CurveReading& reading : readings.mid(0, maxReadings)) {
        const QString name = fontMetrics().elidedText(reading.name, Qt::ElideMiddle, maxNameWidth);
        rows << QStringLiteral("<tr><td><span style='color:%1'>&#9632;</span></td><td>%2&nbsp;&nbsp;</td>"
                               "<td align='right'>%3</td></tr>")
                    .arg(reading.color.name(), name.toHtmlEscaped(), reading.text.toHtmlEscaped());
        plain << QStringLiteral("%1: %2").arg(reading.name, reading.text);
    }
    if (readings.size() > maxReadings)
        rows << wholeRow.arg(tr("and %n more", nullptr, int(readings.size()) - maxReadings).toHtmlEscaped());
    m_plainText = plain.join(QLatin1Char('\n'));

    const QString html = QStringLiteral("<table cellspacing='1'>%1</table>").arg(rows.join(QString()));
    if (text() != html)
        setText(html);
    adjustSize();
}

void PlotReadings::placeBeside(int x, int top)
{
    const bool isLeft = x + distance + width() > parentWidget()->width();
    move(std::max(0, isLeft ? x - distance - width() : x + distance), top + distance);
}

} // namespace Velk
