// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/plot_readings.h>

#include <QTest>
#include <QTextDocument>

using namespace Velk;

namespace {

CurveReading reading(const QString& name, const QString& text = QStringLiteral("1"))
{
    return {name, Qt::red, text};
}

QVector<CurveReading> readings(int count)
{
    QVector<CurveReading> all;
    for (int i = 1; i <= count; ++i)
        all << reading(QStringLiteral("K%1").arg(i));
    return all;
}

// The text in the box as the user sees it, without the coloured squares.
QString shownText(const PlotReadings& box)
{
    QTextDocument document;
    document.setHtml(box.text());
    return document.toPlainText().remove(QChar(0x25a0)).simplified();
}

} // namespace

class TestPlotReadings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }

    void theAgeAndTheValuesAreShown()
    {
        QWidget plot;
        PlotReadings box(&plot);

        box.setReadings({reading(QStringLiteral("Arm"), QStringLiteral("0.5")), reading(QStringLiteral("Leg"))}, 2.5,
                        1);

        QCOMPARE(shownText(box), QStringLiteral("2.5 s before now Arm 0.5 Leg 1"));
        QCOMPARE(box.plainText(), QStringLiteral("2.5 s before now\nArm: 0.5\nLeg: 1"));
    }

    void readingsBeyondTheTwelfthAreCounted()
    {
        QWidget plot;
        PlotReadings box(&plot);

        box.setReadings(readings(12), 0, 1);
        QVERIFY(shownText(box).endsWith(QStringLiteral("K12 1")));

        box.setReadings(readings(15), 0, 1);
        QVERIFY2(shownText(box).endsWith(QStringLiteral("K12 1 and 3 more")), qPrintable(shownText(box)));
        QVERIFY(box.plainText().endsWith(QStringLiteral("K12: 1")));
    }

    void markupIsShownAsText()
    {
        QWidget plot;
        PlotReadings box(&plot);

        box.setReadings({reading(QStringLiteral("<b>A</b>"), QStringLiteral("<i>%1</i>"))}, 0, 1);

        QCOMPARE(shownText(box), QStringLiteral("0.0 s before now <b>A</b> <i>%1</i>"));
    }

    void aLongNameLeavesRoomForItsValue()
    {
        QWidget plot;
        PlotReadings box(&plot);
        box.setReadings({reading(QString(48, QLatin1Char('x')))}, 0, 1);
        const int widthOfALongName = box.width();

        box.setReadings({reading(QString(1000, QLatin1Char('x')), QStringLiteral("42"))}, 0, 1);

        QVERIFY2(box.width() < 2 * widthOfALongName, qPrintable(QString::number(box.width())));
        QVERIFY(shownText(box).endsWith(QStringLiteral(" 42")));
        QVERIFY(box.plainText().contains(QString(1000, QLatin1Char('x'))));
    }

    void theBoxIsOnTheSideThatHasRoom()
    {
        QWidget plot;
        plot.resize(1000, 200);
        PlotReadings box(&plot);
        box.setReadings(readings(1), 0, 1);

        box.placeBeside(100, 20);
        QVERIFY(box.x() > 100);
        QVERIFY(box.y() > 20);

        box.placeBeside(980, 20);
        QVERIFY(box.geometry().right() < 980);

        plot.resize(10, 200);
        box.placeBeside(5, 20);
        QCOMPARE(box.x(), 0);
    }
};

QTEST_MAIN(TestPlotReadings)
#include "tst_plot_readings.moc"
