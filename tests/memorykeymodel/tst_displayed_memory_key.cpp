// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <memorykeymodel/displayed_memory_key.h>

#include <QSet>
#include <QTest>

#include <type_traits>

using namespace Velk;

static_assert(!std::is_polymorphic<DisplayedMemoryKey>::value, "a plain value");
static_assert(!std::is_convertible<MemoryKey, DisplayedMemoryKey>::value, "a key is displayed on purpose");
static_assert(std::is_copy_assignable<DisplayedMemoryKey>::value, "displayed keys travel by value");
static_assert(std::is_same<decltype(qHash(std::declval<const DisplayedMemoryKey&>())), uint>::value, "");

namespace {

MemoryKey armKey(MemoryKeyNature nature = DataNature)
{
    return MemoryKey(QStringLiteral("Arm"), QStringLiteral("the arm"), nature);
}

} // namespace

class TestDisplayedMemoryKey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsShownInChartreuseWithoutHistory();
    void keepsTheValuesOfItsConstructor();
    void changingAKeyDoesNotChangeItsCopies();
    void equalityIgnoresTheState();
    void differsByNameOnly();
    void aSetKeepsTheKeyThatItHas();
};

void TestDisplayedMemoryKey::startsShownInChartreuseWithoutHistory()
{
    const DisplayedMemoryKey displayed(armKey());

    QCOMPARE(displayed.key().name(), QStringLiteral("Arm"));
    QCOMPARE(displayed.key().description(), QStringLiteral("the arm"));
    QCOMPARE(displayed.key().nature(), DataNature);
    QCOMPARE(displayed.displayFlag(), true);
    QCOMPARE(displayed.color(), QColor(127, 255, 0));
    QCOMPARE(displayed.watchPeriod(), 100);
    QVERIFY(displayed.valueHistory().isEmpty());
    QVERIFY(emptyValueHistory.isEmpty());
}

void TestDisplayedMemoryKey::keepsTheValuesOfItsConstructor()
{
    const DisplayedMemoryKey displayed(armKey(), false, QColor(Qt::red), 40, {{1.5, 7}});

    QCOMPARE(displayed.displayFlag(), false);
    QCOMPARE(displayed.color(), QColor(Qt::red));
    QCOMPARE(displayed.watchPeriod(), 40);
    QCOMPARE(displayed.valueHistory(), (QMap<double, QVariant>{{1.5, 7}}));
}

void TestDisplayedMemoryKey::changingAKeyDoesNotChangeItsCopies()
{
    DisplayedMemoryKey displayed(armKey(), true, QColor(Qt::red), 40, {{1.5, 7}});
    const DisplayedMemoryKey copy = displayed;

    displayed.setDisplayFlag(false);
    displayed.setColor(QColor(Qt::blue));
    displayed.setValueHistory({{2.5, 8}});

    QCOMPARE(displayed.displayFlag(), false);
    QCOMPARE(displayed.color(), QColor(Qt::blue));
    QCOMPARE(displayed.valueHistory(), (QMap<double, QVariant>{{2.5, 8}}));
    QCOMPARE(copy.displayFlag(), true);
    QCOMPARE(copy.color(), QColor(Qt::red));
    QCOMPARE(copy.valueHistory(), (QMap<double, QVariant>{{1.5, 7}}));
}

void TestDisplayedMemoryKey::equalityIgnoresTheState()
{
    const DisplayedMemoryKey displayed(armKey());
    const DisplayedMemoryKey other(MemoryKey(QStringLiteral("Arm"), QStringLiteral("another text"), EventNature), false,
                                   QColor(Qt::red), 40, {{1.5, 7}});

    QVERIFY(displayed == other);
    QCOMPARE(qHash(displayed), qHash(other));
    QCOMPARE(qHash(displayed), qHash(displayed.key()));
}

void TestDisplayedMemoryKey::differsByNameOnly()
{
    const DisplayedMemoryKey displayed(armKey());

    QVERIFY(
        !(displayed == DisplayedMemoryKey(MemoryKey(QStringLiteral("arm"), QStringLiteral("the arm"), DataNature))));
}

void TestDisplayedMemoryKey::aSetKeepsTheKeyThatItHas()
{
    QSet<DisplayedMemoryKey> keys;

    keys.insert(DisplayedMemoryKey(armKey(), true, QColor(Qt::red), 100, {{1.0, 1}}));
    keys.insert(DisplayedMemoryKey(armKey(EventNature), false, QColor(Qt::blue), 50, {{2.0, 2}}));

    QCOMPARE(keys.size(), 1);
    QCOMPARE(keys.cbegin()->color(), QColor(Qt::red));
    QCOMPARE(keys.cbegin()->key().nature(), DataNature);
    QCOMPARE(keys.cbegin()->valueHistory(), (QMap<double, QVariant>{{1.0, 1}}));
}

QTEST_APPLESS_MAIN(TestDisplayedMemoryKey)
#include "tst_displayed_memory_key.moc"
