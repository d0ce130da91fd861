// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/history_curves.h>

#include <itemmodels/sample_history.h>
#include <itemmodels/value_text.h>
#include <itemmodels/watch_model.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>

#include <support/fake_robot.h>

#include <QTest>

#include <cmath>

using namespace Velk;

namespace {

HistorySample sample(double time, const QVariant& value, bool isAfterGap = false)
{
    HistorySample result;
    result.time = time;
    result.value = value;
    result.number = ValueText::number(value);
    result.isAfterGap = isAfterGap;
    return result;
}

// "line 0:1 1:- 2:3"
QString text(const PlotCurve& curve)
{
    const QStringList kinds{QStringLiteral("line"), QStringLiteral("steps"), QStringLiteral("marks"),
                            QStringLiteral("none")};
    QStringList words{kinds.at(curve.kind)};
    for (const CurvePoint& point : curve.points)
        words << QStringLiteral("%1:%2")
                     .arg(point.time)
                     .arg(isGap(point) ? QStringLiteral("-") : QString::number(point.value));
    return words.join(QLatin1Char(' '));
}

QString curveText(const std::vector<HistorySample>& samples, MemoryKeyNature nature = DataNature)
{
    return text(HistoryCurves::curveOf(HistorySpan(samples.data(), samples.data() + samples.size()), nature));
}

// A robot with watched keys, and the curves of the values that it delivers.
struct Fixture
{
    explicit Fixture(const QStringList& names)
    {
        robot.establish();
        QSet<MemoryKey> keys;
        for (const QString& key : names)
            keys.insert(MemoryKey(key, QString(), DataNature));
        model->addKeys(keys);
    }

    FakeConnectionManager robot;
    DisplayedMemoryKeyListModel* model = new DisplayedMemoryKeyListModel(&robot);
    WatchModel watchModel{model};
    SampleHistory history{model};
    HistoryCurves curves{&watchModel, &history};
};

} // namespace

class TestHistoryCurves : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersAreALine()
    {
        QCOMPARE(curveText({sample(1, 2.5), sample(2, 7), sample(3, 8LL)}), QStringLiteral("line 1:2.5 2:7 3:8"));
    }

    void truthValuesAreSteps()
    {
        QCOMPARE(curveText({sample(1, true), sample(2, false)}), QStringLiteral("steps 1:1 2:0"));
    }

    void aNumberAmongTruthValuesMakesALine()
    {
        QCOMPARE(curveText({sample(1, true), sample(2, 5)}), QStringLiteral("line 1:1 2:5"));
    }

    void occurrencesOfEventsAreMarks()
    {
        QCOMPARE(curveText({sample(1, QStringLiteral("x")), sample(2, 5, true)}, EventNature),
                 QStringLiteral("marks 1:1 2:1"));
    }

    void aValueThatIsNoNumberLeavesAGap()
    {
        QCOMPARE(curveText({sample(1, 1), sample(2, QStringLiteral("broken")), sample(3, std::nan("")), sample(4, 4)}),
                 QStringLiteral("line 1:1 2:- 3:- 4:4"));
    }

    void textAloneIsNotPlotted()
    {
        QCOMPARE(curveText({sample(1, QStringLiteral("2.5"))}), QStringLiteral("none 1:-"));
    }

    void nothingIsJoinedOverAGap()
    {
        QCOMPARE(curveText({sample(1, 1), sample(5, 5, true)}), QStringLiteral("line 1:1 1:- 5:5"));
    }

    void aGapBeforeTheFirstSampleIsNone()
    {
        QCOMPARE(curveText({sample(1, 1, true), sample(2, 2)}), QStringLiteral("line 1:1 2:2"));
    }

    void withoutSamplesThereIsNothing() { QCOMPARE(curveText({}), QStringLiteral("none")); }

    void onlyShownKeysHaveCurvesAndInTheirColours()
    {
        Fixture f({QStringLiteral("A"), QStringLiteral("B")});
        f.robot.memory->deliver({{QStringLiteral("A"), {{1, 1}}}, {QStringLiteral("B"), {{1, 2}}}});
        f.watchModel.setColor(QStringLiteral("B"), Qt::red);

        f.watchModel.setShown(QStringLiteral("A"), false);

        const QVector<PlotCurve> curves = f.curves.shownCurves();
        QCOMPARE(curves.size(), 1);
        QCOMPARE(curves.first().name, QStringLiteral("B"));
        QCOMPARE(curves.first().color, QColor(Qt::red));
        QCOMPARE(text(curves.first()), QStringLiteral("line 1:2"));
    }

    void aCurveGrowsWithItsSamples()
    {
        Fixture f({QStringLiteral("A")});
        f.robot.memory->deliver({{QStringLiteral("A"), {{1, 1}}}});
        QCOMPARE(text(f.curves.shownCurves().first()), QStringLiteral("line 1:1"));

        f.robot.memory->deliver({{QStringLiteral("A"), {{2, 2}, {3, 3}}}});

        QCOMPARE(text(f.curves.shownCurves().first()), QStringLiteral("line 1:1 2:2 3:3"));
    }

    void aKeyThatIsRemovedHasNoCurve()
    {
        Fixture f({QStringLiteral("A")});
        f.robot.memory->deliver({{QStringLiteral("A"), {{1, 1}}}});

        f.model->removeKeys({MemoryKey(QStringLiteral("A"), QString(), DataNature)});

        QVERIFY(f.curves.shownCurves().isEmpty());
    }
};

QTEST_MAIN(TestHistoryCurves)
#include "tst_history_curves.moc"
