#include <itemmodels/watch_model.h>

#include "model_text.h"
#include "watched_robot.h"

#include <itemmodels/catalogue_model.h>
#include <itemmodels/distinct_colors.h>

#include <QAbstractItemModelTester>
#include <QMimeData>
#include <QtTest>

using namespace Velk;

namespace {

// Long enough that nothing is told to the views before the test says so.
constexpr int neverMs = 24 * 3600 * 1000;

struct TestedWatch
{
    TestedWatch()
    {
        model.setUpdateInterval(neverMs);
        model.setClock([this] { return nowMs; });
    }

    QString cell(const char* name, int column, int role = Qt::DisplayRole) const
    {
        return model.index(model.row(text(name)), column).data(role).toString();
    }
    QStringList values() const { return columnText(model, WatchModel::ValueColumn); }

    WatchedRobot robot;
    qint64 nowMs = 0;
    WatchModel model{robot.keys};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

class TestWatchModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheDisplayedKeys();
    void showsKeysThatWereDisplayedBefore();
    void addsKeysAtTheEndInPathOrder();
    void removesTheRowsOfRemovedKeys();
    void removesManyRunsOfRows();
    void showsTheNewestValue();
    void tellsOfNewValuesAtTheEndOfTheInterval();
    void tellsOnceOfManyBatches();
    void touchesOnlyTheRowsThatGotAValue();
    void tellsByItselfAfterTheInterval();
    void keepsRowsAndTheirChangesTogether();
    void showsTheAgeOfAValue();
    void touchesOnlyAgesThatChanged();
    void keepsColorsAndFlagsOverAReconnection();
    void learnsNaturesFromAReconnection();
    void keepsTheValueOverAReconnection();
    void dropsKeysThatTheSynchronisationDropped();
    void bringsBackKeysThatTheSynchronisationBroughtBack();
    void remembersTheLookOfADroppedKey();
    void givesEachNewKeyAnotherColor();
    void givesTheColorOfARemovedKeyToTheNext();
    void remembersAChosenColorOfARemovedKey();
    void takesColorsAndFlagsBeforeTheirKeys();
    void editsTheFlagAndTheColor();
    void refusesOtherEdits();
    void freezesAndThaws();
    void showsAnotherSet();
    void isEmptyWhenTheSetDies();
    void alignsNumbersToTheRight();
    void showsAListInShortAndInFull();
    void formatsTimesAsTheApplicationWants();
    void givesEachRole();
    void describesItsColumns();
    void tellsInWordsWhatIsShownInColors();
    void removesKeysByRows();
    void takesKeysThatAreDropped();
    void refusesADropOfAnythingElse();
    void bearsASlotThatRemovesKeys();
    void countsItsRows();
};

void TestWatchModel::showsTheDisplayedKeys()
{
    TestedWatch tested;

    tested.robot.display(list("Arm"));
    tested.robot.display(list("Touched"), EventNature);

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("Arm|Touched"));
    QCOMPARE(tested.cell("Touched", WatchModel::DescriptionColumn), text("Touched desc"));
    QCOMPARE(tested.cell("Touched", WatchModel::NatureColumn), text("EVENT"));
    QCOMPARE(tested.cell("Touched", WatchModel::ValueColumn), QString());
    QCOMPARE(tested.cell("Touched", WatchModel::TimeColumn), QString());
    QCOMPARE(tested.cell("Touched", WatchModel::AgeColumn), QString());
    QCOMPARE(tested.cell("Touched", WatchModel::PeriodColumn), text("100 ms"));
}

void TestWatchModel::showsKeysThatWereDisplayedBefore()
{
    WatchedRobot robot;
    robot.display(list("A"));
    robot.deliver({{text("A"), {{1.5, 7}}}});

    const WatchModel model(robot.keys);

    QCOMPARE(columnText(model, WatchModel::ValueColumn), list("7"));
}

void TestWatchModel::addsKeysAtTheEndInPathOrder()
{
    TestedWatch tested;
    QSignalSpy inserted(&tested.model, &QAbstractItemModel::rowsInserted);
    tested.robot.display(list("M"));

    tested.robot.display(list("Z|A10|A9|M"));

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("M|A9|A10|Z"));
    QCOMPARE(inserted.count(), 2);
}

void TestWatchModel::removesTheRowsOfRemovedKeys()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C|D|E"));
    QSignalSpy removed(&tested.model, &QAbstractItemModel::rowsRemoved);

    tested.robot.keys->removeKeys(keySet(list("A|C|D|X")));

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("B|E"));
    QCOMPARE(removed.count(), 2);
    QCOMPARE(tested.model.row(text("E")), 1);
    QCOMPARE(tested.model.row(text("C")), -1);
}

void TestWatchModel::removesManyRunsOfRows()
{
    TestedWatch tested;
    QStringList names;
    QStringList removedNames;
    QStringList keptNames;
    for (int i = 0; i < 300; ++i) {
        names << QStringLiteral("K%1").arg(i);
        (i % 2 ? removedNames : keptNames) << names.last();
    }
    tested.robot.display(names);

    tested.robot.keys->removeKeys(keySet(removedNames));

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), keptNames);
    for (int row = 0; row < keptNames.size(); ++row)
        QCOMPARE(tested.model.row(keptNames.at(row)), row);
    QCOMPARE(tested.model.row(removedNames.first()), -1);
}

void TestWatchModel::showsTheNewestValue()
{
    TestedWatch tested;
    tested.robot.display(list("A"));

    tested.robot.deliver({{text("A"), {{1.0, 5}, {2.25, 7.5}}}});

    QCOMPARE(tested.values(), list("7.5"));
    QCOMPARE(tested.cell("A", WatchModel::TimeColumn), text("2.250"));
}

void TestWatchModel::tellsOfNewValuesAtTheEndOfTheInterval()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.robot.deliver({{text("A"), {{1.0, 5}}}});
    QCOMPARE(changed.count(), 0);

    tested.model.flush();
    QCOMPARE(rangesText(changed), list("0-0:5-7"));
    tested.model.flush();
    QCOMPARE(changed.count(), 1);
}

void TestWatchModel::tellsOnceOfManyBatches()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.robot.deliver({{text("A"), {{1.0, 5}}}});
    tested.robot.deliver({{text("B"), {{1.0, 5}}}});
    tested.robot.deliver({{text("A"), {{2.0, 6}}}});
    tested.model.flush();

    QCOMPARE(rangesText(changed), list("0-1:5-7"));
    QCOMPARE(tested.values(), list("6|5"));
}

void TestWatchModel::touchesOnlyTheRowsThatGotAValue()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C|D|E|F"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.robot.deliver({{text("A"), {{1.0, 5}}},
                          {text("B"), {{1.0, 5}}},
                          {text("C"), {}},
                          {text("E"), {{1.0, 5}}},
                          {text("F"), {{1.0, 5}}},
                          {text("X"), {{1.0, 5}}}});
    tested.model.flush();

    QCOMPARE(rangesText(changed), list("0-1:5-7|4-5:5-7"));
    QVERIFY(changed.at(0).at(2).value<QVector<int>>().contains(WatchModel::ValueTextRole));
}

void TestWatchModel::tellsByItselfAfterTheInterval()
{
    TestedWatch tested;
    tested.model.setUpdateInterval(1);
    tested.robot.display(list("A"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.robot.deliver({{text("A"), {{1.0, 5}}}});

    QCOMPARE(changed.count(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(changed.count(), 1, 30000);
}

void TestWatchModel::keepsRowsAndTheirChangesTogether()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.robot.deliver({{text("C"), {{1.0, 5}}}});
    tested.robot.keys->removeKeys(keySet(list("A")));
    tested.model.flush();

    QCOMPARE(rangesText(changed), list("1-1:5-7"));
}

void TestWatchModel::showsTheAgeOfAValue()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    tested.nowMs = 5000;
    tested.robot.deliver({{text("A"), {{1.0, 5}}}});
    const auto ageAt = [&tested](qint64 ms) {
        tested.nowMs = 5000 + ms;
        return tested.cell("A", WatchModel::AgeColumn);
    };

    QCOMPARE(ageAt(0), text("< 1 s"));
    QCOMPARE(ageAt(59999), text("59 s"));
    QCOMPARE(ageAt(60000), text("1 min"));
    QCOMPARE(ageAt(3599999), text("59 min"));
    QCOMPARE(ageAt(2 * 3600000 + 5 * 60000), text("2 h 5 min"));
    QCOMPARE(ageAt(1234), text("1 s"));
    QCOMPARE(tested.model.index(0, 0).data(WatchModel::AgeRole).toLongLong(), 1234);
}

void TestWatchModel::touchesOnlyAgesThatChanged()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C"));
    tested.robot.deliver({{text("A"), {{1.0, 5}}}, {text("B"), {{1.0, 5}}}});
    tested.model.flush();
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.nowMs = 999;
    tested.model.flush();
    QCOMPARE(changed.count(), 0);

    tested.nowMs = 1000;
    tested.robot.deliver({{text("B"), {{2.0, 6}}}});
    tested.model.flush();
    QCOMPARE(rangesText(changed), list("0-0:7-7|1-1:5-7"));
}

void TestWatchModel::keepsColorsAndFlagsOverAReconnection()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    tested.model.setColor(text("A"), Qt::magenta);
    tested.model.setShown(text("B"), false);
    const QColor colorOfB = tested.model.color(text("B"));

    tested.robot.manager.lose();
    tested.robot.reconnect(list("A|B"));

    QCOMPARE(displayedKey(*tested.robot.keys, text("A")).color(), QColor("chartreuse")); // the core's own copy
    QCOMPARE(tested.model.color(text("A")), QColor(Qt::magenta));
    QCOMPARE(tested.cell("A", WatchModel::ColorColumn, Qt::EditRole), QColor(Qt::magenta).name());
    QCOMPARE(tested.model.color(text("B")), colorOfB);
    QCOMPARE(tested.model.index(1, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    QCOMPARE(tested.model.index(0, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
}

void TestWatchModel::learnsNaturesFromAReconnection()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C"), UnknownNature);
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);
    QSignalSpy reset(&tested.model, &QAbstractItemModel::modelReset);

    tested.robot.reconnect(list("A"), list("B"));
    tested.model.flush();

    QCOMPARE(columnText(tested.model, WatchModel::NatureColumn), list("DATA|EVENT|UNKNOWN"));
    QCOMPARE(rangesText(changed), list("0-1:0-8"));
    QCOMPARE(reset.count(), 0);
}

void TestWatchModel::keepsTheValueOverAReconnection()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 5}}}});

    tested.nowMs = 7000;
    tested.robot.manager.lose();
    tested.robot.reconnect(list("A"));

    QCOMPARE(tested.values(), list("5"));
    QCOMPARE(tested.cell("A", WatchModel::AgeColumn), text("7 s"));
}

void TestWatchModel::dropsKeysThatTheSynchronisationDropped()
{
    TestedWatch tested;
    tested.robot.display(list("A|C"));
    tested.robot.manager.establish();
    tested.robot.display(list("B")); // while the catalogue is fetched: the core forgets it
    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("A|C|B"));

    tested.robot.finishLists(list("A|B|C"));

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("A|C"));
}

void TestWatchModel::bringsBackKeysThatTheSynchronisationBroughtBack()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    tested.model.setColor(text("A"), Qt::magenta);
    tested.robot.manager.establish();
    tested.robot.keys->removeKeys(keySet(list("A"))); // while the catalogue is fetched: the core takes it back
    tested.robot.display(list("C"));

    tested.robot.finishLists(list("A|B|C"));

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("B|A"));
    QCOMPARE(tested.model.color(text("A")), QColor(Qt::magenta));
}

void TestWatchModel::remembersTheLookOfADroppedKey()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    tested.robot.manager.establish();
    tested.robot.display(list("B"));
    const QColor color = tested.model.color(text("B"));
    tested.robot.finishLists(list("A|B"));

    tested.robot.display(list("C"));
    tested.robot.display(list("B"));

    QCOMPARE(tested.model.color(text("B")), color);
}

void TestWatchModel::givesEachNewKeyAnotherColor()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    tested.robot.display(list("C"));

    QCOMPARE(tested.model.color(text("A")), DistinctColors::at(0));
    QCOMPARE(tested.model.color(text("B")), DistinctColors::at(1));
    QCOMPARE(tested.model.color(text("C")), DistinctColors::at(2));
}

void TestWatchModel::givesTheColorOfARemovedKeyToTheNext()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C"));
    tested.robot.keys->removeKeys(keySet(list("B")));

    tested.robot.display(list("D"));
    tested.robot.display(list("B"));

    QCOMPARE(tested.model.color(text("D")), DistinctColors::at(1));
    QCOMPARE(tested.model.color(text("B")), DistinctColors::at(3));
}

void TestWatchModel::remembersAChosenColorOfARemovedKey()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    tested.model.setColor(text("A"), Qt::magenta);
    tested.model.setShown(text("A"), false);

    tested.robot.keys->removeKeys(keySet(list("A")));
    tested.robot.display(list("A"));

    QCOMPARE(tested.model.color(text("A")), QColor(Qt::magenta));
    QVERIFY(!tested.model.isShown(text("A")));
}

void TestWatchModel::takesColorsAndFlagsBeforeTheirKeys()
{
    TestedWatch tested;
    tested.model.setColor(text("A"), Qt::magenta);
    tested.model.setShown(text("A"), false);
    QCOMPARE(tested.model.color(text("A")), QColor(Qt::magenta));
    QVERIFY(!tested.model.color(text("B")).isValid());
    QVERIFY(tested.model.isShown(text("B")));

    tested.robot.display(list("A|B"));

    QCOMPARE(tested.model.index(0, 0).data(WatchModel::ColorRole).value<QColor>(), QColor(Qt::magenta));
    QCOMPARE(tested.model.index(0, 0).data(WatchModel::ShownRole).toBool(), false);
    QCOMPARE(tested.model.color(text("B")), DistinctColors::at(0));
}

void TestWatchModel::editsTheFlagAndTheColor()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);
    QSignalSpy appearance(&tested.model, &WatchModel::appearanceChanged);

    QVERIFY(tested.model.setData(tested.model.index(1, WatchModel::ShownColumn), Qt::Unchecked, Qt::CheckStateRole));
    QVERIFY(tested.model.setData(tested.model.index(0, WatchModel::ColorColumn), QColor(Qt::red)));
    QVERIFY(tested.model.setData(tested.model.index(1, 4), true, WatchModel::ShownRole));
    QVERIFY(tested.model.setData(tested.model.index(1, 4), text("#00ff00"), WatchModel::ColorRole));

    QCOMPARE(rangesText(changed), list("1-1:0-8|0-0:0-8|1-1:0-8|1-1:0-8"));
    QCOMPARE(appearance.count(), 4);
    QVERIFY(tested.model.isShown(text("B")));
    QCOMPARE(tested.model.color(text("A")), QColor(Qt::red));
    QCOMPARE(tested.model.color(text("B")), QColor(Qt::green));
    QVERIFY(tested.model.flags(tested.model.index(0, WatchModel::ShownColumn)) & Qt::ItemIsUserCheckable);
    QVERIFY(tested.model.flags(tested.model.index(0, WatchModel::ColorColumn)) & Qt::ItemIsEditable);
}

void TestWatchModel::refusesOtherEdits()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    QVERIFY(!tested.model.setData(tested.model.index(0, WatchModel::NameColumn), text("B")));
    QVERIFY(!tested.model.setData(tested.model.index(0, WatchModel::ColorColumn), text("no color")));
    QVERIFY(!tested.model.setData(tested.model.index(0, WatchModel::NameColumn), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(!tested.model.setData(QModelIndex(), true, WatchModel::ShownRole));
    tested.model.setShown(text("A"), true); // it is
    tested.model.setColor(text("A"), tested.model.color(text("A")));

    QCOMPARE(changed.count(), 0);
    QVERIFY(!(tested.model.flags(tested.model.index(0, WatchModel::ValueColumn)) & Qt::ItemIsEditable));
}

void TestWatchModel::freezesAndThaws()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    tested.robot.deliver({{text("A"), {{1.0, 5}}}, {text("B"), {{1.0, 50}}}});
    tested.model.flush();
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.model.setFrozen(true);
    tested.robot.deliver({{text("A"), {{2.0, 6}}}});
    tested.robot.display(list("C"));
    tested.model.flush();
    QCOMPARE(tested.values(), list("5|50|"));
    QCOMPARE(changed.count(), 0);

    tested.model.setFrozen(false);
    tested.model.flush();
    QCOMPARE(tested.values(), list("6|50|"));
    QCOMPARE(rangesText(changed), list("0-0:5-7"));
}

void TestWatchModel::showsAnotherSet()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    tested.robot.deliver({{text("A"), {{1.0, 5}}}});
    tested.model.setColor(text("A"), Qt::magenta);
    WatchedRobot other;
    other.display(list("A|C"));

    tested.model.setDisplayedKeys(other.keys);
    tested.robot.display(list("D"));
    tested.robot.deliver({{text("A"), {{1.0, 5}}}});

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("A|C"));
    QCOMPARE(tested.values(), list("|"));
    QCOMPARE(tested.model.color(text("A")), QColor(Qt::magenta));
    tested.model.setDisplayedKeys(nullptr);
    QCOMPARE(tested.model.rowCount(), 0);
}

void TestWatchModel::isEmptyWhenTheSetDies()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    tested.robot.deliver({{text("A"), {{1.0, 5}}}});
    QSignalSpy changed(&tested.model, &WatchModel::displayedKeysChanged);

    delete tested.robot.keys;

    QCOMPARE(tested.model.rowCount(), 0);
    QVERIFY(!tested.model.displayedKeys());
    QCOMPARE(changed.count(), 1);
    tested.model.flush();
    QVERIFY(!tested.model.removeRows(0, 1));
}

void TestWatchModel::alignsNumbersToTheRight()
{
    TestedWatch tested;
    tested.robot.display(list("Flag|Number|Text"));
    tested.robot.deliver(
        {{text("Flag"), {{1.0, true}}}, {text("Number"), {{1.0, 5}}}, {text("Text"), {{1.0, text("x")}}}});
    const auto isRight = [&tested](const char* name, int column) {
        return (tested.model.index(tested.model.row(text(name)), column).data(Qt::TextAlignmentRole).toInt() &
                Qt::AlignRight) != 0;
    };

    QVERIFY(isRight("Number", WatchModel::ValueColumn));
    QVERIFY(isRight("Text", WatchModel::TimeColumn));
    QVERIFY(isRight("Text", WatchModel::PeriodColumn));
    QVERIFY(!isRight("Text", WatchModel::ValueColumn));
    QVERIFY(!isRight("Flag", WatchModel::ValueColumn));
    QVERIFY(!isRight("Number", WatchModel::NameColumn));
}

void TestWatchModel::showsAListInShortAndInFull()
{
    TestedWatch tested;
    tested.robot.display(list("A"));

    tested.robot.deliver({{text("A"), {{1.0, QVariantList{1, 2, 3, 4, 5, 6}}}}});

    QCOMPARE(tested.values(), QStringList{text("[1, 2, 3, 4, \u2026] (6 in all)")});
    QCOMPARE(tested.cell("A", WatchModel::ValueColumn, Qt::ToolTipRole), text("1\n2\n3\n4\n5\n6"));
}

void TestWatchModel::formatsTimesAsTheApplicationWants()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{90.0, 5}}}});
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.model.setTimeFormatter([](double time) { return QStringLiteral("%1 min").arg(time / 60.0); });

    QCOMPARE(tested.cell("A", WatchModel::TimeColumn), text("1.5 min"));
    QCOMPARE(rangesText(changed), list("0-0:6-6"));
}

void TestWatchModel::givesEachRole()
{
    TestedWatch tested;
    tested.robot.display(list("Arm"), EventNature);
    tested.robot.deliver({{text("Arm"), {{1.5, 2.5}}}});
    tested.nowMs = 3000;
    const QModelIndex index = tested.model.index(0, 0);

    QCOMPARE(index.data(WatchModel::NameRole).toString(), text("Arm"));
    QCOMPARE(index.data(WatchModel::DescriptionRole).toString(), text("Arm desc"));
    QCOMPARE(index.data(WatchModel::NatureRole).toInt(), int(EventNature));
    QCOMPARE(index.data(WatchModel::NatureTextRole).toString(), text("EVENT"));
    QCOMPARE(index.data(WatchModel::ValueRole), QVariant(2.5));
    QCOMPARE(index.data(WatchModel::ValueTextRole).toString(), text("2.5"));
    QCOMPARE(index.data(WatchModel::TimeRole), QVariant(1.5));
    QCOMPARE(index.data(WatchModel::TimeTextRole).toString(), text("1.500"));
    QCOMPARE(index.data(WatchModel::AgeRole).toLongLong(), 3000);
    QCOMPARE(index.data(WatchModel::AgeTextRole).toString(), text("3 s"));
    QCOMPARE(index.data(WatchModel::PeriodRole).toInt(), 100);
    const QList<QByteArray> names = tested.model.roleNames().values();
    for (const char* name : {"display", "shown", "keyColor", "name", "description", "nature", "natureText", "value",
                             "valueText", "time", "timeText", "age", "ageText", "period", "sortValue"})
        QVERIFY2(names.contains(name), name);
}

void TestWatchModel::describesItsColumns()
{
    TestedWatch tested;
    QStringList titles;
    for (int column = 0; column < WatchModel::ColumnCount; ++column) {
        titles << tested.model.headerData(column, Qt::Horizontal).toString();
        QVERIFY(!tested.model.headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString().isEmpty());
    }

    QCOMPARE(titles, list("Shown|Color|Name|Description|Nature|Value|Time|Age|Period"));
}

void TestWatchModel::tellsInWordsWhatIsShownInColors()
{
    TestedWatch tested;
    tested.robot.display(list("Arm"));

    QCOMPARE(tested.cell("Arm", WatchModel::ShownColumn, Qt::AccessibleTextRole), text("shown"));
    QCOMPARE(tested.cell("Arm", WatchModel::ColorColumn, Qt::AccessibleTextRole), text("blue"));
    QCOMPARE(tested.cell("Arm", WatchModel::ColorColumn, Qt::AccessibleDescriptionRole), text("Color of Arm"));
    QCOMPARE(tested.cell("Arm", WatchModel::ValueColumn, Qt::AccessibleTextRole), text("no value yet"));
    tested.robot.deliver({{text("Arm"), {{1.5, true}}}});
    QCOMPARE(tested.cell("Arm", WatchModel::ValueColumn, Qt::AccessibleTextRole), text("true"));
}

void TestWatchModel::removesKeysByRows()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C"));

    QVERIFY(tested.model.removeRows(1, 2));
    QVERIFY(!tested.model.removeRows(0, 2));
    QVERIFY(!tested.model.removeRows(-1, 1));

    QCOMPARE(names(tested.robot.keys->keys()), list("A"));
    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("A"));
}

void TestWatchModel::takesKeysThatAreDropped()
{
    TestedWatch tested;
    auto* const catalogue = new MemoryKeyListModel(&tested.robot.manager, {});
    tested.robot.manager.memory->finishLists(list("A|B"), list("C"));
    QTRY_VERIFY(catalogue->isReady());
    CatalogueModel catalogueModel;
    catalogueModel.setCatalogue(catalogue);
    const QScopedPointer<QMimeData> data(
        catalogueModel.mimeData({catalogueModel.index(0, 0), catalogueModel.index(2, 0)}));

    QVERIFY(tested.model.canDropMimeData(data.data(), Qt::CopyAction, -1, -1, QModelIndex()));
    QVERIFY(tested.model.dropMimeData(data.data(), Qt::CopyAction, -1, -1, QModelIndex()));

    QCOMPARE(described(tested.robot.keys->keys()), list("A DATA (A desc)|C EVENT (C desc)"));
}

void TestWatchModel::refusesADropOfAnythingElse()
{
    TestedWatch tested;
    QMimeData plain;
    plain.setText(text("A"));
    QMimeData damaged;
    damaged.setData(tested.model.mimeTypes().at(0), QByteArray("\0\0\0\x7f", 4));

    QVERIFY(!tested.model.canDropMimeData(&plain, Qt::CopyAction, -1, -1, QModelIndex()));
    QVERIFY(!tested.model.dropMimeData(&plain, Qt::CopyAction, -1, -1, QModelIndex()));
    QVERIFY(!tested.model.dropMimeData(&damaged, Qt::CopyAction, -1, -1, QModelIndex()));

    QCOMPARE(tested.model.rowCount(), 0);
}

void TestWatchModel::bearsASlotThatRemovesKeys()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C"));
    connect(&tested.model, &QAbstractItemModel::dataChanged, &tested.model,
            [&tested] { tested.robot.keys->removeKeys(keySet(list("B|C"))); });

    tested.robot.deliver({{text("A"), {{1.0, 5}}}, {text("C"), {{1.0, 5}}}});
    tested.model.flush();

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("A"));
}

void TestWatchModel::countsItsRows()
{
    TestedWatch tested;
    QSignalSpy counted(&tested.model, &WatchModel::countChanged);

    tested.robot.display(list("A|B"));
    tested.robot.display(list("A|B"));
    QCOMPARE(tested.model.count(), 2);
    QCOMPARE(counted.count(), 1);
    tested.robot.keys->removeKeys(keySet(list("B")));
    QCOMPARE(tested.model.count(), 1);
    QCOMPARE(counted.count(), 2);
}

QTEST_MAIN(TestWatchModel)

#include "tst_watch_model.moc"
