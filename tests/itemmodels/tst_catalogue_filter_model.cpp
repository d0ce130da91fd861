// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/catalogue_filter_model.h>

#include "tested_filter.h"

#include <QtTest>

using namespace Velk;

class TestCatalogueFilterModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsEverythingAtFirst();
    void showsTheNamesThatMatch_data();
    void showsTheNamesThatMatch();
    void showsTheNaturesOfItsMask();
    void showsAndHidesOneNature();
    void combinesTextAndNatures();
    void findsTheSameAsAFreshFilterWhateverWasTypedBefore();
    void keepsItsRowsWhileAnExpressionIsIncomplete();
    void resetsOnceForAChangeAndNotAtAllForNone();
    void sortsByColumns_data();
    void sortsByColumns();
    void keepsIndexesOnTheirKeysWhenItIsSorted();
    void keepsThePathOrderForTrees();
    void worksThroughManyNamesFromTheEventLoop();
    void beginsAgainWhenTheFilterChangesMeanwhile();
    void reportsItsCount();
};

void TestCatalogueFilterModel::showsEverythingAtFirst()
{
    TestedFilter tested(list("B|A"), list("C"));

    QCOMPARE(shown(tested.filter), list("A|B|C"));
    QCOMPARE(tested.filter.syntax(), CatalogueFilterModel::Wildcard);
    QCOMPARE(tested.filter.filterCaseSensitivity(), Qt::CaseSensitive);
    QCOMPARE(tested.filter.natures(), 7);
}

void TestCatalogueFilterModel::showsTheNamesThatMatch_data()
{
    QTest::addColumn<QString>("filterText");
    QTest::addColumn<CatalogueFilterModel::Syntax>("syntax");
    QTest::addColumn<Qt::CaseSensitivity>("caseSensitivity");
    QTest::addColumn<QStringList>("expected");

    const auto wildcard = CatalogueFilterModel::Wildcard;
    const auto fixed = CatalogueFilterModel::FixedString;
    const auto expression = CatalogueFilterModel::RegularExpression;
    const auto exact = Qt::CaseSensitive;
    const auto folded = Qt::CaseInsensitive;
    QTest::newRow("empty") << QString() << wildcard << exact << list("Arm/Elbow|Arm/Wrist|Leg/elbow*");
    QTest::newRow("a text") << text("lbow") << wildcard << exact << list("Arm/Elbow|Leg/elbow*");
    QTest::newRow("case counts") << text("Elbow") << wildcard << exact << list("Arm/Elbow");
    QTest::newRow("case does not count") << text("ELBOW") << wildcard << folded << list("Arm/Elbow|Leg/elbow*");
    QTest::newRow("a star crosses separators") << text("A*st") << wildcard << exact << list("Arm/Wrist");
    QTest::newRow("a star is a star") << text("w*") << fixed << exact << list("Leg/elbow*");
    QTest::newRow("one character") << text("?rm/E") << wildcard << exact << list("Arm/Elbow");
    QTest::newRow("a set") << text("/[EW]") << wildcard << exact << list("Arm/Elbow|Arm/Wrist");
    QTest::newRow("an expression") << text("^.rm/(E|X)") << expression << exact << list("Arm/Elbow");
    QTest::newRow("an expression without case") << text("^arm/e") << expression << folded << list("Arm/Elbow");
    QTest::newRow("nothing") << text("Tail") << wildcard << exact << QStringList();
}

void TestCatalogueFilterModel::showsTheNamesThatMatch()
{
    QFETCH(QString, filterText);
    QFETCH(CatalogueFilterModel::Syntax, syntax);
    QFETCH(Qt::CaseSensitivity, caseSensitivity);
    TestedFilter tested(list("Arm/Elbow|Arm/Wrist|Leg/elbow*"));

    tested.filter.setSyntax(syntax);
    tested.filter.setFilterCaseSensitivity(caseSensitivity);
    tested.filter.setText(filterText);

    QTEST(shown(tested.filter), "expected");
}

void TestCatalogueFilterModel::showsTheNaturesOfItsMask()
{
    TestedFilter tested(list("Data"), list("Event"));
    tested.catalogue->addUserKey(text("User"));

    tested.filter.setNatures(DataNature | UnknownNature);
    QCOMPARE(shown(tested.filter), list("Data|User"));
    tested.filter.setNatures(EventNature);
    QCOMPARE(shown(tested.filter), list("Event"));
    tested.filter.setNatures(0);
    QCOMPARE(shown(tested.filter), QStringList());
    tested.filter.setNatures(0xff);
    QCOMPARE(shown(tested.filter), list("Data|Event|User"));
    QCOMPARE(tested.filter.natures(), 7);
}

void TestCatalogueFilterModel::showsAndHidesOneNature()
{
    TestedFilter tested(list("Data"), list("Event"));

    tested.filter.setNatureShown(EventNature, false);
    QCOMPARE(shown(tested.filter), list("Data"));
    tested.filter.setNatureShown(EventNature, true);
    QCOMPARE(shown(tested.filter), list("Data|Event"));
}

void TestCatalogueFilterModel::combinesTextAndNatures()
{
    TestedFilter tested(list("Arm|Leg"), list("ArmTouched"));

    tested.filter.setText(text("Arm"));
    tested.filter.setNatures(DataNature);

    QCOMPARE(shown(tested.filter), list("Arm"));
}

void TestCatalogueFilterModel::findsTheSameAsAFreshFilterWhateverWasTypedBefore()
{
    const QStringList names = list("Arm|Arm/a|Arm/ab|arm/abc|Leg/abcd|Leg/b*c|xaXb|ba");
    TestedFilter tested(names);
    const QStringList typed = list("a|ab|abc|ab|a*b|a*bc|a?|A|Ar|b|a*|*a|*ab|a**b|[a]b|ab*a");

    for (const Qt::CaseSensitivity caseSensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        tested.filter.setFilterCaseSensitivity(caseSensitivity);
        for (const QString& before : typed) {
            for (const QString& after : typed) {
                tested.filter.setText(before);
                tested.filter.setText(after);
                CatalogueFilterModel fresh(&tested.source);
                fresh.setFilterCaseSensitivity(caseSensitivity);
                fresh.setText(after);
                QCOMPARE(shown(tested.filter), shown(fresh));
            }
        }
    }
}

void TestCatalogueFilterModel::keepsItsRowsWhileAnExpressionIsIncomplete()
{
    TestedFilter tested(list("Arm|Leg"));
    tested.filter.setSyntax(CatalogueFilterModel::RegularExpression);
    tested.filter.setText(text("A"));
    QSignalSpy error(&tested.filter, &CatalogueFilterModel::textErrorChanged);

    tested.filter.setText(text("A("));
    QCOMPARE(shown(tested.filter), list("Arm"));
    QVERIFY2(tested.filter.textError().contains(text("\"A(\"")), qPrintable(tested.filter.textError()));

    tested.filter.setText(text("(L)"));
    QCOMPARE(shown(tested.filter), list("Leg"));
    QCOMPARE(tested.filter.textError(), QString());
    QCOMPARE(error.count(), 2);
}

void TestCatalogueFilterModel::resetsOnceForAChangeAndNotAtAllForNone()
{
    TestedFilter tested(list("Arm|Leg"));
    QSignalSpy reset(&tested.filter, &QAbstractItemModel::modelReset);

    tested.filter.setText(text("A"));
    QCOMPARE(reset.count(), 1);
    tested.filter.setText(text("Ar"));
    tested.filter.setText(text("Ar"));
    tested.filter.setNatures(DataNature);
    QCOMPARE(reset.count(), 1);
}

void TestCatalogueFilterModel::sortsByColumns_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<Qt::SortOrder>("order");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("name") << 0 << Qt::AscendingOrder << list("Arm2|Arm10|Leg|Toe");
    QTest::newRow("name, descending") << 0 << Qt::DescendingOrder << list("Toe|Leg|Arm10|Arm2");
    QTest::newRow("description") << 1 << Qt::AscendingOrder << list("Arm2|Arm10|Leg|Toe");
    QTest::newRow("nature") << 2 << Qt::AscendingOrder << list("Arm2|Toe|Arm10|Leg");
    QTest::newRow("nature, descending") << 2 << Qt::DescendingOrder << list("Leg|Arm10|Toe|Arm2");
    QTest::newRow("no column") << -1 << Qt::DescendingOrder << list("Arm2|Arm10|Leg|Toe");
}

void TestCatalogueFilterModel::sortsByColumns()
{
    QFETCH(int, column);
    QFETCH(Qt::SortOrder, order);
    TestedFilter tested(list("Arm2|Toe"), list("Leg|Arm10"));

    tested.filter.sort(column, order);

    QTEST(shown(tested.filter), "expected");
}

void TestCatalogueFilterModel::keepsIndexesOnTheirKeysWhenItIsSorted()
{
    TestedFilter tested(list("A|B|C|D"));
    const QPersistentModelIndex b = tested.filter.index(1, 0);
    const QPersistentModelIndex d = tested.filter.index(3, 2);

    tested.filter.sort(0, Qt::DescendingOrder);

    QCOMPARE(b.row(), 2);
    QCOMPARE(b.data().toString(), text("B"));
    QCOMPARE(d.row(), 0);
    QCOMPARE(d.column(), 2);
}

void TestCatalogueFilterModel::keepsThePathOrderForTrees()
{
    TestedFilter tested(list("A|B|AB"));
    tested.filter.sort(0, Qt::DescendingOrder);

    tested.filter.setText(text("A"));

    QCOMPARE(shown(tested.filter), list("AB|A"));
    QCOMPARE(tested.filter.sourceRows(), (std::vector<int>{0, 1}));
}

void TestCatalogueFilterModel::worksThroughManyNamesFromTheEventLoop()
{
    TestedFilter tested(manyNames());
    tested.filter.setSyntax(CatalogueFilterModel::RegularExpression);
    tested.filter.finishFiltering(); // on a loaded machine this change, too, is not finished by its setter
    QSignalSpy filtering(&tested.filter, &CatalogueFilterModel::filteringChanged);

    tested.filter.setText(slowExpression());

    QVERIFY(tested.filter.isFiltering());
    QCOMPARE(tested.filter.count(), 2000);
    QTRY_VERIFY_WITH_TIMEOUT(!tested.filter.isFiltering(), 60000);
    QCOMPARE(columnText(tested.filter, 0), list("aaaaaaaaaaaaaaaa77"));
    QCOMPARE(filtering.count(), 2);
}

void TestCatalogueFilterModel::beginsAgainWhenTheFilterChangesMeanwhile()
{
    TestedFilter tested(manyNames());
    tested.filter.setSyntax(CatalogueFilterModel::RegularExpression);
    tested.filter.setText(slowExpression());
    QVERIFY(tested.filter.isFiltering());

    tested.catalogue->addUserKey(text("a12345"));
    tested.filter.setSyntax(CatalogueFilterModel::Wildcard);
    tested.filter.setText(text("12345"));

    QCOMPARE(shown(tested.filter), list("a12345"));
    QVERIFY(!tested.filter.isFiltering());
}

void TestCatalogueFilterModel::reportsItsCount()
{
    TestedFilter tested(list("Arm|Leg"));
    QSignalSpy counted(&tested.filter, &CatalogueFilterModel::countChanged);

    tested.filter.setText(text("Arm"));
    QCOMPARE(tested.filter.count(), 1);
    tested.filter.setText(text("Leg")); // another row, and one as before
    QCOMPARE(counted.count(), 1);
    tested.source.setCatalogue(nullptr);
    QCOMPARE(tested.filter.count(), 0);
    QCOMPARE(counted.count(), 2);
}

QTEST_GUILESS_MAIN(TestCatalogueFilterModel)

#include "tst_catalogue_filter_model.moc"
