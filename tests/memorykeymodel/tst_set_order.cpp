// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/hash_seed.h"
#include "support/key_text.h"

#include <QTest>

using namespace Velk;

namespace {

QStringList inOrder(const QSet<DisplayedMemoryKey>& keys)
{
    QStringList names;
    for (const DisplayedMemoryKey& displayed : keys)
        names << displayed.key().name();
    return names;
}

/// A set after changes: keys were inserted one by one, and some were removed.
QSet<DisplayedMemoryKey> usedSet(int size)
{
    QSet<DisplayedMemoryKey> keys;
    for (int i = 0; i < 2 * size; ++i)
        keys.insert(DisplayedMemoryKey(key(QString("Key%1").arg(i))));
    for (int i = 0; i < size; ++i)
        keys.remove(DisplayedMemoryKey(key(QString("Key%1").arg(2 * i))));
    return keys;
}

} // namespace

/// The columns of a record file and the places of the displayed keys rely on these facts about a QSet. They hold for
/// every supported version of Qt, but the documentation of Qt does not promise them.
class TestSetOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDetachedSetKeepsItsOrder_data();
    void aDetachedSetKeepsItsOrder();
    void aWalkThatChangesElementsHasTheOrderOfTheSet_data();
    void aWalkThatChangesElementsHasTheOrderOfTheSet();
};

void TestSetOrder::aDetachedSetKeepsItsOrder_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("hashSeed");
    for (const int size : {1, 2, 15, 16, 17, 100, 128, 1000, 10000}) {
        for (int hashSeed = 0; hashSeed < 4; ++hashSeed)
            QTest::addRow("%d keys, hash seed %d", size, hashSeed) << size << hashSeed;
    }
}

void TestSetOrder::aDetachedSetKeepsItsOrder()
{
    QFETCH(int, size);
    QFETCH(int, hashSeed);
    setHashSeed(hashSeed);
    QSet<DisplayedMemoryKey> keys = usedSet(size);
    const QStringList order = inOrder(keys);
    const QSet<DisplayedMemoryKey> copy = keys;

    keys.detach();

    QCOMPARE(order.size(), size);
    QVERIFY(keys.isDetached());
    QCOMPARE(inOrder(keys), order);
    QCOMPARE(inOrder(copy), order);
}

void TestSetOrder::aWalkThatChangesElementsHasTheOrderOfTheSet_data()
{
    aDetachedSetKeepsItsOrder_data();
}

void TestSetOrder::aWalkThatChangesElementsHasTheOrderOfTheSet()
{
    QFETCH(int, size);
    QFETCH(int, hashSeed);
    setHashSeed(hashSeed);
    QSet<DisplayedMemoryKey> keys = usedSet(size);
    const QStringList order = inOrder(keys);
    const QSet<DisplayedMemoryKey> copy = keys;

    QStringList walked;
    for (auto displayed = keys.begin(); displayed != keys.end(); ++displayed) // begin() detaches the set
        walked << displayed->key().name();

    QCOMPARE(walked, order);
    QCOMPARE(inOrder(copy), order);
}

QTEST_APPLESS_MAIN(TestSetOrder)
#include "tst_set_order.moc"
